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

constexpr uint32_t kTableCapacity = 139268;

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
  RequireSent(input, 129, kTableCapacity);
  if (input.CommandFails()) {
    RequireFailure(outcome, input.CommandError());
    return Require(table == Untouched(), "the pointer is not touched by a failed command");
  }

  // What a count of entries needs wraps in 32 bits; the entries themselves do not.
  const auto count = NumberAt<uint32_t>(reply, 0);
  const auto needed = static_cast<int32_t>(4 + count * 68);
  const bool isShort = needed < 4 || SignedLength(reply) < needed;
  const uint64_t size = uint64_t{count} * 68;
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

std::span<const Subject> Subjects() {
  static const Subject subjects[] = {
      RecordGetter<MRoutingDomain>(
          {.code = 130, .size = 148, .expected = Expected<kMRoutingDomain>},
          [](MRoutingDomain** out) { return VDRZAX_GetMRoutingDomain("edge-1", out); },
          VDRZAX_ReleaseMRoutingDomainData),
      ListGetter(
          {.code = 128,
           .size = 88,
           .cap = 512,
           .expected = Expected<kMRoutingLocalRcvr>,
           .dropsHeader = true},
          [](RecordList** out) { return VDRZAX_GetMRoutingLocalRcvrs("edge-1", 7, out); },
          VDRZAX_ReleaseMRoutingLocalRcvrs),
      ListGetter(
          {.code = 135,
           .size = 12,
           .cap = 4096,
           .expected = Expected<kMRoutingMcastGroup>,
           .dropsHeader = true,
           .takesCutRecord = true},
          [](RecordList** out) { return VDRZAX_GetMRoutingAllMcastGroups("edge-1", out); },
          VDRZAX_ReleaseMRoutingMcastGroups),
      RemoteReceivers,
      RawGetter(136, 4,
                [](void* ip) {
                  return VDRZAX_GetMRoutingReplicationIP("edge-1", 7, static_cast<uint32_t*>(ip));
                }),
      RawGetter(139, 4,
                [](void* ip) {
                  return VDRZAX_GetMRoutingMRouterIP("edge-1", 7, static_cast<uint32_t*>(ip));
                }),
  };
  return subjects;
}
