#pragma once

#include "requests/request.h"

namespace vdrsim::requests {

inline constexpr Request kServicesRequests[] = {
    Request(123, "PerformFullSyncSave", Sets, {U8("flag", 256)}, 4),
    Request(124, "GetFullSyncSaveStatus", Reads, Form::Block, 4),
    Request(153, "SoftRSSGetStats", Reads, {Text("name", 256, 64)}, 852),
    Request(154, "SoftRSSStatsReset", Sets, {Text("name", 256, 64)}),
    Request(155, "SoftRSSGetTunables", Reads, {Text("name", 256, 64)}, 12),
    Request(156, "SoftRSSSetTunables", Sets, {Text("name", 256, 64), U64("qword0", 320)}),
    Request(157, "SoftRSSGetIndTable", Reads, {Text("name", 256, 64)}, 128),
    Request(158, "SoftRSSTableSet", Sets,
            {Text("name", 256, 64), Bytes("bytes", 320, 128), I32("entryCount", 448)}),
    Request(166, "AddVMPublicIP", Sets,
            {U32("a", 256), Mac("c", 260), U32("d", 268), U32("b", 272)}),
    Request(167, "DelVMPublicIP", Deletes, {U32("a", 256), U32("b", 272)}),
    Request(168, "DelVMPublicIPEntry", Deletes, {U32("key", 256)}),
    Request(169, "DelAllVMPublicIPEntries", Deletes, Form::None),
    Request(170, "GetVMPublicIPEntry", Reads, {U32("key", 256)}, 1042),
    Request(171, "GetVMPublicIPTable", Reads, Form::None, 8536068),
};

}  // namespace vdrsim::requests
