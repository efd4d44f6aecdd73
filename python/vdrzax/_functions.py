"""Made by generate.py from the headers and the record layouts."""

from typing import Dict

from ._arguments import Function, Mac, Number, Pointer, Text

VERSION = "1.0.0"
SONAME = "libvdrzax.so.1"

NODE = "/qorv/devices/char/zaxdriver/ryn_vdr"
UPGRADE_NODE = "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade"

FUNCTIONS: Dict[str, Function] = {
    "VDRZAX_SetBridgeLif": Function(
        (
            Text("lifName", 63),
            Text("secondName", 63),
            Number("value1", 4),
            Number("value2", 4),
            Number("value3", 4),
            Text("instanceName", 63),
            Number("set", 4, signed=True),
        ),
    ),
    "VDRZAX_AddBridgeEndpoint": Function(
        (
            Text("lifName", 63),
            Text("secondName", 63),
            Text("endpointName", 63),
            Number("value1", 4),
            Number("value2", 4),
            Text("fourthName", 63),
            Number("tag", 2),
            Number("flag1", 1),
            Text("fifthName", 63),
            Number("flag2", 1),
        ),
    ),
    "VDRZAX_DelBridgeEndpoint": Function(
        (
            Text("lifName", 63),
            Text("endpointName", 63),
        ),
    ),
    "VDRZAX_FlushBridgeEndpoint": Function(
        (
            Number("all", 1),
        ),
    ),
    "VDRZAX_SetBridgeRepMode": Function(
        (
            Text("instanceName", 63),
            Number("mode", 4),
        ),
    ),
    "VDRZAX_GetBridgeInstance": Function(
        (
            Text("instanceName", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseBridgeInstance",
    ),
    "VDRZAX_GetBridgeInstances": Function(
        (
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseBridgeInstances",
        record="BridgeInstanceRecord",
        most=4096,
    ),
    "VDRZAX_GetBridgeNetworks": Function(
        (
            Text("name1"),
            Text("name2", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseBridgeNetworks",
        record="BridgeNetworkRecord",
        most=32768,
    ),
    "VDRZAX_GetBridgePorts": Function(
        (
            Text("name1"),
            Text("name2", 63),
            Number("network", 2),
            Number("value", 4),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseBridgePorts",
        record="BridgePortRecord",
        most=32768,
    ),
    "VDRZAXGetBridgeInstances": Function(
        (
            Pointer("list"),
        ),
    ),
    "VDRZAXGetBridgeNetworks": Function(
        (
            Text("name1"),
            Text("name2", 63),
            Pointer("list"),
        ),
    ),
    "VDRZAXGetBridgePorts": Function(
        (
            Text("name1"),
            Text("name2"),
            Number("network", 2),
            Number("value", 4),
            Pointer("list"),
        ),
    ),
    "VDRZAX_GetBeStats": Function(
        (
            Text("lifName", 63),
            Pointer("buffer"),
        ),
        room=146,
    ),
    "VDRZAX_GetBeStatus": Function(
        (
            Text("lifName", 63),
            Pointer("buffer"),
        ),
        room=229,
    ),
    "VDRZAX_GetBeAll": Function(
        (
            Pointer("buffer"),
            Number("capacity", 4),
            Pointer("count"),
        ),
    ),
    "VDRZAX_ReleaseBridgeInstance": Function(
        (
            Pointer("record"),
        ),
        is_release=True,
    ),
    "VDRZAX_ReleaseBridgeNetwork": Function(
        (
            Pointer("record"),
        ),
        is_release=True,
    ),
    "VDRZAX_ReleaseBridgeInstances": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_ReleaseBridgeNetworks": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_ReleaseBridgePorts": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_GetBridgeFdbEntries": Function(
        (
            Text("instanceName", 63),
            Number("segment", 2),
            Number("selector", 4),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseBridgeFdbEntries",
        record="BridgeFdbRecord",
        most=10240,
    ),
    "VDRZAXGetBridgeFdbEntries": Function(
        (
            Text("instanceName"),
            Number("segment", 2),
            Number("selector", 4),
            Pointer("list"),
        ),
    ),
    "VDRZAX_BridgeSetFdbEntry": Function(
        (
            Text("instanceName", 63),
            Text("macText", 17, optional=True),
            Number("segment", 4),
            Number("selector", 4),
            Number("value", 4),
            Number("flag", 1),
        ),
    ),
    "VDRZAX_BridgeClearFdbTable": Function(
        (
            Text("instanceName", 63),
            Number("segment", 4),
            Number("selector", 4),
        ),
    ),
    "VDRZAX_ReleaseBridgeFdbEntries": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_BridgeSetConfig": Function(
        (
            Text("instanceName", 63),
            Number("commandCode", 4),
            Number("value", 4),
        ),
    ),
    "VDRZAX_BridgeAdd": Function(
        (
            Text("instanceName", 63),
            Number("value", 4),
        ),
    ),
    "VDRZAX_BridgeDel": Function(
        (
            Text("instanceName", 63),
            Number("value", 4),
        ),
    ),
    "VDRZAX_BridgeSetHAAdminState": Function(
        (
            Text("instanceName", 63),
            Number("state", 4),
        ),
    ),
    "VDRZAX_BridgeEnable": Function(
        (
            Text("instanceName", 63),
            Number("value", 1),
        ),
    ),
    "VDRZAX_BridgeDisable": Function(
        (
            Text("instanceName", 63),
            Number("value", 1),
        ),
    ),
    "VDRZAX_GetBridgeClusters": Function(
        (
            Text("name", 63, optional=True),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseBridgeClusters",
        record="BridgeClusterRecord",
        most=10,
    ),
    "VDRZAX_GetBridgeClusterNodes": Function(
        (
            Text("name", 63, optional=True),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseBridgeClusterNodes",
        record="BridgeClusterNodeRecord",
        most=100,
    ),
    "VDRZAXGetBridgeClusters": Function(
        (
            Text("name", 63, optional=True),
            Pointer("list"),
        ),
    ),
    "VDRZAXGetBridgeClusterNodes": Function(
        (
            Text("name", 63, optional=True),
            Pointer("list"),
        ),
    ),
    "VDRZAX_BridgeClusterSet": Function(
        (
            Text("name", 63),
            Number("create", 1),
        ),
    ),
    "VDRZAX_BridgeClusterNodeSet": Function(
        (
            Text("name", 63),
            Text("nodeName", 63),
            Mac("mac", optional=True),
            Number("add", 1),
        ),
    ),
    "VDRZAX_FlushBridgeCluster": Function(
        (
            Text("name", 63, optional=True),
            Number("all", 1),
        ),
    ),
    "VDRZAX_SetBridgeClusterDebug": Function(
        (
            Text("name", 63, optional=True),
            Number("level", 1),
        ),
    ),
    "VDRZAX_BridgeClusterBfdHAProfileSet": Function(
        (
            Text("name", 63),
            Number("profile", 1),
            Number("value1", 4),
            Number("value2", 4),
        ),
    ),
    "VDRZAX_ReleaseBridgeClusters": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_ReleaseBridgeClusterNodes": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_BridgeLocalTransportNodeSet": Function(
        (
            Text("name1", 63),
            Text("name2", 63),
            Text("name3", 15),
            Number("value", 4),
            Pointer("bytes"),
            Number("set", 1),
        ),
    ),
    "VDRZAX_BridgeGetLocalTransportNode": Function(
        (
            Pointer("buffer"),
            Number("selector", 4),
        ),
        room=2048,
    ),
    "VDRZAX_GetBridgeEndpoints": Function(
        (
            Text("name", 63, optional=True),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseBridgeEndpoints",
        record="BridgeEndpointRecord",
        most=28672,
    ),
    "VDRZAX_GetBridgeBFDSessions": Function(
        (
            Text("name", 63, optional=True),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseBridgeBFDSessions",
        record="BridgeBfdSessionRecord",
        most=2867200,
    ),
    "VDRZAXGetBridgeEndpoints": Function(
        (
            Text("name", 63, optional=True),
            Pointer("list"),
        ),
    ),
    "VDRZAXGetBridgeBFDSessions": Function(
        (
            Text("name", 63, optional=True),
            Pointer("list"),
        ),
    ),
    "VDRZAX_ReleaseBridgeEndpoints": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_ReleaseBridgeBFDSessions": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_PlumbBFDPortConnection": Function(
        (
            Text("portName", 63),
            Text("name2", 15),
            Mac("mac", optional=True),
        ),
    ),
    "VDRZAX_UnPlumbBFDPortConnection": Function(
        (
            Text("portName", 63),
        ),
    ),
    "VDRZAX_GetBFDPortConnections": Function(
        (
            Pointer("buffer"),
        ),
        room=131072,
    ),
    "VDRZAXIoctl": Function(
        (
            Number("request", 4, signed=True),
            Pointer("env"),
        ),
    ),
    "VDRZAXGetUuidOrName": Function(
        (
            Text("text"),
            Pointer("out"),
        ),
    ),
    "VDRZAX_AddE2I": Function(
        (
            Number("key", 4),
            Number("value2", 4),
            Mac("mac"),
            Number("value4", 4),
            Number("value5", 4),
        ),
    ),
    "VDRZAX_DelE2I": Function(
        (
            Number("key", 4),
        ),
    ),
    "VDRZAX_DelAllE2I": Function(
        (),
    ),
    "VDRZAX_GetE2IEntry": Function(
        (
            Number("key", 4),
            Pointer("out"),
        ),
        release="free",
    ),
    "VDRZAX_GetE2ITable": Function(
        (
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseE2ITable",
    ),
    "VDRZAX_ReleaseE2ITable": Function(
        (
            Pointer("table"),
        ),
        is_release=True,
    ),
    "VDRZAX_AddPmac": Function(
        (
            Number("value", 4),
            Mac("mac", optional=True),
        ),
    ),
    "VDRZAX_DelPmac": Function(
        (
            Mac("mac", optional=True),
        ),
    ),
    "VDRZAX_GetPmac": Function(
        (
            Pointer("buffer"),
        ),
        room=131072,
    ),
    "VDRZAX_GetLocaleId": Function(
        (
            Pointer("buffer"),
        ),
        room=16,
    ),
    "VDRZAX_DumpFLTable": Function(
        (
            Number("selector", 2),
            Pointer("buffer"),
        ),
        room=426080,
    ),
    "VDRZAX_GetInstance": Function(
        (
            Text("name", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseInstance",
    ),
    "VDRZAX_GetInstances": Function(
        (
            Text("name", 63, optional=True),
            Number("filter", 1),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseInstances",
        record="InstanceRecord",
        most=1001,
    ),
    "VDRZAX_SetVdrInstance": Function(
        (
            Text("name", 63),
            Number("second", 4),
            Text("text", 18, optional=True),
            Number("fourth", 4),
            Number("flag", 1),
        ),
    ),
    "VDRZAX_DelVdrInstance": Function(
        (
            Text("name", 63),
        ),
    ),
    "VDRZAX_SetVdrInstanceTunables": Function(
        (
            Text("name", 63),
            Text("tunables", 63),
            Number("value", 4),
        ),
    ),
    "VDRZAX_ReleaseInstance": Function(
        (
            Pointer("record"),
        ),
        is_release=True,
    ),
    "VDRZAX_ReleaseInstances": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_GetVdrInstanceCPStats": Function(
        (
            Text("name", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseStats",
    ),
    "VDRZAX_ResetVdrInstanceCPStats": Function(
        (
            Text("name", 63),
        ),
    ),
    "VDRZAX_GetLifStats": Function(
        (
            Text("instanceName", 63),
            Text("interfaceName", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseStats",
    ),
    "VDRZAX_GetLifStatsCached": Function(
        (
            Text("instanceName", 63),
            Text("interfaceName", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseStats",
    ),
    "VDRZAX_ResetLifStats": Function(
        (
            Text("instanceName", 63),
            Text("interfaceName", 63),
        ),
    ),
    "VDRZAX_GetVdrDiStats": Function(
        (
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseStats",
    ),
    "VDRZAX_ResetVdrDiStats": Function(
        (),
    ),
    "VDRZAX_ReleaseStats": Function(
        (
            Pointer("record"),
        ),
        is_release=True,
    ),
    "VDRZAX_GetVdrInstanceCPSyncState": Function(
        (
            Text("name", 63),
            Pointer("out"),
        ),
        release="free",
    ),
    "VDRZAX_SetVdrInstanceCPSyncState": Function(
        (
            Text("name", 63),
            Number("state", 4),
        ),
    ),
    "VDRZAX_CPActivate": Function(
        (
            Number("value", 4),
        ),
    ),
    "VDRZAX_SetCPIp": Function(
        (
            Text("name", 63),
            Number("address", 4),
        ),
    ),
    "VDRZAX_GetLogLevel": Function(
        (
            Pointer("level"),
        ),
    ),
    "VDRZAX_GetExtendedLogLevel": Function(
        (
            Pointer("level"),
        ),
    ),
    "VDRZAX_GetStatsLevel": Function(
        (
            Pointer("level"),
        ),
    ),
    "VDRZAX_GetTxDispQueueSize": Function(
        (
            Pointer("size"),
        ),
    ),
    "VDRZAX_SetLogLevel": Function(
        (
            Number("level", 4),
        ),
    ),
    "VDRZAX_SetExtendedLogLevel": Function(
        (
            Number("level", 4),
        ),
    ),
    "VDRZAX_SetStatsLevel": Function(
        (
            Number("level", 4),
        ),
    ),
    "VDRZAX_SetTxDispQueueSize": Function(
        (
            Number("size", 4),
        ),
    ),
    "VDRZAX_PreUnload": Function(
        (),
    ),
    "VDRZAX_PlumbVdrConnection": Function(
        (
            Text("connectionName", 63),
            Text("second", 15),
            Number("third", 8),
            Text("fourth", 17, optional=True),
            Text("fifth", 31, optional=True),
            Text("sixth", 255, optional=True),
            Number("seventh", 4),
        ),
    ),
    "VDRZAX_UnPlumbVdrConnection": Function(
        (
            Text("connectionName", 63),
        ),
    ),
    "VDRZAX_GetConnections": Function(
        (
            Pointer("buffer"),
        ),
        room=131072,
    ),
    "VDRZAX_GetConnection": Function(
        (
            Text("connectionName", 63),
            Pointer("buffer"),
        ),
        room=152,
    ),
    "VDRZAX_GetVMAC": Function(
        (
            Text("connectionName", 63),
            Pointer("buffer"),
        ),
        room=6,
    ),
    "VDRZAX_VDRDevCheckConnDeletion": Function(
        (
            Pointer("result"),
        ),
    ),
    "VDRZAX_SetLif": Function(
        (
            Text("lifName", 63),
            Text("auxName", 63),
            Number("a3", 4),
            Number("a4", 4),
            Number("a5", 4),
            Number("a6", 4),
            Number("a7", 4),
            Number("flagsWord", 4, signed=True),
            Text("instanceName", 63),
            Mac("extra", optional=True),
        ),
    ),
    "VDRZAX_DelLif": Function(
        (
            Text("lifName", 63),
            Text("auxName", 63),
            Text("instanceName", 63),
        ),
    ),
    "VDRZAX_GetLif": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseLif",
    ),
    "VDRZAX_GetBridgeLif": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseLif",
    ),
    "VDRZAX_GetLifs": Function(
        (
            Text("instanceName", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseLifs",
        record="LifRecord",
        most=10000,
    ),
    "VDRZAX_GetExtVlanLifs": Function(
        (
            Number("vlanId", 2),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseLifs",
        record="LifRecord",
        most=10000,
    ),
    "VDRZAX_GetBridgeLifs": Function(
        (
            Text("instanceName", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseLifs",
        record="LifRecord",
        most=10000,
    ),
    "VDRZAX_ReleaseLif": Function(
        (
            Pointer("record"),
        ),
        is_release=True,
    ),
    "VDRZAX_ReleaseLifs": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_SetLifDIIp": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
            Number("ip", 4),
        ),
    ),
    "VDRZAX_SetLifVxlanMulticastIp": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
            Number("ip", 4),
        ),
    ),
    "VDRZAX_SetLifIp": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
            Number("ip", 4),
            Number("mask", 4),
        ),
    ),
    "VDRZAX_DelLifIp": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
            Number("ip", 4),
            Number("mask", 4),
        ),
    ),
    "VDRZAX_SetLifIpv6": Function(
        (
            Text("instanceName", 64),
            Text("lifName", 64),
            Number("addrHigh", 8),
            Number("addrLow", 8),
            Number("prefixLength", 4),
        ),
    ),
    "VDRZAX_DelLifIpv6": Function(
        (
            Text("instanceName", 64),
            Text("lifName", 64),
            Number("addrHigh", 8),
            Number("addrLow", 8),
            Number("prefixLength", 4),
        ),
    ),
    "VDRZAX_SetLifVxlanCP": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
        ),
    ),
    "VDRZAX_DelLifVxlanCP": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
        ),
    ),
    "VDRZAX_EnableLif": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
        ),
    ),
    "VDRZAX_DisableLif": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
        ),
    ),
    "VDRZAX_ConfigureLifDhcpRelay": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63, optional=True),
            Pointer("servers"),
        ),
    ),
    "VDRZAX_RAMTUSetv6": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
            Number("mtu", 4),
        ),
    ),
    "VDRZAX_SetLifMcastRouting": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
            Number("enable", 1),
        ),
    ),
    "VDRZAX_SetMcastRouting": Function(
        (
            Text("instanceName", 63),
            Text("name2", 63),
            Number("value1", 4),
            Number("value2", 4),
            Number("value3", 2),
            Number("flag", 1),
        ),
    ),
    "VDRZAX_GetMRoutingLocalRcvrs": Function(
        (
            Text("instanceName", 63),
            Number("key", 4),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseMRoutingLocalRcvrs",
        record="MRoutingLocalRcvr",
        most=512,
    ),
    "VDRZAX_AddMRoutingLocalRcvrs": Function(
        (
            Text("instanceName", 63),
            Number("key", 4),
            Text("rcvrName", 63, optional=True),
        ),
    ),
    "VDRZAX_DelMRoutingLocalRcvrs": Function(
        (
            Text("instanceName", 63),
            Number("key", 4),
            Text("rcvrName", 63, optional=True),
        ),
    ),
    "VDRZAX_ReleaseMRoutingLocalRcvrs": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_GetMRoutingRemoteRcvrs": Function(
        (
            Text("instanceName", 63),
            Number("key", 4),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseVTEPTable",
    ),
    "VDRZAX_ReleaseVTEPTable": Function(
        (
            Pointer("table"),
        ),
        is_release=True,
    ),
    "VDRZAX_AddMRoutingRemoteRcvrs": Function(
        (
            Text("instanceName", 63),
            Number("a", 4),
            Number("b", 4),
            Mac("c"),
            Number("d", 4),
            Number("e", 4),
        ),
    ),
    "VDRZAX_DelMRoutingRemoteRcvrs": Function(
        (
            Text("instanceName", 63),
            Number("a", 4),
            Number("b", 4),
        ),
    ),
    "VDRZAX_GetMRoutingDomain": Function(
        (
            Text("instanceName", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseMRoutingDomainData",
    ),
    "VDRZAX_ReleaseMRoutingDomainData": Function(
        (
            Pointer("rec"),
        ),
        is_release=True,
    ),
    "VDRZAX_GetMRoutingAllMcastGroups": Function(
        (
            Text("instanceName", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseMRoutingMcastGroups",
        record="MRoutingMcastGroup",
        most=4096,
    ),
    "VDRZAX_ReleaseMRoutingMcastGroups": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_GetMRoutingReplicationIP": Function(
        (
            Text("instanceName", 63),
            Number("key", 4),
            Pointer("outIp"),
        ),
        room=4,
    ),
    "VDRZAX_GetMRoutingMRouterIP": Function(
        (
            Text("instanceName", 63),
            Number("key", 4),
            Pointer("outIp"),
        ),
        room=4,
    ),
    "VDRZAX_AddMRoutingMRouter": Function(
        (
            Text("instanceName", 63),
            Number("ip", 4),
        ),
    ),
    "VDRZAX_DelMRoutingMRouter": Function(
        (
            Text("instanceName", 63),
        ),
    ),
    "VDRZAX_SetPolicy": Function(
        (
            Number("policyKey", 4),
            Number("policyArg1", 4),
            Number("policyArg2", 4),
            Number("policyArg3", 4),
            Pointer("result"),
        ),
    ),
    "VDRZAX_DelPolicy": Function(
        (
            Number("policyKey", 4),
            Number("policyArg1", 4),
            Number("policyArg2", 4),
            Pointer("result"),
        ),
    ),
    "VDRZAX_GetPolicy": Function(
        (
            Number("policyKey", 4),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseAllPolicy",
        record="PolicyRecord",
        most=1000,
    ),
    "VDRZAX_GetPolicyCount": Function(
        (
            Number("policyKey", 4),
            Pointer("count"),
        ),
    ),
    "VDRZAX_ReleaseAllPolicy": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_SetPolicyTable": Function(
        (
            Number("policyKey", 4),
            Text("tableName", 63),
            Pointer("result"),
        ),
    ),
    "VDRZAX_DelPolicyTable": Function(
        (
            Number("policyKey", 4),
            Pointer("result"),
        ),
    ),
    "VDRZAX_GetPolicyTable": Function(
        (
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseAllPolicyTable",
        record="PolicyTableRecord",
        most=1000,
    ),
    "VDRZAX_ReleaseAllPolicyTable": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_SetLifPolicy": Function(
        (
            Number("policyType", 4, signed=True),
            Text("policyLifName", 63, optional=True),
            Number("routeArg1", 4),
            Number("routeArg2", 4),
            Number("routeArg3", 4),
            Text("ifName", 63, optional=True),
            Text("instanceName", 63),
            Number("routeFlags", 4),
            Pointer("result"),
        ),
    ),
    "VDRZAX_DelLifPolicy": Function(
        (
            Number("policyType", 4, signed=True),
            Text("policyLifName", 63, optional=True),
            Number("routeArg1", 4),
            Number("routeArg2", 4),
            Number("routeArg3", 4),
            Text("ifName", 63, optional=True),
            Text("instanceName", 63),
            Number("routeFlags", 4),
            Pointer("result"),
        ),
    ),
    "VDRZAX_GetLifPolicies": Function(
        (
            Text("instanceName", 63),
            Number("policyType", 4),
            Text("policyLifName", 63, optional=True),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseRoutes",
        record="RouteRecord",
        most=20000,
    ),
    "VDRZAX_SetLifPolicyTableRef": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
            Number("refCount", 2),
            Pointer("entries"),
            Pointer("result"),
        ),
    ),
    "VDRZAX_DelLifPolicyTableRef": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
            Pointer("result"),
        ),
    ),
    "VDRZAX_GetLifPolicyTableRef": Function(
        (
            Text("instanceName", 63),
            Text("lifName", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseLifPolicyTableRef",
    ),
    "VDRZAX_ReleaseLifPolicyTableRef": Function(
        (
            Pointer("record"),
        ),
        is_release=True,
    ),
    "VDRZAX_SetRoute": Function(
        (
            Number("routeArg1", 4),
            Number("routeArg2", 4),
            Number("routeArg3", 4),
            Text("ifName", 63, optional=True),
            Text("instanceName", 63),
            Number("routeFlags", 4),
            Pointer("result"),
        ),
    ),
    "VDRZAX_DelRoute": Function(
        (
            Number("routeArg1", 4),
            Number("routeArg2", 4),
            Number("routeArg3", 4),
            Text("ifName", 63, optional=True),
            Text("instanceName", 63),
            Pointer("result"),
        ),
    ),
    "VDRZAX_GetRoutes": Function(
        (
            Text("instanceName", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseRoutes",
        record="RouteRecord",
        most=20000,
    ),
    "VDRZAX_GetLifSelectionRoutes": Function(
        (
            Text("instanceName", 63),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseRoutes",
        record="RouteRecord",
        most=20000,
    ),
    "VDRZAX_GetResolveRoute": Function(
        (
            Text("instanceName", 63),
            Number("resolveArg1", 4),
            Number("resolveArg2", 4),
            Number("resolveArg3", 4),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseRoute",
    ),
    "VDRZAX_ReleaseRoute": Function(
        (
            Pointer("record"),
        ),
        is_release=True,
    ),
    "VDRZAX_ReleaseRoutes": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_GetDemuxRoutes": Function(
        (
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseDemuxRoutes",
        record="DemuxRouteRecord",
        most=30000,
    ),
    "VDRZAX_ReleaseDemuxRoutes": Function(
        (
            Pointer("list"),
        ),
        is_release=True,
    ),
    "VDRZAX_SetRoutev6": Function(
        (
            Number("destPart1", 8),
            Number("destPart2", 8),
            Number("prefixLength", 1),
            Number("gatewayPart1", 8),
            Number("gatewayPart2", 8),
            Text("ifName", 64, optional=True),
            Text("instanceName", 64),
        ),
    ),
    "VDRZAX_DelRoutev6": Function(
        (
            Number("destPart1", 8),
            Number("destPart2", 8),
            Number("prefixLength", 1),
            Number("gatewayPart1", 8),
            Number("gatewayPart2", 8),
            Text("ifName", 64, optional=True),
            Text("instanceName", 64),
        ),
    ),
    "VDRZAX_GetRoutesv6": Function(
        (
            Text("instanceName", 64),
            Pointer("table"),
            Pointer("count"),
        ),
        release="free",
    ),
    "VDRZAX_SetArp": Function(
        (
            Number("ip", 4),
            Text("macText", 17),
            Text("ifName", 63),
            Text("instanceName", 63),
        ),
    ),
    "VDRZAX_DelArp": Function(
        (
            Number("ip", 4),
            Text("ifName", 63),
            Text("instanceName", 63),
        ),
    ),
    "VDRZAX_SetProxyArp": Function(
        (
            Number("ip", 4),
            Text("ifName", 63),
            Text("instanceName", 63),
        ),
    ),
    "VDRZAX_DelProxyArp": Function(
        (
            Number("ip", 4),
            Text("ifName", 63),
            Text("instanceName", 63),
        ),
    ),
    "VDRZAX_GetArps": Function(
        (
            Text("instanceName", 63),
            Text("ifName", 63, optional=True),
            Pointer("buffer"),
        ),
        room=7667712,
    ),
    "VDRZAX_GetProxyArps": Function(
        (
            Text("instanceName", 63),
            Text("ifName", 63, optional=True),
            Pointer("buffer"),
        ),
        room=7667712,
    ),
    "VDRZAX_ClearArp": Function(
        (
            Text("instanceName", 63),
            Text("ifName", 63, optional=True),
        ),
    ),
    "VDRZAX_SetArpv6": Function(
        (
            Number("ipPart1", 8),
            Number("ipPart2", 8),
            Text("macText", 18),
            Text("ifName", 64),
            Text("instanceName", 64),
        ),
    ),
    "VDRZAX_DelArpv6": Function(
        (
            Number("ipPart1", 8),
            Number("ipPart2", 8),
            Text("ifName", 64),
            Text("instanceName", 64),
        ),
    ),
    "VDRZAX_SetProxyArpv6": Function(
        (
            Number("ipPart1", 8),
            Number("ipPart2", 8),
            Text("ifName", 64),
            Text("instanceName", 64),
        ),
    ),
    "VDRZAX_DelProxyArpv6": Function(
        (
            Number("ipPart1", 8),
            Number("ipPart2", 8),
            Text("ifName", 64),
            Text("instanceName", 64),
        ),
    ),
    "VDRZAX_GetArpsv6": Function(
        (
            Text("instanceName", 64),
            Text("ifName", 64, optional=True),
            Pointer("buffer"),
        ),
        room=7667712,
    ),
    "VDRZAX_ClearArpv6": Function(
        (
            Text("instanceName", 64),
            Text("ifName", 64, optional=True),
        ),
    ),
    "VDRZAX_PMTUTableCearv6": Function(
        (),
    ),
    "VDRZAX_GenericFlush": Function(
        (
            Number("flushTarget", 4),
            Number("flushSelector1", 1),
            Number("flushSelector2", 1),
            Number("flushSelector3", 1),
            Text("flushName", 63, optional=True),
            Number("flushValue", 4),
        ),
    ),
    "VDRZAX_PerformFullSyncSave": Function(
        (
            Number("flag", 1),
            Pointer("status"),
        ),
        room=4,
    ),
    "VDRZAX_GetFullSyncSaveStatus": Function(
        (
            Pointer("status"),
        ),
        room=4,
    ),
    "VDRZAX_SoftRSSGetStats": Function(
        (
            Text("name", 63),
            Pointer("out"),
        ),
        release="free",
    ),
    "VDRZAX_SoftRSSStatsReset": Function(
        (
            Text("name", 63),
        ),
    ),
    "VDRZAX_SoftRSSGetTunables": Function(
        (
            Text("name", 63),
            Pointer("out"),
        ),
    ),
    "VDRZAX_SoftRSSSetTunables": Function(
        (
            Text("name", 63),
            Pointer("in"),
        ),
    ),
    "VDRZAX_SoftRSSGetIndTable": Function(
        (
            Text("name", 63),
            Pointer("table"),
        ),
    ),
    "VDRZAX_SoftRSSTableSet": Function(
        (
            Text("name", 63),
            Pointer("in"),
        ),
    ),
    "VDRZAX_AddVMPublicIP": Function(
        (
            Number("a", 4),
            Number("b", 4),
            Mac("c"),
            Number("d", 4),
        ),
    ),
    "VDRZAX_DelVMPublicIP": Function(
        (
            Number("a", 4),
            Number("b", 4),
        ),
    ),
    "VDRZAX_DelVMPublicIPEntry": Function(
        (
            Number("key", 4),
        ),
    ),
    "VDRZAX_DelAllVMPublicIPEntries": Function(
        (),
    ),
    "VDRZAX_GetVMPublicIPEntry": Function(
        (
            Number("key", 4),
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseVMPublicIPEntry",
    ),
    "VDRZAX_ReleaseVMPublicIPEntry": Function(
        (
            Pointer("e"),
        ),
        is_release=True,
    ),
    "VDRZAX_GetVMPublicIPTable": Function(
        (
            Pointer("out"),
        ),
        release="VDRZAX_ReleaseVMPublicIPTable",
        room=8536068,
    ),
    "VDRZAX_ReleaseVMPublicIPTable": Function(
        (
            Pointer("t"),
        ),
        is_release=True,
    ),
}
