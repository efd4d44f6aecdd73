"""Values that don't fit are refused before anything is sent; those that do arrive as they were."""
import ast
import ipaddress
import socket
import sys

import pytest
from hypothesis import example, given
from hypothesis import strategies as st
from test_bytes import DELETE_RECEIVER, ROWS

from vdrzax import _arguments as arguments

CALLS = [row[0] for row in ROWS] + [DELETE_RECEIVER]
U32 = (1 << 32) - 1


def spoilt():
    """Each call with each of its arguments replaced by one that can't be sent."""
    for words in CALLS:
        call = ast.parse(words, mode="eval").body
        values = [(call.args, place) for place in range(len(call.args))]
        values += [(keyword, None) for keyword in call.keywords]
        for holder, place in values:
            node = holder.value if place is None else holder[place]
            for wrong, error in wrong_values(node):
                new = ast.Constant(wrong)
                if place is None:
                    holder.value = new
                else:
                    holder[place] = new
                yield ast.unparse(call), error
            if place is None:
                holder.value = node
            else:
                holder[place] = node


def wrong_values(node):
    if isinstance(node, ast.List):
        return [(1.5, TypeError)]
    if isinstance(node.value, bool):
        return []
    if isinstance(node.value, int):
        return [(1 << 64, ValueError), (-(1 << 63), ValueError), (1.5, TypeError),
                ("1", TypeError), (None, TypeError)]
    if isinstance(node.value, bytes):
        return [("text", TypeError), (1.5, TypeError), (None, TypeError)]
    return [("x" * 300, ValueError), ("a\0b", ValueError), (1.5, TypeError)]


SPOILT = list(spoilt())


def test_every_call_with_arguments_is_spoilt():
    assert len(SPOILT) > 3 * len(ROWS)


@pytest.mark.parametrize("words, error", SPOILT, ids=[f"{words[:60]}-{number}" for number, (words, _)
                                                      in enumerate(SPOILT)])
def test_a_wrong_argument_is_refused_before_anything_is_sent(vdr, device, words, error):
    with pytest.raises(error):
        eval(f"vdr.{words}")
    assert device.sent == []


@pytest.mark.parametrize("call, message", [
    (lambda vdr: vdr.instances.set("edge-1", flag=300),
     "VDRZAX_SetVdrInstance: flag takes 0 to 255, not 300"),
    (lambda vdr: vdr.instances.set("e" * 64), "VDRZAX_SetVdrInstance: name takes 63 bytes, and 'eee"),
    (lambda vdr: vdr.instances.set("edge\0"), "VDRZAX_SetVdrInstance: name has a NUL in 'edge"),
    (lambda vdr: vdr.instances.set("edge", text="t" * 19), "text takes 18 bytes, and 'ttt"),
    (lambda vdr: vdr.fdb("edge-1", 65536, 1), "segment takes 0 to 65535, not 65536"),
    (lambda vdr: vdr.lifs.set("edge-1", "up", flags=1 << 29), "flags takes 0 to 536870911, not"),
    (lambda vdr: vdr.lifs.set("edge-1", "up", mode=4), "mode takes 0 to 3, not 4"),
    (lambda vdr: vdr.lifs.address.set("e", "l", "10.0.0.1"), "address is an IPv4 prefix, as 10."),
    (lambda vdr: vdr.lifs.address.set("e", "l", "10.0.0.1/33"), "a length of 0 to 32, not '33'"),
    (lambda vdr: vdr.lifs.address.set("e", "l", "10.0.0.1/255.0.255.0"), "which is no netmask"),
    (lambda vdr: vdr.lifs.address.set("e", "l", "10.0.0.1/0.0.0.255"), "which is no netmask"),
    (lambda vdr: vdr.lifs.address6.set("e", "l", "::1/129"), "a length of 0 to 128, not '129'"),
    (lambda vdr: vdr.lifs.address6.set("e", "l", ("::1", 300)), "address takes 0 to 128, not 300"),
    (lambda vdr: vdr.control_plane.set_address("e", "10.1.2"), "address is an IPv4 address, not"),
    (lambda vdr: vdr.control_plane.set_address("e", 1 << 32), "address takes 0 to 4294967295, not"),
    (lambda vdr: vdr.neighbours6.delete("e", "l", "fe80::1%eth0"), "an IPv6 address, not 'fe80::1%"),
    (lambda vdr: vdr.neighbours6.delete("e", "l", (1 << 64, 0)), "address takes 0 to 1844674407370"),
    (lambda vdr: vdr.physical_macs.add("2:0:0:0:0"), "mac is a hardware address, as 02:00:5e:10:"),
    (lambda vdr: vdr.physical_macs.add(b"12345"), "mac takes 6 bytes, not 5"),
    (lambda vdr: vdr.transport_node.set("one", bytes=b"x" * 65), "bytes takes 64 bytes, not 65"),
    (lambda vdr: vdr.soft_rss.table.set("rss", bytes(129)), "queues takes 128, not 129"),
    (lambda vdr: vdr.soft_rss.table.set("rss", [256]), "a queue takes 0 to 255, not 256"),
    (lambda vdr: vdr.soft_rss.tunables.set("rss", -1), "value takes 0 to 18446744073709551615, not"),
    (lambda vdr: vdr.lif_policy_tables.set("e", "l", [(1, 2, 3)] * 21), "tables takes 20, not 21"),
    (lambda vdr: vdr.lif_policy_tables.set("e", "l", [(1, 2)]), "a table is three numbers, not 2"),
    (lambda vdr: vdr.lif_policy_tables.set("e", "l", [(1, 2, -3)]), "a table's number takes 0 to"),
    (lambda vdr: vdr.lif_policies.set("e", 3, "10.0.0.0/8", lif="l"), "lif goes with type 4 alone"),
    (lambda vdr: vdr.lif_policies.delete("e", 5, "10.0.0.0/8", lif="l"), "alone, not with 5"),
    (lambda vdr: vdr.command(1 << 31), "request takes -2147483648 to 2147483647, not 2147483648"),
    (lambda vdr: vdr.command(1, capacity=-1), "capacity takes 0 to 4294967295, not -1"),
])
def test_a_refusal_says_what_fits(vdr, device, call, message):
    with pytest.raises(ValueError) as caught:
        call(vdr)
    assert message in str(caught.value)
    assert device.sent == []


