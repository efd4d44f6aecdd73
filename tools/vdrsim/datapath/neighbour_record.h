#pragma once

#include <cstddef>
#include <string_view>

#include "datapath/caps.h"
#include "datapath/neighbour_state.h"
#include "datapath/record_writer.h"

namespace vdrsim {

// The kernel's own table of neighbours, as the simulation lays it out.
inline constexpr vdrzax::Field kNeighbourRows[] = {
    vdrzax::Bytes("address", 0, 16),
    vdrzax::Text("interface", 16, 64),
    vdrzax::Mac("mac", 80),
    vdrzax::Text("macText", 86, 18),
    vdrzax::Skipped("skipped104", 104, 832),
};
inline constexpr vdrzax::RecordLayout kNeighbourRecord{"NeighbourRecord", 936, kNeighbourRows};
static_assert(vdrzax::Tiles(kNeighbourRecord));

// A caller has room for as many.
static_assert(kMostNeighbours * kNeighbourRecord.size == 7667712);

void ShowNeighbour(RecordWriter<kNeighbourRecord> record, std::string_view interface,
                   const IpAddress& address, const Neighbour& neighbour);

}  // namespace vdrsim
