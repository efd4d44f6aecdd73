"""Which bytes each method sends. Every argument has a value of its own, none is zero."""
import json
import os
import re
import subprocess

import pytest
from device import u8, u16, u32, u64

from vdrzax._object import Object

EDGE = {0: "edge-1"}
ON_LIF = {0: "edge-1", 384: "uplink"}
GROUP = {0: "edge-1", 256: bytes([224, 1, 2, 3])}
RSS = {256: "rss"}
PUBLIC = {256: bytes([1, 2, 3, 4])}
MAC = bytes([2, 0, 0, 0, 0, 10])
ROUTE = {0: "edge-1", 256: bytes([10, 1, 0, 0]), 260: bytes([255, 255, 0, 0]),
         268: bytes([10, 9, 8, 7]), 276: "uplink"}
ROUTE6 = {0: "edge-1", 260: bytes([0x20, 1, 0x0D, 0xB8]), 276: u8(32), 293: bytes([0xFE, 0x80]),
          308: u8(1), 309: "uplink"}
NEIGHBOUR6 = {0: "edge-1", 256: "uplink", 320: bytes([0xFE, 0x80]), 335: u8(2)}
LIF_POLICY = {0: "edge-1", 256: bytes([10, 1, 0, 0]), 260: bytes([255, 255, 0, 0]),
              268: bytes([10, 9, 8, 7]), 272: u32(6), 276: "downlink", 340: "uplink", 408: u32(4)}
MARKED = {**ON_LIF, 256: "second", 544: u32(5), 548: u32(6), 520: u32(7)}
NODE = {256: "one", 320: "two", 384: "three", 400: u32(4), 404: bytes([1, 0xAB])}
NOTHING = None

