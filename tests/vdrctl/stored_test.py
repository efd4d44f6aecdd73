"""Every verb on the simulated datapath: what it stored, and that all forms of output say the same.

usage: stored_test.py VDRCTL VDRSIM [SCENE]

Each scene has a datapath of its own. Its steps are command lines: one alone prints nothing, one with
a value is read in every form of output. A record is given by the members that are neither zero nor
empty, so a value that went to the wrong member shows twice.
"""
import ipaddress
import json
import os
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

VDRCTL, VDRSIM = sys.argv[1:3]
# These count the commands that read them, so no two readings are equal.
COUNTING_MEMBERS = {"qwords313"}
NOT_THERE = object()
# docs/guarantees.md says when: an empty table, and an entry that is not there.
LOST_ON_PURPOSE = "leak:VDRZAX_GetE2ITable\nleak:VDRZAX_GetVMPublicIPEntry\n"


class Bytes:
    """A reply in the kernel's own layout: its length, and what stands at which offset."""

    def __init__(self, length, *parts):
        self.length = length
        self.bytes = bytearray(max([offset + len(part) for offset, part in parts], default=0))
        for offset, part in parts:
            self.bytes[offset:offset + len(part)] = part


class Once:
    """A command that both changes and shows something: what it shows at first."""

    def __init__(self, document):
        self.document = document


class Block:
    """A command by its number, with the bytes that it sends."""

    def __init__(self, code, *parts):
        self.code = code
        self.bytes = bytes(Bytes(0, *parts).bytes).ljust(968, b"\0")


def u16(number):
    return number.to_bytes(2, "little")


def u32(number):
    return number.to_bytes(4, "little")


def u64(number):
    return number.to_bytes(8, "little")


def ip(address):
    """An address as the number that its four bytes make in a record."""
    return int.from_bytes(ipaddress.ip_address(address).packed, "little")


def packed(address):
    return ipaddress.ip_address(address).packed


def mac(text):
    return bytes.fromhex(text.replace(":", ""))


def number(text, width):
    """A part of a hardware address as the number that a record has it for."""
    return int.from_bytes(mac(text)[:width], "little")


def hexadecimal(width, *parts):
    return (bytes(Bytes(0, *parts).bytes).ljust(width, b"\0")).hex()


def qwords(text, *places):
    """Texts at places of an array of 16 numbers of 64 bits."""
    area = bytearray(128)
    for place, part in zip(places, text):
        area[8 * place:8 * place + len(part)] = part
    return [int.from_bytes(area[at:at + 8], "little") for at in range(0, 128, 8)]


INSTANCE = "instance set edge-1"
LIF = "lif set edge-1 uplink"
A, B, C = "02:00:00:00:00:0a", "02:00:00:00:00:0b", "02:00:00:00:00:0c"
# An address of the wide kind whose bytes all differ.
WIDE = "2001:db8:1:2:3:4:5:6"

