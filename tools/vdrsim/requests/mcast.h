#pragma once

#include "requests/request.h"

namespace vdrsim::requests {

inline constexpr Request kMcastRequests[] = {
    Request(128, "GetMRoutingLocalRcvrs", Reads, {Text("instanceName", 0, 64), U32("key", 256)},
            512 * 88),
    Request(129, "GetMRoutingRemoteRcvrs", Reads, {Text("instanceName", 0, 64), U32("key", 256)},
            4 + 2048 * 68),
    Request(130, "GetMRoutingDomain", Reads, {Text("instanceName", 0, 64)}, 148),
    Request(131, "AddMRoutingRemoteRcvrs", Sets,
            {Text("instanceName", 0, 64), U32("a", 256), U32("d", 272), U32("b", 276),
             Mac("c", 280), U32("e", 288)}),
    Request(132, "DelMRoutingRemoteRcvrs", Deletes,
            {Text("instanceName", 0, 64), U32("a", 256), U32("b", 276)}),
    Request(133, "AddMRoutingLocalRcvrs", Sets,
            {Text("instanceName", 0, 64), U32("key", 256), Text("rcvrName", 272, 64)}),
    Request(134, "DelMRoutingLocalRcvrs", Deletes,
            {Text("instanceName", 0, 64), U32("key", 256), Text("rcvrName", 272, 64)}),
    Request(135, "GetMRoutingAllMcastGroups", Reads, {Text("instanceName", 0, 64)}, 4096 * 12),
    Request(136, "GetMRoutingReplicationIP", Reads, {Text("instanceName", 0, 64), U32("key", 256)},
            4),
    Request(137, "AddMRoutingMRouter", Sets, {Text("instanceName", 0, 64), U32("ip", 256)}),
    Request(138, "DelMRoutingMRouter", Deletes, {Text("instanceName", 0, 64)}),
    Request(139, "GetMRoutingMRouterIP", Reads, {Text("instanceName", 0, 64), U32("key", 256)}, 4),
};

}  // namespace vdrsim::requests
