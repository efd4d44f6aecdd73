#pragma once

#include "requests/request.h"

namespace vdrsim::requests {

inline constexpr Request kInstanceRequests[] = {
    Request(0, "GetInstances", Reads, {Text("name", 0, 64), U8("filter", 368)}, 1001 * 577),
    Request(1, "GetInstance", Reads, {Text("name", 0, 64)}, 577),
    Request(2, "SetVdrInstance", Sets,
            {Text("name", 0, 64), U32("second", 256), OpenText("text", 332, 18), U32("fourth", 352),
             U8("flag", 368)}),
    Request(3, "DelVdrInstance", Deletes, {Text("name", 0, 64)}),
    Request(4, "SetVdrInstanceTunables", Sets,
            {Text("name", 0, 64), Text("tunables", 260, 64), U32("value", 324)}),
    Request(5, "GetVdrInstanceCPStats", Reads, {Text("name", 0, 64)}, 852),
    Request(6, "ResetVdrInstanceCPStats", Sets, {Text("name", 0, 64)}),
    Request(7, "CPActivate", Sets, Form::Scalar),
    Request(8, "SetCPIp", Sets, {Text("name", 0, 64), U32("address", 328)}),
    Request(9, "GetLogLevel", Reads, Form::None, 4),
    Request(10, "SetLogLevel", Sets, Form::Scalar),
    Request(11, "GetExtendedLogLevel", Reads, Form::None, 4),
    Request(12, "SetExtendedLogLevel", Sets, Form::Scalar),
    Request(13, "GetStatsLevel", Reads, Form::None, 4),
    Request(14, "SetStatsLevel", Sets, Form::Scalar),
    Request(15, "PlumbVdrConnection", Sets,
            {Text("connectionName", 256, 64), Text("second", 320, 16), Text("fourth", 336, 18),
             Text("fifth", 354, 32), Text("sixth", 386, 256), U32("seventh", 644)}),
    Request(16, "UnPlumbVdrConnection", Deletes, {Text("connectionName", 256, 64)}),
    Request(17, "GetConnections", Reads, Form::Block, 131072),
    Request(18, "GetConnection", Reads, {Text("connectionName", 256, 64)}, 152),
    Request(23, "GetLifStats", Sets, {Text("instanceName", 0, 64), Text("interfaceName", 384, 64)},
            852),
    Request(23, "GetLifStatsCached", Reads,
            {Text("instanceName", 0, 64), Text("interfaceName", 384, 64), One("word552", 552, 4)},
            852, 552),
    Request(24, "ResetLifStats", Sets,
            {Text("instanceName", 0, 64), Text("interfaceName", 384, 64)}),
    Request(42, "PreUnload", Sets, Form::None),
    Request(43, "GetVdrDiStats", Reads, Form::Block, 852),
    Request(44, "ResetVdrDiStats", Sets, Form::Block),
    Request(85, "VDRDevCheckConnDeletion", Reads, Form::None, 4),
    Request(87, "GetVdrInstanceCPSyncState", Reads, {Text("name", 0, 64)}, 5 * 284),
    Request(88, "SetVdrInstanceCPSyncState", Sets, {Text("name", 0, 64), U32("state", 256)}),
    Request(149, "GetVMAC", Reads, {Text("connectionName", 256, 64)}, 6),
    Request(159, "GetTxDispQueueSize", Reads, Form::None, 4),
    Request(160, "SetTxDispQueueSize", Sets, Form::Scalar),
};

}  // namespace vdrsim::requests
