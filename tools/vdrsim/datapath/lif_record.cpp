#include "datapath/lif_record.h"

#include <cstring>
#include <span>

namespace vdrsim {

namespace {

using LifWriter = RecordWriter<vdrzax::kLifRecord>;

// The record has no place for a hardware address, but two numbers that are six bytes together.
void ShowExtra(LifWriter record, const MacAddress& extra) {
  const std::span<const std::byte> bytes(extra);
  record.Number("half144", NumberOf(bytes.first(2))).Number("word146", NumberOf(bytes.subspan(2)));
}

void ShowAddress(LifWriter record, const LifAddress& address) {
  const auto entry = record.Append<"subEntries">();
  for (size_t word = 0; word < address.address.size(); ++word) {
    entry.Number("words0", word, address.address[word]);
  }
  if (address.family == LifAddress::kIpv4) entry.Number("words0", 1, address.mask);
  entry.Number("words0", 4, address.family).Number("byte20", address.prefixLength);
}

// The area that is the kernel's own: three numbers, and 17 bytes for each relay server.
void ShowArea(LifWriter record, const Lif& lif) {
  const auto count = static_cast<uint32_t>(lif.relayServers.size());
  const uint32_t numbers[] = {lif.mtu, lif.vxlanMulticastIp, count};
  record.Bytes("blob162", std::as_bytes(std::span(numbers)));
  size_t offset = sizeof numbers;
  for (const RelayServer& server : lif.relayServers) {
    const auto family = static_cast<std::byte>(server.family);
    record.Bytes("blob162", server.address, offset)
        .Bytes("blob162", std::span(&family, 1), offset + server.address.size());
    offset += server.address.size() + 1;
  }
}

}  // namespace

void ShowLif(LifWriter record, std::string_view name, const Lif& lif) {
  record.Text("name", name)
      .Text("auxName", lif.auxName)
      .Number("word128", lif.a3)
      .Number("word132", lif.a4)
      .Number("word136", lif.a5)
      .Number("word140", lif.a6)
      .Number("word150", lif.a7)
      .Number("word154", lif.diIp)
      .Number("byte158", lif.mode)
      .Number("byte159", lif.isEnabled)
      .Number("byte160", lif.isUnderVxlanControl)
      .Number("byte161", lif.routesMulticast)
      .Number("word572", lif.flags);
  ShowExtra(record, lif.extra);
  ShowArea(record, lif);
  for (const LifAddress& address : lif.addresses) ShowAddress(record, address);
}

void ShowBridgeLif(LifWriter record, std::string_view name, const Lif& lif) {
  ShowLif(record, name, lif);
  record.Number("byte570", 1);
}

}  // namespace vdrsim
