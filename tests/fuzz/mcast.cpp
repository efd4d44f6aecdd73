#include <vdrzax/mcast.h>

#include <algorithm>
#include <cerrno>

#include "getters.h"
#include "mcast/mrouting_domain_record.h"
#include "mcast/mrouting_local_rcvr_record.h"
#include "mcast/mrouting_mcast_group_record.h"
#include "memory.h"
#include "require.h"

namespace {

using namespace vdrzax;

const getters::OtherGetter& kTable = getters::Other("VDRZAX_GetMRoutingRemoteRcvrs");
const auto kTableCapacity = static_cast<uint32_t>(kTable.Capacity());

// The table is compared with the length of the reply alone, which is trusted to be no longer than
// the room there is.
void TrustLength(device::Reply& reply) {
  if (SignedLength(reply) > static_cast<int32_t>(kTableCapacity)) {
    reply.length %= kTableCapacity + 1;
  }
}

void RemoteReceivers(const Case& input) {
  device::Reply reply = input.Answer(kTableCapacity);
  TrustLength(reply);
  auto* table = static_cast<VTEPTable*>(Untouched());
  const Outcome outcome =
      Call(input, reply, [&] { return VDRZAX_GetMRoutingRemoteRcvrs("edge-1", 7, &table); });
  if (input.failingAllocation == 1) {
    RequireNothingSent();
    RequireFailure(outcome, ENOMEM);
    return Require(table == Untouched(), "the pointer is not touched without a reply buffer");
  }
  RequireSent(input, kTable);
  if (input.CommandFails()) {
    RequireFailure(outcome, input.CommandError());
    return Require(table == Untouched(), "the pointer is not touched by a failed command");
  }

  // What a count of entries needs wraps in 32 bits; the entries themselves do not.
  const auto count = NumberAt<uint32_t>(reply, 0);
  const auto needed =
      static_cast<int32_t>(static_cast<uint32_t>(kTable.prefix + count * kTable.size));
  const bool isShort = needed < 4 || SignedLength(reply) < needed;
  const uint64_t size = uint64_t{count} * kTable.size;
  const bool isTooMuch = count > INT32_MAX || size > memory::kLargest;
  if (input.failingAllocation == 2 || isShort || isTooMuch || input.failingAllocation == 3) {
    const bool lacksMemory = input.failingAllocation == 2 || !isShort;
    RequireFailure(outcome, lacksMemory ? ENOMEM : EBADMSG);
    return Require(table == nullptr, "the pointer is NULL without a table");
  }
  RequireSuccess(outcome);
  RequireLive({16, size});
  Require(table->count == static_cast<int32_t>(count), "the count is that of the reply");
  const std::size_t copied = static_cast<std::size_t>(needed) - 4;
  Require(AreSame(table->entries, reply.bytes.data() + 4, copied),
          "the entries are those of the reply");
  const auto* entries = reinterpret_cast<const uint8_t*>(table->entries);
  Require(std::all_of(entries + copied, entries + size, [](uint8_t byte) { return byte == 0; }),
          "entries of a count that wraps are zero");
  VDRZAX_ReleaseVTEPTable(table);
  // An allocation of no bytes stays behind.
  if (count == 0) RequireLost({0});
}

}  // namespace

const std::vector<Subject>& Subjects() {
  static const auto subjects =
      SubjectsOf(getters::Mcast(),
                 {{"VDRZAX_GetMRoutingDomain", Expected<kMRoutingDomain>},
                  {"VDRZAX_GetMRoutingLocalRcvrs", Expected<kMRoutingLocalRcvr>},
                  {"VDRZAX_GetMRoutingAllMcastGroups", Expected<kMRoutingMcastGroup>}},
                 {{kTable.name, RemoteReceivers}});
  return subjects;
}
