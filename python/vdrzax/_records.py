"""Made by generate.py from the headers and the record layouts."""

import ctypes

from ._fields import (Bytes, CountedNumbers, Entries, MacAddress, Number, Numbers, OddNumber,
                      Record, Text)

__all__ = [
    "BridgeInstanceRecord",
    "BridgeNetworkRecord",
    "BridgePortRecord",
    "BridgeFdbRecord",
    "BridgeClusterRecord",
    "BridgeClusterNodeRecord",
    "BridgeEndpointRecord",
    "BridgeBfdSessionRecord",
    "E2IEntry",
    "InstanceRecord",
    "StatsRecord",
    "CPSyncStateEntry",
    "LifSubEntry",
    "LifRecord",
    "MRoutingLocalRcvr",
    "VtepEntry",
    "MRoutingDomain",
    "MRoutingMcastGroup",
    "PolicyRecord",
    "PolicyTableRecord",
    "PolicyTableRefEntry",
    "LifPolicyTableRef",
    "RouteNextHop",
    "RouteRecord",
    "DemuxRouteRecord",
    "SoftRssStats",
    "SoftRssTunables",
    "VMPublicIPEntry",
]


class IoctlEnvelope(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("inLength", ctypes.c_uint32),
        ("inBuffer", ctypes.c_void_p),
        ("outLength", ctypes.c_uint32),
        ("outBuffer", ctypes.c_void_p),
    ]


class RecordList(ctypes.Structure):
    _fields_ = [
        ("count", ctypes.c_int32),
        ("entries", ctypes.c_void_p),
    ]


class SoftRssIndTable(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("entries", ctypes.c_uint8 * 128),
        ("entryCount", ctypes.c_int32),
    ]


class E2ITable(ctypes.Structure):
    _pack_ = 1
    _fields_ = [
        ("count", ctypes.c_int32),
        ("entries", ctypes.c_void_p),
    ]


class VTEPTable(ctypes.Structure):
    _fields_ = [
        ("count", ctypes.c_int32),
        ("entries", ctypes.c_void_p),
    ]


class LifSubEntry(Record):
    """One sub-entry of a LIF."""

    __slots__ = ()
    SIZE = 24
    words0 = Numbers(0, 4, 5)
    byte20 = Number(20, 1)


class PolicyTableRefEntry(Record):
    """One entry of a reference to policy tables."""

    __slots__ = ()
    SIZE = 24
    qword0 = Number(0, 8)
    qword8 = Number(8, 8)
    qword16 = Number(16, 8)


class RouteNextHop(Record):
    """One next hop of a route."""

    __slots__ = ()
    SIZE = 80
    hopWord = Number(4, 4)
    hopName = Text(8, 64)
    hopQword = Number(72, 8)


class BridgeInstanceRecord(Record):
    """One bridge instance."""

    __slots__ = ()
    SIZE = 393
    qword0 = Number(0, 8)
    word8 = Number(8, 4)
    name = Text(12, 64)
    word76 = Number(76, 4)
    word80 = Number(80, 4)
    text84 = Text(84, 128)
    text212 = Text(212, 81)
    word305 = Number(305, 4)
    word309 = Number(309, 4)
    qwords313 = Numbers(313, 8, 10)


class BridgeNetworkRecord(Record):
    """One network of a bridge."""

    __slots__ = ()
    SIZE = 133
    qword0 = Number(0, 8)
    word8 = Number(8, 4)
    half12 = Number(12, 2)
    word14 = Number(14, 4)
    half18 = Number(18, 2)
    word20 = Number(20, 4)
    word24 = Number(24, 4)
    byte28 = Number(28, 1)
    qwords29 = Numbers(29, 8, 12)


class BridgePortRecord(Record):
    """One port of a bridge."""

    __slots__ = ()
    SIZE = 146
    qword0 = Number(0, 8)
    word8 = Number(8, 4)
    half12 = Number(12, 2)
    word14 = Number(14, 4)
    qwords18 = Numbers(18, 8, 16)


