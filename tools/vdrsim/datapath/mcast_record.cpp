#include "datapath/mcast_record.h"

#include <array>

namespace vdrsim {

void ShowDomain(RecordWriter<vdrzax::kMRoutingDomain> record, std::string_view name,
                const Instance& instance) {
  const Instance::McastRouting& routing = instance.mcastRouting;
  const Multicast& multicast = instance.multicast;
  std::array<std::byte, kDomainArea.size> area{};
  RecordWriter<kDomainArea>(area)
      .Number("value2", routing.value2)
      .Number("value3", routing.value3)
      .Number("flag", routing.flag)
      .Number("hasRouter", multicast.router.has_value())
      .Number("router", multicast.router.value_or(0))
      .Number("groups", multicast.groups.size());
  record.Text("domainName", name)
      .Text("domainLabel", routing.name2)
      .Bytes("domainData", area)
      .Number("domainValue", routing.value1);
}

void ShowMcastGroup(RecordWriter<vdrzax::kMRoutingMcastGroup> record, uint32_t key,
                    const McastGroup& group) {
  record.Number("group0", key)
      .Number("group1", group.localReceivers.size())
      .Number("group2", group.remoteReceivers.size());
}

}  // namespace vdrsim
