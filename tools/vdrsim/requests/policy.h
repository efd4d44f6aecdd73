#pragma once

#include "requests/request.h"

namespace vdrsim::requests {

inline constexpr Request kPolicyRequests[] = {
    Request(119, "GetPolicy", Reads, {U32("policyKey", 412)}, 1000 * 28),
    Request(120, "SetPolicy", Sets,
            {U32("policyArg1", 256), U32("policyArg2", 260), U32("policyArg3", 404),
             U32("policyKey", 412)},
            kResult),
    Request(121, "DelPolicy", Deletes,
            {U32("policyArg1", 256), U32("policyArg2", 260), U32("policyKey", 412)}, kResult),
    Request(122, "GetPolicyCount", Reads, {U32("policyKey", 412)}, 4),
    Request(140, "GetLifPolicies", Reads,
            {Text("instanceName", 0, 64), Text("policyLifName", 340, 64), U32("policyType", 408)},
            20000 * 668),
    Request(141, "SetLifPolicy", Sets,
            {Text("instanceName", 0, 64), U32("routeArg1", 256), U32("routeArg2", 260),
             U32("routeArg3", 268), U32("routeFlags", 272), Text("ifName", 276, 64),
             Text("policyLifName", 340, 64), I32("policyType", 408)},
            kResult),
    Request(142, "DelLifPolicy", Deletes,
            {Text("instanceName", 0, 64), U32("routeArg1", 256), U32("routeArg2", 260),
             U32("routeArg3", 268), U32("routeFlags", 272), Text("ifName", 276, 64),
             Text("policyLifName", 340, 64), I32("policyType", 408)},
            kResult),
    Request(143, "GetPolicyTable", Reads, Form::Block, 1000 * 72),
    Request(144, "SetPolicyTable", Sets, {U32("policyKey", 412), Text("tableName", 416, 64)},
            kResult),
    Request(145, "DelPolicyTable", Deletes, {U32("policyKey", 412)}, kResult),
    Request(146, "GetLifPolicyTableRef", Reads,
            {Text("instanceName", 0, 64), Text("lifName", 384, 64)}, 546),
    Request(147, "SetLifPolicyTableRef", Sets,
            {Text("instanceName", 0, 64), Text("lifName", 384, 64), U16("refCount", 480),
             Bytes("bytes", 484, 480)},
            kResult),
    Request(148, "DelLifPolicyTableRef", Deletes,
            {Text("instanceName", 0, 64), Text("lifName", 384, 64)}, kResult),
};

}  // namespace vdrsim::requests