class BridgeFdbRecord(Record):
    """One entry of a bridge's forwarding database."""

    __slots__ = ()
    SIZE = 20
    word0 = Number(0, 4)
    half4 = Number(4, 2)
    half6 = Number(6, 2)
    triple8 = OddNumber(8, 3)
    flags = Number(11, 1)
    word12 = Number(12, 4)
    word16 = Number(16, 4)


class BridgeClusterRecord(Record):
    """One bridge cluster."""

    __slots__ = ()
    SIZE = 183
    nameArea = Bytes(0, 64)
    word72 = Number(72, 4)
    bytes76 = Bytes(76, 96)
    half172 = Number(172, 2)
    half174 = Number(174, 2)
    half176 = Number(176, 2)
    byte178 = Number(178, 1)
    word179 = Number(179, 4)


class BridgeClusterNodeRecord(Record):
    """One node of a bridge cluster."""

    __slots__ = ()
    SIZE = 71
    nameArea = Bytes(0, 64)
    word64 = Number(64, 4)
    half68 = Number(68, 2)
    byte70 = Number(70, 1)


class BridgeEndpointRecord(Record):
    """One bridge endpoint."""

    __slots__ = ()
    SIZE = 235
    nameArea = Bytes(64, 64)
    half128 = Number(128, 2)
    flag = Number(130, 1)
    word131 = Number(131, 4)
    word135 = Number(135, 4)
    bytes139 = Bytes(139, 96)


class BridgeBfdSessionRecord(Record):
    """One BFD session that watches a bridge endpoint."""

    __slots__ = ()
    SIZE = 39
    half0 = Number(0, 2)
    word2 = Number(2, 4)
    half6 = Number(6, 2)
    word8 = Number(8, 4)
    half12 = Number(12, 2)
    word14 = Number(14, 4)
    byte18 = Number(18, 1)
    word19 = Number(19, 4)
    qword23 = Number(23, 8)
    qword31 = Number(31, 8)


class E2IEntry(Record):
    """One entry of the E2I table, byte for byte as the datapath reports it, in the kernel's layout."""

    __slots__ = ()
    SIZE = 26
    bytes = Bytes(0, 26)


class InstanceRecord(Record):
    """One router instance as the datapath reports it."""

    __slots__ = ()
    SIZE = 577
    name = Text(0, 64)
    word64 = Number(64, 4)
    word68 = Number(68, 4)
    byte72 = Number(72, 1)
    text73 = Text(73, 256)
    text329 = Text(329, 64)
    address393 = MacAddress(393)
    word399 = Number(399, 4)
    word403 = Number(403, 4)
    word407 = Number(407, 4)
    byte411 = Number(411, 1)
    half412 = Number(412, 2)
    byte416 = Number(416, 1)
    byte417 = Number(417, 1)
    bytes418 = Numbers(418, 1, 13)
    words431 = Numbers(431, 4, 4)
    address447 = MacAddress(447)
    byte453 = Number(453, 1)
    half454 = Number(454, 2)
    byte456 = Number(456, 1)
    text457 = Text(457, 64)
    half521 = Number(521, 2)
    bytes523 = Bytes(523, 40)
    word563 = Number(563, 4)
    byte567 = Number(567, 1)
    word568 = Number(568, 4)
    word572 = Number(572, 4)
    byte576 = Number(576, 1)


class StatsRecord(Record):
    """Counters of one kind."""

    __slots__ = ()
    SIZE = 852
    type = Number(0, 4)
    slots = Numbers(4, 8, 106)


class CPSyncStateEntry(Record):
    """One of the five parts of a control-plane sync state."""

    __slots__ = ()
    SIZE = 284
    qword0 = Number(0, 8)
    words8 = Numbers(8, 4, 5)
    qwords28 = Numbers(28, 8, 8)
    qwords100 = Numbers(100, 8, 23)


class LifRecord(Record):
    """One LIF as the datapath reports it."""

    __slots__ = ()
    SIZE = 961
    name = Text(0, 64)
    auxName = Text(64, 64)
    word128 = Number(128, 4)
    word132 = Number(132, 4)
    word136 = Number(136, 4)
    word140 = Number(140, 4)
    half144 = Number(144, 2)
    word146 = Number(146, 4)
    word150 = Number(150, 4)
    word154 = Number(154, 4)
    byte158 = Number(158, 1)
    byte159 = Number(159, 1)
    byte160 = Number(160, 1)
    byte161 = Number(161, 1)
    blob162 = Bytes(162, 164)
    subEntries = Entries(326, LifSubEntry, 10, "subEntryCount")
    subEntryCount = Number(566, 4)
    byte570 = Number(570, 1)
    byte571 = Number(571, 1)
    word572 = Number(572, 4)
    byte576 = Number(576, 1)
    description = Text(577, 128)