@pytest.mark.parametrize("call, message", [
    (lambda vdr: vdr.instances.show(None), "VDRZAX_GetInstance: name is required, not None"),
    (lambda vdr: vdr.instances.show(b"edge"), "VDRZAX_GetInstance: name is a text, not bytes"),
    (lambda vdr: vdr.instances.set("e", second="1"), "second is a whole number, not str"),
    (lambda vdr: vdr.clusters.nodes.add("own", "n1", None), "mac is required, not None"),
    (lambda vdr: vdr.arp.set("e", "l", 1.5, b"123456"), "address is an IPv4 address, not float"),
    (lambda vdr: vdr.routes.set("e", 5), "prefix is an IPv4 prefix, as 10.0.0.0/24, not int"),
    (lambda vdr: vdr.routes6.set("e", ipaddress.ip_network("10.0.0.0/8")),
     "prefix is an IPv6 prefix, as 2001:db8::/32, not IPv4Network"),
    (lambda vdr: vdr.command(1, "text"), "input is bytes, not str"),
])
def test_a_value_of_another_type_is_named(vdr, device, call, message):
    with pytest.raises(TypeError) as caught:
        call(vdr)
    assert message in str(caught.value)
    assert device.sent == []


def test_the_widest_values_are_sent(vdr, device):
    vdr.instances.set("e" * 63, second=U32, text="t" * 18, fourth=U32, flag=255)
    assert device.sent[-1][1][:64] == b"e" * 63 + b"\0"
    assert device.sent[-1][1][332:350] == b"t" * 18
    vdr.lifs.address6.set("e" * 64, "l" * 64, "::/128")
    assert device.sent[-1][1][:64] == b"e" * 64
    vdr.lif_policies.set("edge-1", -2147483648, "0.0.0.0/0")
    assert device.sent[-1][1][408:412] == b"\0\0\0\x80"
    vdr.lif_policy_tables.set("edge-1", "up", [(1, 2, 3)] * 20)
    vdr.soft_rss.table.set("rss", bytes(128))
    vdr.transport_node.set("one", bytes=b"x" * 64)
    assert device.sent[-1][1][404:468] == b"x" * 64