ROWS = [
    ("instances()", 0, {}),
    ("instances('edge-1')", 0, {**EDGE, 368: u8(1)}),
    ("instances.show('edge-1')", 1, EDGE),
    ("instances.set('edge-1', second=0x01020304, text='blue', fourth=0x05060708, flag=9)", 2,
     {**EDGE, 256: u32(0x01020304), 332: "blue", 352: u32(0x05060708), 368: u8(9)}),
    ("instances.set('edge-1')", 2, EDGE),
    ("instances.delete('edge-1')", 3, EDGE),
    ("instances.tune('edge-1', 'mtu', 9000)", 4, {**EDGE, 260: "mtu", 324: u32(9000)}),
    ("control_plane.stats.show('edge-1')", 5, EDGE),
    ("control_plane.stats.reset('edge-1')", 6, EDGE),
    ("control_plane.activate(7)", 7, u32(7)),
    ("control_plane.set_address('edge-1', '10.1.2.3')", 8, {**EDGE, 328: bytes([10, 1, 2, 3])}),
    ("control_plane.sync_state.show('edge-1')", 87, EDGE),
    ("control_plane.sync_state.set('edge-1', 0x01020304)", 88, {**EDGE, 256: u32(0x01020304)}),
    ("datapath.stats.show()", 43, {}),
    ("datapath.stats.reset()", 44, {}),
    ("connections.plumb('c1', second='two', fourth='four', fifth='five', sixth='six', seventh=7)",
     15, {256: "c1", 320: "two", 336: "four", 354: "five", 386: "six", 644: u32(7)}),
    ("connections.unplumb('c1')", 16, {256: "c1"}),
    ("connections()", 17, {}),
    ("connections.show('c1')", 18, {256: "c1"}),
    ("connections.mac('c1')", 149, {256: "c1"}),
    ("connections.deletion_pending()", 85, NOTHING),
    ("log_level.get()", 9, NOTHING),
    ("log_level.set(3)", 10, u32(3)),
    ("extended_log_level.get()", 11, NOTHING),
    ("extended_log_level.set(4)", 12, u32(4)),
    ("stats_level.get()", 13, NOTHING),
    ("stats_level.set(5)", 14, u32(5)),
    ("tx_dispatch_queue_size.get()", 159, NOTHING),
    ("tx_dispatch_queue_size.set(6)", 160, u32(6)),
    ("pre_unload()", 42, NOTHING),

    ("lifs('edge-1')", 21, EDGE),
    ("lifs.show('edge-1', 'uplink')", 22, ON_LIF),
    ("lifs.set('edge-1', 'uplink', aux_name='aux', a3=3, a4=4, a5=5, a6=6, a7=7, "
     "flags=0x1fffffff, mode=3, mac='2:0:0:0:0:9')", 19,
     {**ON_LIF, 256: "aux", 512: u32(3), 516: u32(4), 520: u32(7), 524: bytes([2, 0, 0, 0, 0, 9]),
      544: u32(5), 548: u32(6), 552: u32(0x1FFFFFFF), 788: u8(3)}),
    ("lifs.set('edge-1', 'uplink', mode=1)", 19, {**ON_LIF, 788: u8(1)}),
    ("lifs.set('edge-1', 'uplink', mode=2)", 19, {**ON_LIF, 788: u8(2)}),
    ("lifs.set('edge-1', 'uplink')", 19, ON_LIF),
    ("lifs.delete('edge-1', 'uplink', aux_name='aux')", 20, {**ON_LIF, 256: "aux"}),
    ("lifs.enable('edge-1', 'uplink')", 30, ON_LIF),
    ("lifs.disable('edge-1', 'uplink')", 31, ON_LIF),
    ("lifs.stats.show('edge-1', 'uplink')", 23, ON_LIF),
    ("lifs.stats.show('edge-1', 'uplink', cached=True)", 23, {**ON_LIF, 552: u32(1)}),
    ("lifs.stats.reset('edge-1', 'uplink')", 24, ON_LIF),
    ("lifs.address.set('edge-1', 'uplink', '10.1.2.3/20')", 26,
     {**ON_LIF, 512: bytes([10, 1, 2, 3]), 516: bytes([255, 255, 240, 0])}),
    ("lifs.address.delete('edge-1', 'uplink', '10.1.2.3/255.0.0.0')", 27,
     {**ON_LIF, 512: bytes([10, 1, 2, 3]), 516: bytes([255, 0, 0, 0])}),
    ("lifs.address6.set('edge-1', 'uplink', '2001:db8::1/64')", 108,
     {**ON_LIF, 256: bytes([0x20, 1, 0x0D, 0xB8]), 271: u8(1), 276: "uplink", 340: u8(64)}),
    ("lifs.address6.delete('edge-1', 'uplink', '::2/0')", 109,
     {**ON_LIF, 271: u8(2), 276: "uplink"}),
    ("lifs.designated_address.set('edge-1', 'uplink', '10.1.2.3')", 25,
     {**ON_LIF, 520: bytes([10, 1, 2, 3])}),
    ("lifs.dhcp_relay.clear('edge-1', 'uplink')", 33, ON_LIF),
    ("lifs.vxlan.enable('edge-1', 'uplink')", 28, ON_LIF),
    ("lifs.vxlan.disable('edge-1', 'uplink')", 29, ON_LIF),
    ("lifs.vxlan.set_multicast('edge-1', 'uplink', '224.1.2.3')", 32,
     {**ON_LIF, 520: bytes([224, 1, 2, 3])}),
    ("lifs.mtu6.set('edge-1', 'uplink', 1500)", 152, {**ON_LIF, 256: u32(1500)}),
    ("lifs.multicast.enable('edge-1', 'uplink')", 125, ON_LIF),
    ("lifs.multicast.disable('edge-1', 'uplink')", 126, ON_LIF),
    ("lifs.external_vlan(4094)", 172, {260: u32(4094)}),

    ("routes('edge-1')", 36, EDGE),
    ("routes.selection('edge-1')", 174, EDGE),
    ("routes.resolve('edge-1', '10.1.0.0/16', third='1.2.3.4')", 37,
     {**EDGE, 256: bytes([10, 1, 0, 0]), 260: bytes([255, 255, 0, 0]), 264: bytes([1, 2, 3, 4])}),
    ("routes.set('edge-1', '10.1.0.0/16', gateway='10.9.8.7', interface='uplink', flags=5)", 34,
     {**ROUTE, 272: u32(5)}),
    ("routes.set('edge-1', '0.0.0.0/0')", 34, EDGE),
    ("routes.delete('edge-1', '10.1.0.0/16', gateway='10.9.8.7', interface='uplink')", 35, ROUTE),
    ("routes6('edge-1')", 114, EDGE),
    ("routes6.set('edge-1', '2001:db8::/32', gateway='fe80::1', interface='uplink')", 110, ROUTE6),
    ("routes6.delete('edge-1', '2001:db8::/32', gateway='fe80::1', interface='uplink')", 111,
     ROUTE6),
    ("demux_routes()", 173, {}),
    ("path_mtu6.clear()", 151, NOTHING),
    ("flush(0x01020304, selector1=1, selector2=2, selector3=3, name='tab', value=5)", 80,
     {256: u32(0x01020304), 260: u8(3), 261: u8(1), 262: u8(2), 263: "tab", 328: u32(5)}),
    ("arp('edge-1')", 40, EDGE),
    ("arp('edge-1', interface='uplink')", 40, ON_LIF),
    ("arp.set('edge-1', 'uplink', '10.1.2.3', '02-00-00-00-00-0A')", 38,
     {**ON_LIF, 256: bytes([10, 1, 2, 3]), 524: "02:00:00:00:00:0a"}),
    ("arp.delete('edge-1', 'uplink', '10.1.2.3')", 39, {**ON_LIF, 256: bytes([10, 1, 2, 3])}),
    ("arp.clear('edge-1', interface='uplink')", 41, ON_LIF),
    ("proxy_arp('edge-1', interface='uplink')", 40, {**ON_LIF, 917: u8(1)}),
    ("proxy_arp.set('edge-1', 'uplink', '10.1.2.3')", 38,
     {**ON_LIF, 256: bytes([10, 1, 2, 3]), 917: u8(1)}),
    ("proxy_arp.delete('edge-1', 'uplink', '10.1.2.3')", 39,
     {**ON_LIF, 256: bytes([10, 1, 2, 3]), 917: u8(1)}),
    ("neighbours6('edge-1', interface='uplink')", 116, ON_LIF),
    ("neighbours6.set('edge-1', 'uplink', 'fe80::2', '2:0:0:0:0:a')", 112,
     {**NEIGHBOUR6, 336: "02:00:00:00:00:0a"}),
    ("neighbours6.delete('edge-1', 'uplink', 'fe80::2')", 113, NEIGHBOUR6),
    ("neighbours6.clear('edge-1', interface='uplink')", 117, ON_LIF),
    ("proxy_neighbours6.set('edge-1', 'uplink', 'fe80::2')", 112, {**NEIGHBOUR6, 917: u8(1)}),
    ("proxy_neighbours6.delete('edge-1', 'uplink', 'fe80::2')", 113, {**NEIGHBOUR6, 917: u8(1)}),

    ("policies(7)", 119, {412: u32(7)}),
    ("policies.count(7)", 122, {412: u32(7)}),
    ("policies.set(7, first=1, second=2, third=3)", 120,
     {256: u32(1), 260: u32(2), 404: u32(3), 412: u32(7)}),
    ("policies.delete(7, first=1, second=2)", 121, {256: u32(1), 260: u32(2), 412: u32(7)}),
    ("policy_tables()", 143, {}),
    ("policy_tables.set(7, 'tab')", 144, {412: u32(7), 416: "tab"}),
    ("policy_tables.delete(7)", 145, {412: u32(7)}),
    ("lif_policies('edge-1', 4, lif='uplink')", 140, {**EDGE, 340: "uplink", 408: u32(4)}),
    ("lif_policies.set('edge-1', 4, '10.1.0.0/16', lif='uplink', gateway='10.9.8.7', "
     "interface='downlink', flags=6)", 141, LIF_POLICY),
    ("lif_policies.delete('edge-1', 4, '10.1.0.0/16', lif='uplink', gateway='10.9.8.7', "
     "interface='downlink', flags=6)", 142, LIF_POLICY),
    ("lif_policy_tables.show('edge-1', 'uplink')", 146, ON_LIF),
    ("lif_policy_tables.set('edge-1', 'uplink', [(1, 2, 3), (4, 5, 0xffffffffffffffff)])", 147,
     {**ON_LIF, 480: u16(2), 484: u64(1), 492: u64(2), 500: u64(3), 508: u64(4), 516: u64(5),
      524: u64(0xFFFFFFFFFFFFFFFF)}),
    ("lif_policy_tables.delete('edge-1', 'uplink')", 148, ON_LIF),

    ("bridges()", 61, {}),
    ("bridges.show('edge-1')", 62, EDGE),
    ("bridges.create('edge-1', 5000)", 53, {**EDGE, 256: u32(5000)}),
    ("bridges.delete('edge-1', 5000)", 54, {**EDGE, 256: u32(5000)}),
    ("bridges.enable('edge-1', 200)", 55, {**EDGE, 256: u8(200)}),
    ("bridges.disable('edge-1', 200)", 56, {**EDGE, 256: u8(200)}),
    ("bridges.set_replication_mode('edge-1', 2)", 49, {**EDGE, 300: u32(2)}),
    ("bridges.set_ha_state('edge-1', 3)", 118, {**EDGE, 256: u32(3)}),
    ("bridges.configure('edge-1', 57, 6)", 57, {**EDGE, 296: u32(6)}),
    ("bridges.networks('br')", 63, {0: "br"}),
    ("bridges.ports('br', 7, value=8)", 64, {0: "br", 260: u32(7), 264: u32(8), 268: u32(1)}),
    ("fdb('edge-1', 7, 8)", 65, {**EDGE, 260: u32(7), 264: u32(8), 268: u32(1)}),
    ("fdb.set('edge-1', 70000, 8, '2:0:0:0:0:a', value=9, flag=3)", 66,
     {**EDGE, 260: u32(70000), 264: u32(8), 268: u32(1), 272: u32(9), 276: "02:00:00:00:00:0a",
      294: u8(3), 296: u32(1)}),
    ("fdb.clear('edge-1', 7, 8)", 67, {**EDGE, 260: u32(7), 264: u32(8), 268: u32(1)}),
    ("bridge_lifs('edge-1')", 59, EDGE),
    ("bridge_lifs.show('edge-1', 'uplink')", 60, ON_LIF),
    ("bridge_lifs.set('edge-1', 'uplink', second_name='second', value1=5, value2=6, value3=7)", 57,
     MARKED),
    ("bridge_lifs.clear('edge-1', 'uplink', second_name='second', value1=5, value2=6, value3=7)",
     58, MARKED),
    ("bridge_endpoints()", 52, {}),
    ("bridge_endpoints.add('uplink', 'ep', second_name='two', fourth_name='four', "
     "fifth_name='five', value1=1, value2=2, tag=500, flag1=3, flag2=4)", 45,
     {256: "two", 320: "ep", 384: "uplink", 448: "four", 544: u32(1), 548: u32(2), 720: u16(500),
      722: "five", 786: u8(3), 787: u8(4)}),
    ("bridge_endpoints.delete('uplink', 'ep')", 46, {320: "ep", 384: "uplink"}),
    ("bridge_endpoints.flush()", 48, {}),
    ("bridge_endpoints.flush(all=True)", 47, {}),
    ("bridge_endpoints.stats('uplink')", 50, {384: "uplink"}),
    ("bridge_endpoints.status('uplink')", 51, {384: "uplink"}),

    ("clusters()", 89, {}),
    ("clusters('own')", 89, {0: "own"}),
    ("clusters.create('own')", 90, {0: "own"}),
    ("clusters.delete('own')", 91, {0: "own"}),
    ("clusters.flush('own')", 104, {0: "own"}),
    ("clusters.flush(all=True)", 103, {}),
    ("clusters.set_debug(3, 'own')", 107, {0: "own", 256: u8(3)}),
    ("clusters.nodes('own')", 92, {0: "own"}),
    ("clusters.nodes.add('own', 'n1', '2:0:0:0:0:a')", 93, {0: "own", 256: "n1", 320: MAC}),
    ("clusters.nodes.delete('own', 'n1')", 94, {0: "own", 256: "n1"}),
    ("clusters.endpoints('edge-1')", 95, EDGE),
    ("clusters.bfd.sessions('edge-1')", 96, EDGE),
    ("clusters.bfd.set_profile('own', 1, value1=2, value2=3)", 106,
     {0: "own", 256: u8(1), 260: u32(2), 264: u32(3)}),
    ("bfd_ports()", 99, {}),
    ("bfd_ports.plumb('p1', second_name='two', mac='2:0:0:0:0:a')", 97,
     {256: "p1", 320: "two", 336: MAC}),
    ("bfd_ports.unplumb('p1')", 98, {256: "p1"}),
    ("transport_node.show(selector=3)", 102, {468: u32(3)}),
    ("transport_node.set('one', second_name='two', third_name='three', value=4, "
     "bytes=b'\\x01\\xab')", 100, NODE),
    ("transport_node.clear('one', second_name='two', third_name='three', value=4, "
     "bytes=b'\\x01\\xab')", 101, NODE),

    ("e2i()", 164, {}),
    ("e2i.show(7)", 165, {256: u32(7)}),
    ("e2i.add(7, '2:0:0:0:0:a', value2=2, value4=4, value5=5)", 161,
     {256: u32(7), 260: u32(2), 264: MAC, 272: u32(4), 276: u32(5)}),
    ("e2i.delete(7)", 162, {256: u32(7)}),
    ("e2i.clear()", 163, {}),
    ("physical_macs()", 73, {}),
    ("physical_macs.add('2:0:0:0:0:a', value=5)", 74, {256: u32(5), 260: MAC}),
    ("physical_macs.delete('2:0:0:0:0:a')", 75, {260: MAC}),
    ("locale.show()", 86, {}),
    ("fl_tables.show(500)", 72, {256: u16(500)}),
    ("multicast.set('edge-1', second_name='two', value1=1, value2=2, value3=3, flag=4)", 127,
     {**EDGE, 256: "two", 320: u32(1), 324: u32(2), 328: u16(3), 330: u8(4)}),
    ("multicast.domain.show('edge-1')", 130, EDGE),
    ("multicast.groups('edge-1')", 135, EDGE),
    ("multicast.local_receivers('edge-1', '224.1.2.3')", 128, GROUP),
    ("multicast.local_receivers.add('edge-1', '224.1.2.3', 'r1')", 133, {**GROUP, 272: "r1"}),
    ("multicast.local_receivers.delete('edge-1', '224.1.2.3', 'r1')", 134, {**GROUP, 272: "r1"}),
    ("multicast.remote_receivers('edge-1', '224.1.2.3')", 129, GROUP),
    ("multicast.remote_receivers.add('edge-1', '224.1.2.3', 2, '2:0:0:0:0:a', d=4, e=5)", 131,
     {**GROUP, 272: u32(4), 276: u32(2), 280: MAC, 288: u32(5)}),
    ("multicast.replication_address.show('edge-1', '224.1.2.3')", 136, GROUP),
    ("multicast.router.show('edge-1', '224.1.2.3')", 139, GROUP),
    ("multicast.router.add('edge-1', '10.1.2.3')", 137, {**EDGE, 256: bytes([10, 1, 2, 3])}),
    ("multicast.router.delete('edge-1')", 138, EDGE),
    ("full_sync.save(9)", 123, {256: u8(9)}),
    ("full_sync.status()", 124, {}),
    ("soft_rss.stats.show('rss')", 153, RSS),
    ("soft_rss.stats.reset('rss')", 154, RSS),
    ("soft_rss.tunables.show('rss')", 155, RSS),
    ("soft_rss.tunables.set('rss', 0x0102030405060708)", 156,
     {**RSS, 320: u64(0x0102030405060708)}),
    ("soft_rss.table.show('rss')", 157, RSS),
    ("soft_rss.table.set('rss', [5, 6, 255])", 158, {**RSS, 320: bytes([5, 6, 255]), 448: u32(3)}),
    ("public_ips()", 171, NOTHING),
    ("public_ips.show('1.2.3.4')", 170, PUBLIC),
    ("public_ips.add('1.2.3.4', '10.9.8.7', '2:0:0:0:0:a', d=4)", 166,
     {**PUBLIC, 260: MAC, 268: u32(4), 272: bytes([10, 9, 8, 7])}),
    ("public_ips.remove('1.2.3.4', '10.9.8.7')", 167, {**PUBLIC, 272: bytes([10, 9, 8, 7])}),
    ("public_ips.delete('1.2.3.4')", 168, PUBLIC),
    ("public_ips.clear()", 169, NOTHING),
    ("command(200)", 200, NOTHING),
    ("command(10, b'\\x03\\x00\\x00\\x00')", 10, u32(3)),
]
# Only three fields of its block are cleared; the others are what the stack held.
DELETE_RECEIVER = "multicast.remote_receivers.delete('edge-1', '224.1.2.3', 2)"