class MRoutingLocalRcvr(Record):
    """One local receiver."""

    __slots__ = ()
    SIZE = 88
    rcvrName = Text(0, 64)
    value64 = Number(64, 4)
    value68 = Number(68, 4)
    address = Bytes(72, 16)


class VtepEntry(Record):
    """One remote receiver (tunnel endpoint), byte for byte as the datapath reports it."""

    __slots__ = ()
    SIZE = 68
    bytes = Bytes(0, 68)


class MRoutingDomain(Record):
    """The multicast routing domain of an instance."""

    __slots__ = ()
    SIZE = 148
    domainName = Text(0, 64)
    domainLabel = Text(64, 48)
    domainData = Bytes(112, 32)
    domainValue = Number(144, 4)


class MRoutingMcastGroup(Record):
    """One multicast group."""

    __slots__ = ()
    SIZE = 12
    group0 = Number(0, 4)
    group1 = Number(4, 4)
    group2 = Number(8, 4)


class PolicyRecord(Record):
    """One policy as the datapath reports it."""

    __slots__ = ()
    SIZE = 28
    policyWord0 = Number(0, 4)
    policyWord1 = Number(4, 4)
    policyWord2 = Number(8, 4)
    policyWord3 = Number(12, 4)
    policyWord4 = Number(16, 4)
    policyQword = Number(20, 8)


class PolicyTableRecord(Record):
    """One policy table."""

    __slots__ = ()
    SIZE = 72
    tableKey = Number(0, 4)
    tableName = Text(4, 64)
    tableWord = Number(68, 4)


class LifPolicyTableRef(Record):
    """A LIF's reference to policy tables."""

    __slots__ = ()
    SIZE = 546
    refName = Text(0, 64)
    refCount = Number(64, 2)
    refEntries = Entries(66, PolicyTableRefEntry, 20, "refCount")


class RouteRecord(Record):
    """One IPv4 route as the datapath reports it."""

    __slots__ = ()
    SIZE = 668
    routeWord0 = Number(0, 4)
    routeWord1 = Number(4, 4)
    routeWord2 = Number(8, 4)
    routeWord3 = Number(12, 4)
    routeByte = Number(16, 1)
    nextHopCount = Number(17, 1)
    routeQword = Number(20, 8)
    nextHops = Entries(28, RouteNextHop, 8, "nextHopCount")


class DemuxRouteRecord(Record):
    """One demultiplexing route as the datapath reports it."""

    __slots__ = ()
    SIZE = 148
    demuxWord0 = Number(0, 4)
    demuxWord1 = Number(4, 4)
    demuxWord2 = Number(8, 4)
    demuxQword = Number(12, 8)
    demuxName1 = Text(20, 64)
    demuxName2 = Text(84, 64)


class SoftRssStats(Record):
    """The statistics of one software RSS object."""

    __slots__ = ()
    SIZE = 852
    queueCount = Number(4, 4)
    words8 = CountedNumbers(8, 4, 16, "queueCount")
    qwords76 = CountedNumbers(76, 8, 16, "queueCount")
    qwords204 = CountedNumbers(204, 8, 16, "queueCount")
    qwords332 = CountedNumbers(332, 8, 16, "queueCount")


class SoftRssTunables(Record):
    """The tunables of one software RSS object."""

    __slots__ = ()
    SIZE = 12
    qword0 = Number(0, 8)
    word8 = Number(8, 4)


class VMPublicIPEntry(Record):
    """One entry of the VM public IP table, as the kernel wrote it."""

    __slots__ = ()
    SIZE = 1042
    entryHeader = Bytes(0, 14)
    itemCount = Number(14, 4)
    items = CountedNumbers(18, 4, 256, "itemCount")
