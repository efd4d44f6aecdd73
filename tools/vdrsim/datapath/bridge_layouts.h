#pragma once

#include "bridge/bridge_endpoint_record.h"
#include "channel/record_layout.h"

// The replies of bridging whose layout is the kernel's own, as the simulation lays them out.
namespace vdrsim {

inline constexpr vdrzax::Field kEndpointStatsRows[] = {
    vdrzax::Text("name", 0, 64),
    vdrzax::Numbers("counts", 64, 8, 4),
    vdrzax::Skipped("unused96", 96, 50),
};
inline constexpr vdrzax::RecordLayout kEndpointStats{"endpoint statistics", 146,
                                                     kEndpointStatsRows};
static_assert(Tiles(kEndpointStats));

inline constexpr vdrzax::Field kEndpointStatusRows[] = {
    vdrzax::Text("name", 0, 64),
    vdrzax::Text("fourthName", 64, 64),
    vdrzax::Text("fifthName", 128, 64),
    vdrzax::U32("value1", 192),
    vdrzax::U32("value2", 196),
    vdrzax::U16("tag", 200),
    vdrzax::U8("flag1", 202),
    vdrzax::U8("flag2", 203),
    vdrzax::Skipped("unused204", 204, 25),
};
inline constexpr vdrzax::RecordLayout kEndpointStatus{"endpoint status", 229, kEndpointStatusRows};
static_assert(Tiles(kEndpointStatus));

inline constexpr vdrzax::Field kRawEndpointRows[] = {
    vdrzax::Text("name", 0, 64),
    vdrzax::Text("lifName", 64, 64),
    vdrzax::Text("secondName", 128, 64),
    vdrzax::U32("value1", 192),
    vdrzax::U32("value2", 196),
    vdrzax::U16("tag", 200),
    vdrzax::U8("flag1", 202),
    vdrzax::U8("flag2", 203),
    vdrzax::Skipped("unused204", 204, 31),
};
inline constexpr vdrzax::RecordLayout kRawEndpoint{"endpoint", vdrzax::kBridgeEndpointRecord.size,
                                                   kRawEndpointRows};
static_assert(Tiles(kRawEndpoint));

inline constexpr vdrzax::Field kBfdPortConnectionRows[] = {
    vdrzax::Text("portName", 0, 64),
    vdrzax::Text("name2", 64, 16),
    vdrzax::Mac("mac", 80),
};
inline constexpr vdrzax::RecordLayout kBfdPortConnection{"BFD port connection", 86,
                                                         kBfdPortConnectionRows};
static_assert(Tiles(kBfdPortConnection));

inline constexpr vdrzax::Field kTransportNodeRows[] = {
    vdrzax::Text("name1", 0, 64), vdrzax::Text("name2", 64, 64),   vdrzax::Text("name3", 128, 16),
    vdrzax::U32("value", 144),    vdrzax::Bytes("bytes", 148, 64), vdrzax::U32("selector", 212),
};
inline constexpr vdrzax::RecordLayout kTransportNode{"transport node", 216, kTransportNodeRows};
static_assert(Tiles(kTransportNode));

}  // namespace vdrsim
