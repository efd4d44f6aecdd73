#include "datapath/neighbour_record.h"

namespace vdrsim {

void ShowNeighbour(RecordWriter<kNeighbourRecord> record, std::string_view interface,
                   const IpAddress& address, const Neighbour& neighbour) {
  record.Bytes("address", address)
      .Text("interface", interface)
      .Mac("mac", neighbour.mac)
      .Text("macText", neighbour.macText);
}

}  // namespace vdrsim