SCENES = {
    "instances": [
        ("instance list", []),
        "instance set edge-1 --second 7 --text blue --fourth 8 --flag 9",
        "instance tune edge-1 mtu=1 10",
        "control-plane set-address edge-1 192.0.2.7",
        "multicast set edge-1 --second-name two --value1 11 --value2 12 --value3 13 --flag 14",
        ("instance show edge-1",
         {"name": "edge-1", "word64": 7, "word68": 8, "byte72": 9, "text73": "blue",
          "text329": "mtu=1", "word399": 10, "word403": ip("192.0.2.7"), "text457": "two",
          "half521": 13, "word563": 11, "byte567": 14, "word568": 12}),
        ("multicast domain show edge-1",
         {"domainName": "edge-1", "domainLabel": "two", "domainValue": 11,
          "domainData": hexadecimal(32, (0, u32(12)), (4, u16(13)), (6, b"\x0e"))}),
        # What is not given becomes 0 or empty.
        "instance set edge-2 --text 'two words'",
        "instance set edge-1 --fourth 15",
        ("instance list",
         [{"name": "edge-1", "word68": 15, "text329": "mtu=1", "word399": 10,
           "word403": ip("192.0.2.7"), "text457": "two", "half521": 13, "word563": 11,
           "byte567": 14, "word568": 12},
          {"name": "edge-2", "text73": "two words"}]),
        ("instance list edge-2", [{"name": "edge-2", "text73": "two words"}]),
        "instance delete edge-1",
        ("instance show edge-1", NOT_THERE),
        ("instance delete edge-1", NOT_THERE),
        "instance delete edge-1 --if-exists",
        # Text that JSON can't carry as it stands.
        r"instance set 'e\xff' --text 'a\\b'",
        (r"instance show 'e\xff'", {"name": r"e\xff", "nameEscaped": True, "text73": r"a\b"}),
    ],
    "control plane": [
        INSTANCE,
        "control-plane sync-state set edge-1 3",
        "control-plane activate 4",
        ("control-plane sync-state show edge-1",
         [{"words8": [3, 4, 0, 0, 0]}] +
         [{"qword0": entry, "words8": [3, 4, 0, 0, 0]} for entry in range(1, 5)]),
        "control-plane stats reset edge-1",
        "instance tune edge-1 a 1",
        "route set edge-1 10.0.0.0/8",
        "route delete edge-1 10.0.0.0/8",
        ("control-plane stats show edge-1", {"type": 1, "slots0": [2, 1, 0] + [0] * 74}),
        "control-plane stats reset edge-1",
        ("control-plane stats show edge-1", {"type": 1}),
    ],
    "settings": [
        "log-level set 1",
        "extended-log-level set 2",
        "stats-level set 3",
        "tx-dispatch-queue-size set 4294967295",
        ("log-level get", {"level": 1}),
        ("extended-log-level get", {"level": 2}),
        ("stats-level get", {"level": 3}),
        ("tx-dispatch-queue-size get", {"size": 4294967295}),
        "datapath stats reset",
        "pre-unload",
        "path-mtu6 clear",
        ("datapath stats show", {"type": 3, "slots1": [1, 1] + [0] * 17}),
        # A level lies behind any other channel too.
        "command 10 --value 9",
        ("log-level get", {"level": 9}),
        ("command 9 --capacity 4", Bytes(4, (0, u32(9)))),
    ],
    "connections": [
        "connection plumb c1 --second two --fourth four --fifth five --sixth abcdefghijkl "
        "--seventh 7",
        ("connection list",
         Bytes(131072, (0, b"c1"), (64, b"two"), (80, b"four"), (98, b"five"), (130, u32(7)),
               (134, b"\x02\0" + u32(7)), (140, b"abcdefghijkl"))),
        ("connection show c1",
         Bytes(152, (0, b"c1"), (64, b"two"), (80, b"four"), (98, b"five"), (130, u32(7)),
               (134, b"\x02\0" + u32(7)), (140, b"abcdefghijk"))),
        ("connection mac c1", {"address": "02:00:07:00:00:00"}),
        ("connection deletion-pending", {"pending": 0}),
        "connection unplumb c1",
        ("connection show c1", NOT_THERE),
    ],
    "LIFs": [
        INSTANCE,
        f"lif set edge-1 uplink --aux-name two --a3 3 --a4 4 --a5 5 --a6 6 --a7 7 --flags 8 "
        f"--mode 2 --mac {A}",
        ("lif show edge-1 uplink",
         {"name": "uplink", "auxName": "two", "word128": 3, "word132": 4, "word136": 5, "word140": 6,
          "half144": number(A, 2), "word146": 0x0a000000, "word150": 7, "word572": 8, "byte158": 2}),
        LIF,
        "lif enable edge-1 uplink",
        ("lif list edge-1", [{"name": "uplink", "byte159": 1}]),
        "lif disable edge-1 uplink",
        ("lif show edge-1 uplink", {"name": "uplink"}),
        "lif designated-address set edge-1 uplink 192.0.2.9",
        "lif vxlan enable edge-1 uplink",
        "lif vxlan set-multicast edge-1 uplink 239.1.2.3",
        "lif multicast enable edge-1 uplink",
        "lif mtu6 set edge-1 uplink 1400",
        "lif address set edge-1 uplink 10.1.2.3/255.255.0.0",
        f"lif address6 set edge-1 uplink {WIDE}/64",
        ("lif show edge-1 uplink",
         {"name": "uplink", "word154": ip("192.0.2.9"), "byte160": 1, "byte161": 1,
          "blob162": hexadecimal(164, (0, u32(1400)), (4, packed("239.1.2.3"))),
          "subEntryCount": 2,
          "subEntries": [
              {"words0": [ip("10.1.2.3"), ip("255.255.0.0"), 0, 0, 1], "byte20": 0},
              {"words0": [int.from_bytes(packed(WIDE)[at:at + 4], "little")
                          for at in range(0, 16, 4)] + [3], "byte20": 64}]}),
        ("demux-route list",
         [{"demuxWord0": ip("10.1.2.3"), "demuxWord1": ip("255.255.0.0"), "demuxName1": "edge-1",
           "demuxName2": "uplink"}]),
        "lif vxlan disable edge-1 uplink",
        "lif multicast disable edge-1 uplink",
        "lif address delete edge-1 uplink 10.1.2.3/16",
        f"lif address6 delete edge-1 uplink {WIDE}/64",
        "lif designated-address set edge-1 uplink 0.0.0.0",
        "lif vxlan set-multicast edge-1 uplink 0.0.0.0",
        "lif mtu6 set edge-1 uplink 0",
        # Relay servers are for who does without the library: here one, of IPv4.
        Block(33, (0, b"edge-1"), (384, b"uplink"), (556, u32(1)), (560, packed("192.0.2.1")),
              (576, u32(1))),
        ("lif show edge-1 uplink",
         {"name": "uplink",
          "blob162": hexadecimal(164, (8, u32(1)), (12, packed("192.0.2.1")), (28, b"\x01"))}),
        "lif dhcp-relay clear edge-1 uplink",
        ("lif show edge-1 uplink", {"name": "uplink"}),
        "lif set edge-1 tagged --a5 7",
        ("lif external-vlan list 7", [{"name": "tagged", "word136": 7}]),
        "lif delete edge-1 uplink --aux-name two",
        ("lif list edge-1", [{"name": "tagged", "word136": 7}]),
        ("lif delete edge-1 uplink", NOT_THERE),
        "lif delete edge-1 uplink --if-exists",
    ],
    "counters of LIFs": [
        INSTANCE,
        LIF,
        "lif stats reset edge-1 uplink",
        "lif enable edge-1 uplink",
        "lif disable edge-1 uplink",
        "lif address set edge-1 uplink 10.0.0.1/8",
        "lif address delete edge-1 uplink 10.0.0.1/8",
        ("lif stats show edge-1 uplink", {"type": 0, "slots0": [3, 1, 0, 0, 0, 0, 0, 0]}),
        "lif stats reset edge-1 uplink",
        # The cached ones are those of the last reading.
        ("lif stats show edge-1 uplink --cached", {"slots0": [3, 1, 0, 0, 0, 0, 0, 0]}),
        ("lif stats show edge-1 uplink", {}),
        ("lif stats show edge-1 uplink --cached", {}),
    ],
    "routes": [
        INSTANCE,
        LIF,
        "route set edge-1 10.2.0.0/16 --gateway 10.0.0.2 --interface uplink --flags 5",
        "route set edge-1 10.2.3.0/24 --interface none",
        ("route list edge-1",
         [{"routeWord0": ip("10.2.0.0"), "routeWord1": ip("255.255.0.0"),
           "routeWord2": ip("10.0.0.2"), "routeWord3": 5, "nextHopCount": 1,
           "nextHops": [{"hopWord": 0, "hopName": "uplink", "hopQword": 0}]},
          {"routeWord0": ip("10.2.3.0"), "routeWord1": ip("255.255.255.0"), "nextHopCount": 1,
           "nextHops": [{"hopWord": 0, "hopName": "none", "hopQword": 0}]}]),
        ("route selection edge-1",
         [{"routeWord0": ip("10.2.0.0"), "routeWord1": ip("255.255.0.0"),
           "routeWord2": ip("10.0.0.2"), "routeWord3": 5, "nextHopCount": 1,
           "nextHops": [{"hopWord": 0, "hopName": "uplink", "hopQword": 0}]}]),
        ("route resolve edge-1 10.2.3.4/32",
         {"routeWord0": ip("10.2.3.0"), "routeWord1": ip("255.255.255.0"), "nextHopCount": 1,
          "nextHops": [{"hopWord": 0, "hopName": "none", "hopQword": 0}]}),
        "route delete edge-1 10.2.3.0/24 --interface none",
        ("route resolve edge-1 10.2.3.4/32",
         {"routeWord0": ip("10.2.0.0"), "routeWord1": ip("255.255.0.0"),
          "routeWord2": ip("10.0.0.2"), "routeWord3": 5, "nextHopCount": 1,
          "nextHops": [{"hopWord": 0, "hopName": "uplink", "hopQword": 0}]}),
        ("route delete edge-1 10.2.0.0/16", NOT_THERE),
        "route delete edge-1 10.2.0.0/16 --if-exists",
        "route delete edge-1 10.2.0.0/16 --gateway 10.0.0.2 --interface uplink",
        ("route list edge-1", []),
        f"route6 set edge-1 {WIDE}/48 --gateway fe80::1:2 --interface uplink",
        ("route6 list edge-1",
         Bytes(776, (0, packed(WIDE)), (16, b"\x30\x01"), (44, packed("fe80::1:2")),
               (60, b"uplink"))),
        f"route6 delete edge-1 {WIDE}/48 --gateway fe80::1:2 --interface uplink",
        ("route6 list edge-1", Bytes(0)),
        "route set edge-1 10.0.0.0/8",
        "flush 1 --name edge-1 --selector1 1 --selector2 2 --selector3 3 --value 4",
        ("route list edge-1", []),
    ],
    "neighbours": [
        INSTANCE,
        LIF,
        "lif set edge-1 downlink",
        f"arp set edge-1 uplink 10.0.0.2 {A}",
        f"arp set edge-1 downlink 10.0.0.3 {B}",
        "proxy-arp set edge-1 uplink 10.0.0.4",
        f"neighbour6 set edge-1 uplink {WIDE} {C}",
        "proxy-neighbour6 set edge-1 uplink fe80::1:2",
        ("arp list edge-1",
         Bytes(936 * 8192, (0, packed("10.0.0.3")), (16, b"downlink"), (80, mac(B)), (86, B.encode()),
               (936, packed("10.0.0.2")), (952, b"uplink"), (1016, mac(A)), (1022, A.encode()))),
        ("arp list edge-1 --interface uplink",
         Bytes(936 * 8192, (0, packed("10.0.0.2")), (16, b"uplink"), (80, mac(A)),
               (86, A.encode()))),
        ("proxy-arp list edge-1", Bytes(936 * 8192, (0, packed("10.0.0.4")), (16, b"uplink"))),
        ("proxy-arp list edge-1 --interface downlink", Bytes(936 * 8192)),
        ("neighbour6 list edge-1",
         Bytes(936 * 8192, (0, packed(WIDE)), (16, b"uplink"), (80, mac(C)), (86, C.encode()),
               (936, packed("fe80::1:2")), (952, b"uplink"))),
        "proxy-neighbour6 delete edge-1 uplink fe80::1:2",
        ("neighbour6 list edge-1 --interface uplink",
         Bytes(936 * 8192, (0, packed(WIDE)), (16, b"uplink"), (80, mac(C)), (86, C.encode()))),
        f"neighbour6 delete edge-1 uplink {WIDE}",
        ("neighbour6 list edge-1", Bytes(936 * 8192)),
        f"neighbour6 set edge-1 uplink {WIDE} {C}",
        "neighbour6 clear edge-1 --interface downlink",
        ("neighbour6 delete edge-1 uplink ::1", NOT_THERE),
        "neighbour6 clear edge-1 --interface uplink",
        ("neighbour6 list edge-1", Bytes(936 * 8192)),
        "proxy-arp delete edge-1 uplink 10.0.0.4",
        ("proxy-arp list edge-1", Bytes(936 * 8192)),
        "arp delete edge-1 downlink 10.0.0.3",
        ("arp list edge-1",
         Bytes(936 * 8192, (0, packed("10.0.0.2")), (16, b"uplink"), (80, mac(A)),
               (86, A.encode()))),
        "arp clear edge-1",
        ("arp list edge-1", Bytes(936 * 8192)),
    ],
    "policies": [
        INSTANCE,
        LIF,
        "policy set 1 --first 2 --second 3 --third 4",
        "policy set 1 --first 5",
        ("policy list 1",
         [{"policyWord0": 1, "policyWord1": 2, "policyWord2": 3, "policyWord3": 4},
          {"policyWord0": 1, "policyWord1": 5}]),
        ("policy count 1", {"count": 2}),
        "policy delete 1 --first 2 --second 3",
        ("policy list 1", [{"policyWord0": 1, "policyWord1": 5}]),
        "policy-table set 7 tab",
        ("policy-table list", [{"tableKey": 7, "tableName": "tab"}]),
        "policy-table delete 7",
        ("policy-table list", []),
        "lif-policy set edge-1 1 10.2.0.0/16 --gateway 10.0.0.2 --interface uplink --flags 3",
        "lif-policy set edge-1 4 10.3.0.0/16 --lif uplink --interface down",
        ("lif-policy list edge-1 1",
         [{"routeWord0": ip("10.2.0.0"), "routeWord1": ip("255.255.0.0"),
           "routeWord2": ip("10.0.0.2"), "routeWord3": 3, "routeQword": 1, "nextHopCount": 1,
           "nextHops": [{"hopWord": 0, "hopName": "uplink", "hopQword": 0}]}]),
        ("lif-policy list edge-1 4 --lif uplink",
         [{"routeWord0": ip("10.3.0.0"), "routeWord1": ip("255.255.0.0"), "routeQword": 4,
           "nextHopCount": 2,
           "nextHops": [{"hopWord": 0, "hopName": "down", "hopQword": 0},
                        {"hopWord": 0, "hopName": "uplink", "hopQword": 0}]}]),
        "lif-policy delete edge-1 1 10.2.0.0/16 --gateway 10.0.0.2 --interface uplink --flags 3",
        "lif-policy delete edge-1 4 10.3.0.0/16 --lif uplink --interface down",
        ("lif-policy list edge-1 1", []),
        ("lif-policy list edge-1 4 --lif uplink", []),
        "lif-policy-table set edge-1 uplink 1:2:3,4:5:0xffffffffffffffff",
        ("lif-policy-table show edge-1 uplink",
         {"refName": "uplink", "refCount": 2,
          "refEntries": [{"qword0": 1, "qword8": 2, "qword16": 3},
                         {"qword0": 4, "qword8": 5, "qword16": 2**64 - 1}]}),
        "lif-policy-table delete edge-1 uplink",
        ("lif-policy-table show edge-1 uplink", NOT_THERE),
    ],
    "bridges": [
        INSTANCE,
        "bridge create edge-1 200",
        "bridge set-replication-mode edge-1 2",
        "bridge set-ha-state edge-1 3",
        "bridge enable edge-1 200",
        ("bridge show edge-1",
         {"name": "edge-1", "word8": 200, "word76": 1, "word80": 2, "word305": 3,
          "qwords313": [2, 0, 0, 0, 0, 0, 0, 0, 0, 0]}),
        "bridge disable edge-1 200",
        ("bridge list",
         [{"name": "edge-1", "word8": 200, "word80": 2, "word305": 3,
           "qwords313": [3, 3, 0, 0, 0, 0, 0, 0, 0, 0]}]),
        "bridge-lif set edge-1 uplink --second-name two --value1 1 --value2 2 --value3 3",
        ("bridge-lif show edge-1 uplink",
         {"name": "uplink", "auxName": "two", "word136": 1, "word140": 2, "word150": 3,
          "byte570": 1}),
        "bridge-endpoint add uplink ep --second-name second --fourth-name fourth "
        "--fifth-name fifth --value1 200 --value2 6 --tag 7 --flag1 8 --flag2 9",
        ("bridge-endpoint list",
         Bytes(235, (0, b"ep"), (64, b"uplink"), (128, b"second"), (192, u32(200)), (196, u32(6)),
               (200, u16(7)), (202, b"\x08\x09"))),
        ("bridge-endpoint status uplink",
         Bytes(229, (0, b"ep"), (64, b"fourth"), (128, b"fifth"), (192, u32(200)), (196, u32(6)),
               (200, u16(7)), (202, b"\x08\x09"))),
        ("cluster endpoint list",
         [{"nameArea": hexadecimal(64, (0, b"ep")), "half128": 7, "flag": 8, "word131": 200,
           "word135": 6, "bytes139": hexadecimal(96, (0, b"second"), (64, b"\x09"))}]),
        ("bridge network list edge-1",
         [{"qword0": 1, "word8": 200, "word14": 2, "word20": 3},
          {"qword0": 1, "word8": 200, "half12": 7, "word14": 2, "word20": 3}]),
        ("bridge port list edge-1 7 --value 200",
         [{"qword0": 1, "word8": 200, "half12": 7, "word14": 6,
           "qwords18": qwords((b"uplink", b"ep"), 0, 8)}]),
        f"fdb set edge-1 70000 8 {A} --value 9 --flag 3",
        f"fdb set edge-1 7 8 {A} --value 10 --flag 4",
        ("fdb list edge-1 7 8",
         [{"word0": number(A, 4), "half4": 0x0a00, "half6": 7, "word16": 8, "word12": 10,
           "flags": 4}]),
        "fdb clear edge-1 7 8",
        ("fdb list edge-1 7 8", []),
        "bridge configure edge-1 118 6",
        ("bridge list",
         [{"name": "edge-1", "word8": 200, "word80": 2,
           "qwords313": [3, 3, 0, 0, 0, 0, 0, 0, 0, 0]}]),
        "bridge-endpoint delete uplink ep",
        ("bridge-endpoint status uplink", NOT_THERE),
        "bridge-lif clear edge-1 uplink --second-name two --value1 1 --value2 2 --value3 3",
        ("bridge-lif list edge-1", []),
        "bridge delete edge-1 200",
        ("bridge show edge-1", NOT_THERE),
    ],
    "bridge endpoints": [
        INSTANCE,
        "bridge-lif set edge-1 uplink",
        "bridge-endpoint add uplink one",
        "bridge-endpoint add uplink two --flag1 1",
        ("bridge-endpoint stats uplink", Bytes(146, (0, b"one"), (64, u64(1)))),
        "bridge-endpoint flush",
        ("bridge-endpoint list", Bytes(235, (0, b"two"), (64, b"uplink"), (202, b"\x01"))),
        "bridge-endpoint flush --all",
        ("bridge-endpoint list", Bytes(0)),
    ],
    "clusters": [
        "cluster create own",
        "cluster create other",
        "cluster bfd set-profile own 1 --value1 2 --value2 3",
        "cluster set-debug 4 own",
        f"cluster node add own n1 {A}",
        ("cluster list own",
         [{"nameArea": hexadecimal(64, (0, b"own")), "word72": 2, "bytes76": hexadecimal(96, (0, b"\x04")),
           "half172": 1, "byte178": 1, "word179": 3}]),
        "cluster set-debug 5",
        ("cluster list other",
         [{"nameArea": hexadecimal(64, (0, b"other")), "bytes76": hexadecimal(96, (0, b"\x05"))}]),
        ("cluster node list own",
         [{"nameArea": hexadecimal(64, (0, b"n1")), "word64": number(A, 4), "half68": 0x0a00}]),
        INSTANCE,
        "bridge-lif set edge-1 uplink",
        "bridge-endpoint add uplink ep --value1 6 --value2 7 --tag 8",
        ("cluster bfd sessions edge-1",
         [{"half0": 8, "word2": 6, "word8": number(A, 4), "half12": 0x0a00, "word14": 7, "byte18": 1,
           "word19": 2, "qword31": 3}]),
        "cluster node delete own n1",
        ("cluster node list", []),
        "cluster delete own",
        ("cluster list",
         [{"nameArea": hexadecimal(64, (0, b"other")), "bytes76": hexadecimal(96, (0, b"\x05"))}]),
        "cluster create own",
        "cluster flush other",
        ("cluster list", [{"nameArea": hexadecimal(64, (0, b"own"))}]),
        "cluster create other",
        "cluster flush --all",
        ("cluster list", []),
        f"bfd-port plumb p1 --second-name two --mac {A}",
        ("bfd-port list", Bytes(131072, (0, b"p1"), (64, b"two"), (80, mac(A)))),
        "bfd-port unplumb p1",
        ("bfd-port list", Bytes(131072)),
        "transport-node set one --second-name two --third-name three --value 4 --bytes 01aB",
        ("transport-node show --selector 3",
         Bytes(2048, (0, b"one"), (64, b"two"), (128, b"three"), (144, u32(4)), (148, b"\x01\xab"),
               (212, u32(3)))),
        "transport-node clear one --second-name two --third-name three --value 4 --bytes 01aB",
        ("transport-node show", NOT_THERE),
    ],
    "mapping": [
        f"e2i add 7 {A} --value2 2 --value4 4 --value5 5",
        f"e2i add 8 {B}",
        ("e2i show 7",
         {"bytes": hexadecimal(26, (0, u32(7)), (4, u32(2)), (8, mac(A)), (14, u32(4)), (18, u32(5)))}),
        f"physical-mac add {C} --value 9",
        ("fl-table show 0",
         Bytes(426080, (0, mac(A)), (6, u16(0)), (8, u32(7)), (52, mac(B)), (60, u32(8)))),
        ("fl-table show 1", Bytes(426080, (0, mac(C)), (6, u16(1)), (8, u32(9)))),
        ("physical-mac list", Bytes(16 * 8192, (0, mac(C)), (8, u32(9)))),
        f"physical-mac delete {C}",
        ("physical-mac list", Bytes(16 * 8192)),
        "e2i delete 7",
        ("e2i list", [{"bytes": hexadecimal(26, (0, u32(8)), (8, mac(B)))}]),
        "e2i clear",
        ("e2i list", []),
        ("e2i delete 7", NOT_THERE),
        ("locale show", Bytes(16, (0, b"vdrsim"))),
    ],
    "multicast": [
        INSTANCE,
        "multicast local-receiver add edge-1 239.1.2.3 r1",
        f"multicast remote-receiver add edge-1 239.1.2.3 6 {A} --d 7 --e 8",
        f"multicast remote-receiver add edge-1 239.1.2.3 9 {B}",
        "multicast router add edge-1 192.0.2.9",
        ("multicast group list edge-1", [{"group0": ip("239.1.2.3"), "group1": 1, "group2": 2}]),
        ("multicast local-receiver list edge-1 239.1.2.3",
         [{"rcvrName": "r1", "value64": ip("239.1.2.3")}]),
        ("multicast remote-receiver list edge-1 239.1.2.3",
         [{"bytes": hexadecimal(68, (0, u32(6)), (4, packed("239.1.2.3")), (8, u32(7)), (12, u32(8)),
                                (16, mac(A)))},
          {"bytes": hexadecimal(68, (0, u32(9)), (4, packed("239.1.2.3")), (16, mac(B)))}]),
        ("multicast replication-address show edge-1 239.1.2.3", {"address": "6.0.0.0"}),
        ("multicast router show edge-1 239.1.2.3", {"address": "192.0.2.9"}),
        ("multicast domain show edge-1",
         {"domainName": "edge-1",
          "domainData": hexadecimal(32, (7, b"\x01"), (8, packed("192.0.2.9")), (12, u32(1)))}),
        "multicast remote-receiver delete edge-1 239.1.2.3 6",
        "multicast local-receiver delete edge-1 239.1.2.3 r1",
        ("multicast group list edge-1", [{"group0": ip("239.1.2.3"), "group2": 1}]),
        "multicast router delete edge-1",
        ("multicast router show edge-1 239.1.2.3", NOT_THERE),
    ],
    "host services": [
        ("full-sync save 5", Once({"status": 0x105})),
        ("full-sync status", {"status": 0x205}),
        "soft-rss tunables set rss 0x0102030405060708",
        "soft-rss table set rss 5,6,255",
        ("soft-rss tunables show rss", {"qword0": 0x0102030405060708, "word8": 3}),
        ("soft-rss table show rss", Bytes(128, (0, b"\x05\x06\xff"))),
        "soft-rss stats reset rss",
        "soft-rss tunables set rss 1",
        ("soft-rss stats show rss",
         {"queueCount": 4, "words8": [{"word": 0}] * 4,
          "qwords76": [{"qword": 1}, {"qword": 0}, {"qword": 0}, {"qword": 0}],
          "qwords204": [{"qword": 0}] * 4, "qwords332": [{"qword": 0}] * 4}),
        f"public-ip add 192.0.2.1 10.0.0.2 {A} --d 4",
        f"public-ip add 192.0.2.1 10.0.0.3 {B} --d 5",
        f"public-ip add 192.0.2.9 10.0.0.4 {C}",
        ("public-ip show 192.0.2.1",
         {"entryHeader": hexadecimal(14, (0, packed("192.0.2.1")), (4, mac(B)), (10, u32(5))),
          "itemCount": 2, "items": [{"item": ip("10.0.0.2")}, {"item": ip("10.0.0.3")}]}),
        "public-ip remove 192.0.2.1 10.0.0.2",
        ("public-ip list",
         [{"entryHeader": hexadecimal(14, (0, packed("192.0.2.1")), (4, mac(B)), (10, u32(5))),
           "itemCount": 1, "items": [{"item": ip("10.0.0.3")}]},
          {"entryHeader": hexadecimal(14, (0, packed("192.0.2.9")), (4, mac(C))), "itemCount": 1,
           "items": [{"item": ip("10.0.0.4")}]}]),
        "public-ip delete 192.0.2.1",
        ("public-ip show 192.0.2.1", NOT_THERE),
        "public-ip clear",
        ("public-ip list", []),
    ],
}