def block(fields):
    if fields is None or isinstance(fields, bytes):
        return fields or b""
    area = bytearray(968)
    for offset, value in fields.items():
        raw = value.encode() if isinstance(value, str) else value
        area[offset:offset + len(raw)] = raw
    return bytes(area)


def call(vdr, words):
    return eval(f"vdr.{words}", {"vdr": vdr})


@pytest.mark.parametrize("words, code, fields", ROWS, ids=[row[0] for row in ROWS])
def test_a_method_sends_what_its_arguments_say(vdr, device, words, code, fields):
    call(vdr, words)
    sent_code, sent_input, _ = device.sent[-1]
    assert sent_code == code
    assert sent_input == block(fields)
    assert len(device.sent) == (2 if words.startswith("routes6(") else 1)


def test_the_deletion_of_a_remote_receiver_sends_its_three_fields(vdr, device):
    call(vdr, DELETE_RECEIVER)
    code, sent, _ = device.sent[-1]
    assert (code, len(sent)) == (132, 968)
    assert sent[0:7] == b"edge-1\0"
    assert sent[256:260] == bytes([224, 1, 2, 3])
    assert sent[276:280] == u32(2)


def methods(thing, path=""):
    """All public methods of a client by their path, `list` for a call of an object itself."""
    for name in dir(thing):
        member = getattr(thing, name)
        if name.startswith("_"):
            if name == "__call__" and isinstance(thing, Object):
                yield path
        elif isinstance(member, Object):
            yield from methods(member, f"{path}.{name}" if path else name)
        elif callable(member):
            yield f"{path}.{name}" if path else name


