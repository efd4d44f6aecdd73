#include "state/object_forms.h"

#include <algorithm>
#include <utility>

#include "datapath/mac_text.h"

namespace vdrsim::forms {

namespace {

bool IsIpv6(const Token& token) {
  const auto* text = std::get_if<std::string_view>(&token);
  return text && text->find(':') != std::string_view::npos;
}

bool FitsIpv4(const IpAddress& address) {
  return std::all_of(address.begin() + std::tuple_size_v<Ipv4>, address.end(),
                     [](std::byte byte) { return byte == std::byte{0}; });
}

}  // namespace

void NeighbourMac::Take(const Token& token, Neighbour& value) {
  const MacAddress mac = TakeMac(token);
  value = {.macText = std::string(std::get<std::string_view>(token)), .mac = mac};
}

void PutAddress(uint32_t family, const IpAddress& address, std::string& out) {
  if (family == LifAddress::kIpv6) return PutIpv6(address, out);
  FitsIpv4(address) ? LongIpv4::Put(address, out) : PutBytes(address, out);
}

void TakeAddress(const Token& token, uint32_t& family, IpAddress& address) {
  family = IsIpv6(token) ? LifAddress::kIpv6 : LifAddress::kIpv4;
  (IsIpv6(token) ? Ipv6::Take : LongIpv4::Take)(token, address);
}

void TakeServer(const Token& token, uint32_t& family, IpAddress& address) {
  const auto* text = std::get_if<std::string_view>(&token);
  if (!text || text->size() != 2 * address.size() || IsIpv6(token)) {
    return TakeAddress(token, family, address);
  }
  family = LifAddress::kIpv4;
  TakeBytes(token, address);
}

}  // namespace vdrsim::forms