def vdrctl(*words):
    return subprocess.run([VDRCTL, *words], capture_output=True, check=False)


def result(line, *options):
    """What a command that succeeds prints."""
    run = vdrctl(*shlex.split(line), *options)
    assert (run.returncode, run.stderr) == (0, b""), f"{line}: {run}"
    return run.stdout.decode()


def is_nothing(value):
    if isinstance(value, list):
        return all(is_nothing(element) for element in value)
    return value in (0, "", "00:00:00:00:00:00") or isinstance(value, str) and set(value) == {"0"}


def what_is_set(document):
    if isinstance(document, list):
        return [what_is_set(record) for record in document]
    return {name: value for name, value in document.items() if not is_nothing(value)}


def cell(value):
    """What a table shows of a value of a JSON document."""
    if value == "" or value == []:
        return "-"
    if isinstance(value, list):
        return " ".join(map(cell, value))
    if isinstance(value, dict):
        return "{" + " ".join(f"{name}={cell(one)}" for name, one in value.items()) + "}"
    return str(value)


def row(record, names):
    """The cells of a record. A text that says of itself that it is escaped is shown as it stands."""
    return [cell(record[name]) if f"{name}Escaped" in record else cell(record[name]).replace("\\", r"\\")
            for name in names]


def names_of(record):
    return [name for name in record if not name.endswith("Escaped")]