def test_each_method_is_tried(vdr):
    tried = {row[0].split("(")[0] for row in ROWS} | {DELETE_RECEIVER.split("(")[0]}
    assert set(methods(vdr)) == tried


def attribute(words, owner):
    """Words of vdrctl as an attribute: what can be counted is in the plural."""
    name = words.replace("-", "_")
    forms = {name, name + "s", re.sub("y$", "ies", name), re.sub("6$", "s6", name)}
    (found,) = [form for form in forms if hasattr(owner, form)]
    return found


def path_of(vdr, command):
    path, owner = [], vdr
    for words in (command["object"] or "").split():
        if command["verb"] is None:
            return words.replace("-", "_")
        path.append(attribute(words, owner))
        owner = getattr(owner, path[-1])
    verb = command["verb"].replace("-", "_")
    return ".".join(path if verb == "list" else [*path, verb])


def commands_of_vdrctl():
    output = subprocess.run([os.environ["VDRCTL"], "commands", "--json"], check=True,
                            stdout=subprocess.PIPE).stdout
    return [command for command in json.loads(output) if command["function"]]


def test_the_methods_are_the_commands_of_vdrctl(vdr):
    assert {path_of(vdr, command) for command in commands_of_vdrctl()} == set(methods(vdr))


def test_each_row_calls_the_function_that_vdrctl_calls(vdr, device, monkeypatch):
    wanted = {path_of(vdr, command): command["function"] for command in commands_of_vdrctl()}
    called = {}
    send = vdr._library.send

    def noting(name, *arguments):
        called.setdefault(path, set()).add(name)
        send(name, *arguments)

    monkeypatch.setattr(vdr._library, "send", noting)
    for words in [row[0] for row in ROWS] + [DELETE_RECEIVER]:
        path = words.split("(")[0]
        call(vdr, words)
    for path, function in wanted.items():
        functions = {function} if isinstance(function, str) else set(function)
        # The fetches, which have no underscore, are what the getters call.
        assert called[path] == {name for name in functions
                                if "VDRZAXGet" not in name}, path


def test_each_command_function_of_the_header_is_called():
    from vdrzax._functions import FUNCTIONS

    functions = {name for command in commands_of_vdrctl()
                 for name in ([command["function"]] if isinstance(command["function"], str)
                              else command["function"])}
    releases = {name for name, function in FUNCTIONS.items() if function.is_release}
    assert set(FUNCTIONS) == functions | releases | {"VDRZAXGetUuidOrName"}
