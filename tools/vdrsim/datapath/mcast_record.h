#pragma once

#include <cstdint>
#include <string>

#include "datapath/record_writer.h"
#include "datapath/state.h"
#include "mcast/mrouting_domain_record.h"
#include "mcast/mrouting_local_rcvr_record.h"
#include "mcast/mrouting_mcast_group_record.h"
#include "mcast/vtep_entry_record.h"

namespace vdrsim {

// The layout of a remote receiver, where the protocol leaves it to the datapath.
inline constexpr vdrzax::Field kRemoteReceiverRows[] = {
    vdrzax::U32("b", 0),  vdrzax::U32("a", 4),  vdrzax::U32("d", 8),
    vdrzax::U32("e", 12), vdrzax::Mac("c", 16), vdrzax::Skipped("unused", 22, 46),
};
inline constexpr vdrzax::RecordLayout kRemoteReceiver{"RemoteReceiver", vdrzax::kVtepEntry.size,
                                                      kRemoteReceiverRows};
static_assert(Tiles(kRemoteReceiver));

// The same of what a domain says beyond its texts.
inline constexpr vdrzax::Field kDomainAreaRows[] = {
    vdrzax::U32("value2", 0),          vdrzax::U16("value3", 4), vdrzax::U8("flag", 6),
    vdrzax::U8("hasRouter", 7),        vdrzax::U32("router", 8), vdrzax::U32("groups", 12),
    vdrzax::Skipped("unused", 16, 16),
};
inline constexpr vdrzax::RecordLayout kDomainArea{"DomainArea", 32, kDomainAreaRows};
static_assert(Tiles(kDomainArea));

void ShowDomain(RecordWriter<vdrzax::kMRoutingDomain> record, std::string_view name,
                const Instance& instance);
void ShowMcastGroup(RecordWriter<vdrzax::kMRoutingMcastGroup> record, uint32_t key,
                    const McastGroup& group);

}  // namespace vdrsim