def test_objects_of_ipaddress_are_sent_in_network_order(vdr, device):
    vdr.control_plane.set_address("e", ipaddress.ip_address("10.1.2.3"))
    assert device.sent[-1][1][328:332] == bytes([10, 1, 2, 3])
    vdr.control_plane.set_address("e", 0x0302010A)
    assert device.sent[-1][1][328:332] == (0x0302010A).to_bytes(4, sys.byteorder)
    for prefix in (ipaddress.ip_interface("10.1.2.3/20"), "10.1.2.3/255.255.240.0",
                   ("10.1.2.3", "255.255.240.0")):
        vdr.lifs.address.set("e", "l", prefix)
        assert device.sent[-1][1][512:520] == bytes([10, 1, 2, 3, 255, 255, 240, 0])
    for prefix in (ipaddress.ip_interface("2001:db8::1/64"), ("2001:db8::1", 64),
                   (ipaddress.ip_address("2001:db8::1"), 64)):
        vdr.lifs.address6.set("e", "l", prefix)
        assert device.sent[-1][1][256:272] == ipaddress.ip_address("2001:db8::1").packed
        assert device.sent[-1][1][340] == 64
    vdr.routes.set("e", ipaddress.ip_network("10.1.0.0/16"))
    assert device.sent[-1][1][256:264] == bytes([10, 1, 0, 0, 255, 255, 0, 0])


@given(st.ip_addresses(v=4))
def test_an_ipv4_address_has_its_bytes_in_order(address):
    for form in (address, str(address)):
        assert arguments.ipv4(form).to_bytes(4, sys.byteorder) == address.packed
    assert arguments.ipv4_text(arguments.ipv4(address)) == str(address)


@given(st.ip_addresses(v=6))
@example(ipaddress.ip_address("::ffff:10.1.2.3"))
def test_an_ipv6_address_has_its_bytes_in_order(address):
    for form in (address, str(address), address.exploded):
        halves = arguments.ipv6(form)
        assert b"".join(half.to_bytes(8, sys.byteorder) for half in halves) == address.packed


@given(st.ip_addresses(v=4), st.integers(0, 32))
def test_a_prefix_is_an_address_and_a_netmask(address, length):
    interface = ipaddress.ip_interface(f"{address}/{length}")
    wanted = interface.ip.packed + interface.netmask.packed
    for form in (interface, str(interface), interface.with_netmask, (address, interface.netmask)):
        found = arguments.ipv4_prefix(form)
        assert b"".join(word.to_bytes(4, sys.byteorder) for word in found) == wanted


@given(st.text())
def test_a_text_that_is_no_address_is_refused(text):
    for reader, family in ((arguments.ipv4, socket.AF_INET), (arguments.ipv6, socket.AF_INET6)):
        try:
            socket.inet_pton(family, text)
        except (OSError, ValueError):
            with pytest.raises(ValueError):
                reader(text)
        else:
            reader(text)


@given(st.binary(min_size=6, max_size=6), st.sampled_from(":-"))
def test_a_hardware_address_is_six_bytes(raw, separator):
    for form in (raw, raw.hex(separator), raw.hex(separator).upper(),
                 separator.join(f"{byte:x}" for byte in raw)):
        assert arguments.mac_bytes(form) == raw
    assert arguments.mac_text(raw) == raw.hex(":")


@given(st.text(), st.integers(0, 80))
def test_a_text_is_taken_whole_or_refused(text, limit):
    parameter = arguments.Text("name", limit)
    raw = text.encode("utf-8", "surrogateescape") if encodable(text) else None
    if raw is None or b"\0" in raw or len(raw) > limit:
        with pytest.raises(ValueError):
            parameter.convert(text)
    else:
        assert parameter.convert(text) == raw


def encodable(text):
    try:
        text.encode("utf-8", "surrogateescape")
    except UnicodeEncodeError:
        return False
    return True


@given(st.sampled_from([(1, False), (2, False), (4, False), (8, False), (4, True)]),
       st.integers(-(1 << 66), 1 << 66))
def test_a_number_is_taken_as_it_is_or_refused(kind, number):
    width, signed = kind
    parameter = arguments.Number("n", width, signed)
    try:
        number.to_bytes(width, "little", signed=signed)
    except OverflowError:
        with pytest.raises(ValueError):
            parameter.convert(number)
    else:
        assert parameter.c_type(parameter.convert(number)).value == number


def test_numbers_of_numpy_are_numbers(vdr, device):
    import numpy

    vdr.instances.set("edge-1", second=numpy.uint32(7), flag=numpy.bool_(True).item())
    assert device.sent[-1][1][256:260] == bytes([7, 0, 0, 0])
