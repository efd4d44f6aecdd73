#pragma once

#include "requests/request.h"

namespace vdrsim::requests {

inline constexpr Request kLifRequests[] = {
    Request(19, "SetLif", Sets,
            {Text("instanceName", 0, 64), Text("auxName", 256, 64), Text("lifName", 384, 64),
             U32("a3", 512), U32("a4", 516), U32("a7", 520), Mac("extra", 524), U32("a5", 544),
             U32("a6", 548), U32("flagsWord", 552), U8("mode", 788)}),
    Request(20, "DelLif", Deletes,
            {Text("instanceName", 0, 64), Text("auxName", 256, 64), Text("lifName", 384, 64)}),
    Request(21, "GetLifs", Reads, {Text("instanceName", 0, 64)}, 10000 * 961),
    Request(22, "GetLif", Reads, {Text("instanceName", 0, 64), Text("lifName", 384, 64)}, 961),
    Request(25, "SetLifDIIp", Sets,
            {Text("instanceName", 0, 64), Text("lifName", 384, 64), U32("ip", 520)}),
    Request(
        26, "SetLifIp", Sets,
        {Text("instanceName", 0, 64), Text("lifName", 384, 64), U32("ip", 512), U32("mask", 516)}),
    Request(
        27, "DelLifIp", Deletes,
        {Text("instanceName", 0, 64), Text("lifName", 384, 64), U32("ip", 512), U32("mask", 516)}),
    Request(28, "SetLifVxlanCP", Sets, {Text("instanceName", 0, 64), Text("lifName", 384, 64)}),
    Request(29, "DelLifVxlanCP", Deletes, {Text("instanceName", 0, 64), Text("lifName", 384, 64)}),
    Request(30, "EnableLif", Sets, {Text("instanceName", 0, 64), Text("lifName", 384, 64)}),
    Request(31, "DisableLif", Sets, {Text("instanceName", 0, 64), Text("lifName", 384, 64)}),
    Request(32, "SetLifVxlanMulticastIp", Sets,
            {Text("instanceName", 0, 64), Text("lifName", 384, 64), U32("ip", 520)}),
    Request(33, "ConfigureLifDhcpRelay", Sets,
            {Text("instanceName", 0, 64), Text("lifName", 384, 64), U32("count", 556),
             Bytes("servers", 560, 160)}),
    Request(59, "GetBridgeLifs", Reads, {Text("instanceName", 0, 64)}, 10000 * 961),
    Request(60, "GetBridgeLif", Reads, {Text("instanceName", 0, 64), Text("lifName", 384, 64)},
            961),
    Request(
        108, "SetLifIpv6", Sets,
        {OpenText("instanceName", 0, 64), U64("addrHigh", 256), U64("addrLow", 264),
         OpenText("lifName276", 276, 64), U8("prefixLength", 340), OpenText("lifName", 384, 64)}),
    Request(
        109, "DelLifIpv6", Deletes,
        {OpenText("instanceName", 0, 64), U64("addrHigh", 256), U64("addrLow", 264),
         OpenText("lifName276", 276, 64), U8("prefixLength", 340), OpenText("lifName", 384, 64)}),
    Request(125, "SetLifMcastRouting", Sets,
            {Text("instanceName", 0, 64), Text("lifName", 384, 64)}),
    Request(126, "SetLifMcastRouting", Sets,
            {Text("instanceName", 0, 64), Text("lifName", 384, 64)}),
    Request(127, "SetMcastRouting", Sets,
            {Text("instanceName", 0, 64), Text("name2", 256, 64), U32("value1", 320),
             U32("value2", 324), U16("value3", 328), U8("flag", 330)}),
    Request(152, "RAMTUSetv6", Sets,
            {Text("instanceName", 0, 64), U32("mtu", 256), Text("lifName", 384, 64)}),
    Request(172, "GetExtVlanLifs", Reads, {U32("vlanId", 260)}, 10000 * 961),
};

}  // namespace vdrsim::requests