def lines_of_cells(text):
    return [re.split(" {2,}", line.strip()) for line in text.splitlines()]


def compare_list(line, document):
    shown, *_ = lines_of_cells(result(line))
    every = names_of(document[0]) if document else shown
    steady = [name for name in every if name not in COUNTING_MEMBERS]
    assert set(shown) <= set(every), f"{line}: {shown}"
    for names, options in ((shown, []), (steady, ["--columns", ",".join(steady)]),
                           (steady[::-1], ["--columns", ",".join(steady[::-1])])):
        expected = [row(record, names) for record in document]
        assert lines_of_cells(result(line, *options)) == [names] + expected, f"{line} {options}"
        assert lines_of_cells(result(line, "--no-header", *options)) == expected, f"{line} {options}"
        if options:
            chosen = json.loads(result(line, "--json", *options))
            assert [[record[name] for name in names] for record in chosen] == [
                [record[name] for name in names] for record in document], f"{line} {options}"


def compare_record(line, document):
    steady = [name for name in names_of(document) if name not in COUNTING_MEMBERS]
    for names, options in ((names_of(document), []), (steady[::-1], ["--columns", ",".join(steady[::-1])])):
        expected = [[name, *row(document, [name])] for name in names]
        shown = lines_of_cells(result(line, *options))
        if not options:
            expected, shown = ([pair for pair in pairs if pair[0] not in COUNTING_MEMBERS]
                               for pairs in (expected, shown))
        assert shown == expected, f"{line} {options}: {shown}"


def bytes_of_dump(text, length):
    """The bytes that a hex dump shows; a line of * stands for more of the line before it."""
    dumped = bytearray()
    for line in text.splitlines():
        if line == "*":
            continue
        offset, rest = int(line[:8], 16), bytes.fromhex(line[8:59])
        while len(dumped) < offset:
            dumped += dumped[-16:]
        dumped += rest
    assert len(dumped) == length, text
    return bytes(dumped)


def compare_bytes(line, document):
    expected = bytes.fromhex(document["bytes"])
    assert bytes_of_dump(result(line), len(expected)) == expected, line
    with tempfile.TemporaryDirectory() as folder:
        file = os.path.join(folder, "reply")
        assert result(line, "--output", file) == "", line
        with open(file, "rb") as reply:
            assert reply.read() == expected, line


def refuses_columns(line):
    run = vdrctl(*shlex.split(line), "--columns", "name")
    assert run.returncode == 2 and b"prints no records" in run.stderr, f"{line}: {run}"


def read(line, expected):
    """Reads in all forms and compares them with each other and with what is expected."""
    document = json.loads(result(line, "--json"))
    if isinstance(expected, Bytes):
        bytes_read = bytes.fromhex(document["bytes"]).rstrip(b"\0")
        assert bytes_read == bytes(expected.bytes).rstrip(b"\0"), f"{line}: {document}"
        assert document["length"] == expected.length, f"{line}: {document['length']}"
        compare_bytes(line, document)
        return refuses_columns(line)
    if isinstance(document, list):
        assert what_is_set(document) == what_is_set(expected), f"{line}: {what_is_set(document)}"
        return compare_list(line, document)
    if len(document) == 1 and document.keys() <= {"level", "size", "status", "count", "pending", "mac",
                                                  "address"}:
        assert document == expected, f"{line}: {document}"
        assert result(line) == cell(*document.values()) + "\n", line
        return refuses_columns(line)
    assert what_is_set(document) == what_is_set(expected), f"{line}: {what_is_set(document)}"
    return compare_record(line, document)


def fails(line):
    run = vdrctl("--json", *shlex.split(line))
    assert run.returncode == 1 and run.stdout == b"", f"{line}: {run}"
    assert json.loads(run.stderr)["error"]["errno"] == "ENOENT", f"{line}: {run}"


def send(block):
    run = subprocess.run([VDRCTL, "command", str(block.code), "--input", "-"], input=block.bytes,
                         capture_output=True, check=False)
    assert (run.returncode, run.stdout, run.stderr) == (0, b"", b""), run


def carry_out(step):
    if isinstance(step, Block):
        return send(step)
    if isinstance(step, str):
        assert result(step) == "", step
        return None
    line, expected = step
    if expected is NOT_THERE:
        return fails(line)
    if isinstance(expected, Once):
        assert json.loads(result(line, "--json")) == expected.document, line
        return result(line)
    return read(line, expected)


class Verbs(unittest.TestCase):
    maxDiff = None

    def test_each_stores_and_shows_what_it_says(self):
        for scene in SCENES:
            with self.subTest(scene):
                run = subprocess.run([VDRSIM, "run", "--", sys.executable, "-B", __file__, VDRCTL, VDRSIM,
                                      scene], stderr=subprocess.PIPE, text=True, check=False)
                self.assertEqual((run.returncode, run.stderr), (0, ""))

    def test_none_is_left_out(self):
        commands = json.loads(result("commands --json"))
        names = [" ".join(filter(None, (command["object"], command["verb"])))
                 for command in commands if command["function"]]
        steps = [step for scene in SCENES.values() for step in scene if not isinstance(step, Block)]
        lines = [step if isinstance(step, str) else step[0] for step in steps
                 if isinstance(step, str) or step[1] is not NOT_THERE]
        driven = {max((name for name in names if f"{line} ".startswith(f"{name} ")), key=len)
                  for line in lines}
        self.assertGreater(len(names), 150)
        self.assertEqual(set(names), driven)


if __name__ == "__main__":
    if len(sys.argv) > 3:
        with tempfile.NamedTemporaryFile("w") as suppressions:
            suppressions.write(LOST_ON_PURPOSE)
            suppressions.flush()
            os.environ["LSAN_OPTIONS"] = f"suppressions={suppressions.name}:print_suppressions=0"
            try:
                for one_step in SCENES[sys.argv[3]]:
                    carry_out(one_step)
            except AssertionError as failure:
                sys.exit(f"{failure}")
    else:
        unittest.main(argv=sys.argv[:1])
