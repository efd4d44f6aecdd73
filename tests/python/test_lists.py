"""Lists: views of the library's memory, which is given back once, by the right function."""
import ctypes
import gc
import os
import struct
import subprocess
import sys

import pytest
from device import u32, u64

import vdrzax

RELEASES = {
    "instances()": "VDRZAX_ReleaseInstances",
    "instances.show('a')": "VDRZAX_ReleaseInstance",
    "control_plane.stats.show('a')": "VDRZAX_ReleaseStats",
    "control_plane.sync_state.show('a')": "free",
    "datapath.stats.show()": "VDRZAX_ReleaseStats",
    "lifs('a')": "VDRZAX_ReleaseLifs",
    "lifs.show('a', 'b')": "VDRZAX_ReleaseLif",
    "lifs.stats.show('a', 'b')": "VDRZAX_ReleaseStats",
    "lifs.stats.show('a', 'b', cached=True)": "VDRZAX_ReleaseStats",
    "lifs.external_vlan(1)": "VDRZAX_ReleaseLifs",
    "bridge_lifs('a')": "VDRZAX_ReleaseLifs",
    "bridge_lifs.show('a', 'b')": "VDRZAX_ReleaseLif",
    "routes('a')": "VDRZAX_ReleaseRoutes",
    "routes.selection('a')": "VDRZAX_ReleaseRoutes",
    "routes.resolve('a', '10.0.0.0/8')": "VDRZAX_ReleaseRoute",
    "routes6('a')": "free",
    "demux_routes()": "VDRZAX_ReleaseDemuxRoutes",
    "policies(1)": "VDRZAX_ReleaseAllPolicy",
    "policy_tables()": "VDRZAX_ReleaseAllPolicyTable",
    "lif_policies('a', 1)": "VDRZAX_ReleaseRoutes",
    "lif_policy_tables.show('a', 'b')": "VDRZAX_ReleaseLifPolicyTableRef",
    "bridges()": "VDRZAX_ReleaseBridgeInstances",
    "bridges.show('a')": "VDRZAX_ReleaseBridgeInstance",
    "bridges.networks('a')": "VDRZAX_ReleaseBridgeNetworks",
    "bridges.ports('a', 1)": "VDRZAX_ReleaseBridgePorts",
    "fdb('a', 1, 2)": "VDRZAX_ReleaseBridgeFdbEntries",
    "clusters()": "VDRZAX_ReleaseBridgeClusters",
    "clusters.nodes()": "VDRZAX_ReleaseBridgeClusterNodes",
    "clusters.endpoints()": "VDRZAX_ReleaseBridgeEndpoints",
    "clusters.bfd.sessions()": "VDRZAX_ReleaseBridgeBFDSessions",
    "e2i()": "VDRZAX_ReleaseE2ITable",
    "e2i.show(1)": "free",
    "multicast.domain.show('a')": "VDRZAX_ReleaseMRoutingDomainData",
    "multicast.groups('a')": "VDRZAX_ReleaseMRoutingMcastGroups",
    "multicast.local_receivers('a', 1)": "VDRZAX_ReleaseMRoutingLocalRcvrs",
    "multicast.remote_receivers('a', 1)": "VDRZAX_ReleaseVTEPTable",
    "soft_rss.stats.show('a')": "free",
    "public_ips()": "VDRZAX_ReleaseVMPublicIPTable",
    "public_ips.show(1)": "VDRZAX_ReleaseVMPublicIPEntry",
}
SESSION_SIZE = 39


@pytest.fixture
def releases(vdr, monkeypatch):
    """What was released: pairs of function and address."""
    noted = []

    def noting(name):
        real = function(name)

        def release(address):
            noted.append((name, address))
            real(address)
        return release if name == "free" or "Release" in name else real

    function = vdr._library.function
    monkeypatch.setattr(vdr._library, "function", noting)
    return noted


def policies(count):
    """Policies whose first word is their number, and whose last is larger than 32 bits."""
    return b"".join(struct.pack("<5IQ", index, 0, 0, 0, 0, 1 << 40 | index)
                    for index in range(count))


@pytest.mark.parametrize("words", RELEASES)
def test_what_a_getter_returned_is_released_once_by_its_function(vdr, device, releases, words):
    result = eval(f"vdr.{words}")
    if words != "routes6('a')":
        assert releases == []
    del result
    gc.collect()
    assert [name for name, _ in releases] == [RELEASES[words]]


def test_each_getter_is_released_here():
    from vdrzax._functions import FUNCTIONS

    assert set(RELEASES.values()) == {row.release for row in FUNCTIONS.values() if row.release}
    assert len(RELEASES) == sum(1 for row in FUNCTIONS.values() if row.release)


def test_a_list_is_a_sequence(vdr, device):
    device.reply = policies(5)
    found = vdr.policies(7)
    assert len(found) == 5
    assert [policy.policyWord0 for policy in found] == [0, 1, 2, 3, 4]
    assert found[-1].policyQword == 1 << 40 | 4
    assert [policy.policyWord0 for policy in found[1:4:2]] == [1, 3]
    assert [policy.policyWord0 for policy in reversed(found)] == [4, 3, 2, 1, 0]
    assert found[2] in found
    assert repr(found) == "<5 of PolicyRecord>"
    for wrong in (5, -6):
        with pytest.raises(IndexError):
            found[wrong]


def test_objects_without_arguments_can_be_iterated(vdr, device):
    device.reply = bytes(577) * 2
    assert len(list(vdr.instances)) == 2
    for listed in (vdr.bridges, vdr.demux_routes, vdr.policy_tables):
        device.reply = b""
        assert list(listed) == []
    device.reply = u32(2) + bytes(26) + b"x" * 26
    assert [entry.bytes for entry in vdr.e2i] == [bytes(26), b"x" * 26]


def test_views_and_arrays_keep_the_memory(vdr, device, releases):
    device.reply = policies(5)
    found = vdr.policies(7)
    last, array = found[4], found.numpy()
    part = array[1:3]
    del found, array
    gc.collect()
    assert releases == []
    assert last.policyWord0 == 4
    assert part["policyWord0"].tolist() == [1, 2]
    del last
    gc.collect()
    assert releases == []
    del part
    gc.collect()
    assert [name for name, _ in releases] == ["VDRZAX_ReleaseAllPolicy"]


def test_sub_entries_keep_the_memory(vdr, device, releases):
    area = bytearray(668)
    area[17], area[32:36] = 1, u32(7)
    device.reply = bytes(area)
    (hop,) = vdr.routes.resolve("edge-1", "10.0.0.0/8").nextHops
    gc.collect()
    assert (hop.hopWord, releases) == (7, [])


def test_an_array_is_the_memory_of_the_library(vdr, device, monkeypatch):
    headers = []
    pointer = vdr._library.pointer
    monkeypatch.setattr(vdr._library, "pointer",
                        lambda *arguments: headers.append(pointer(*arguments)) or headers[-1])
    count = 100_000
    device.reply = b"".join(struct.pack("<HI33x", index & 0xFFFF, index) for index in range(count))
    found = vdr.clusters.bfd.sessions()
    array = found.numpy()
    entries = ctypes.c_void_p.from_address(headers[0] + 8).value
    assert array.ctypes.data == entries
    assert array.shape == (count,)
    assert array.dtype.itemsize == SESSION_SIZE
    assert array["word2"].sum() == count * (count - 1) // 2
    assert not array.flags.owndata
    assert not array.flags.writeable


def test_an_empty_list_is_an_empty_array(vdr, device):
    assert vdr.policies(7).numpy().shape == (0,)
    device.reply = u32(0)
    assert vdr.e2i().numpy().shape == (0,)
    assert len(vdr.e2i()) == 0


def test_public_addresses_have_entries_of_their_own_length(vdr, device):
    def entry(head, items):
        return head.ljust(14, b"\0") + u32(len(items)) + b"".join(map(u32, items))

    device.reply = u32(3) + entry(b"a", [1, 2]) + entry(b"b", []) + entry(b"c", [3])
    found = vdr.public_ips()
    assert [(each.entryHeader[:1], each.items) for each in found] == [
        (b"a", (1, 2)), (b"b", ()), (b"c", (3,))]
    assert [each.items for each in vdr.public_ips] == [(1, 2), (), (3,)]
    device.reply = entry(b"a", [5, 6])
    assert vdr.public_ips.show("1.2.3.4").items == (5, 6)


def test_remote_receivers_and_parts_of_a_sync_state(vdr, device):
    device.reply = u32(2) + bytes(68) + b"y" * 68
    assert [each.bytes for each in vdr.multicast.remote_receivers("a", 1)] == [bytes(68), b"y" * 68]
    device.reply = b"".join(u64(index) + bytes(276) for index in range(5))
    parts = vdr.control_plane.sync_state.show("a")
    assert [part.qword0 for part in parts] == [0, 1, 2, 3, 4]


def test_raw_lists_have_as_many_bytes_as_there_are_records(vdr, device):
    device.reply = b"z" * (2 * 235 + 9)
    assert vdr.bridge_endpoints() == b"z" * 470
    device.claimed = 0xFFFFFFFF
    assert len(vdr.bridge_endpoints()) == 28672 * 235
    device.claimed = None
    device.reply = {115: u32(3), 114: b"z" * (3 * 776)}
    assert vdr.routes6("edge-1") == b"z" * (3 * 776)


def test_a_child_gives_back_its_own_copy(vdr, device, releases):
    device.reply = policies(3)
    found = vdr.policies(7)
    child = os.fork()
    if child == 0:
        good = [policy.policyWord0 for policy in found] == [0, 1, 2]
        del found
        gc.collect()
        os._exit(0 if good and len(releases) == 1 else 1)
    assert os.waitpid(child, 0)[1] == 0
    assert releases == []
    assert found[2].policyWord0 == 2


def test_numpy_is_imported_by_who_asks_for_it():
    code = ("import sys, vdrzax\n"
            "import device as fake\n"
            "device = fake.Device()\n"
            "device.reply = bytes(577)\n"
            "found = vdrzax.Client().instances()\n"
            "assert found[0].asdict()['word64'] == 0\n"
            "assert 'numpy' not in sys.modules\n"
            "found.numpy()\n"
            "assert 'numpy' in sys.modules\n")
    here = os.path.dirname(__file__)
    subprocess.run([sys.executable, "-B", "-c", code], check=True,
                   env={**os.environ, "PYTHONPATH": f"{os.environ['PYTHONPATH']}:{here}"})


def test_what_is_alive_at_the_end_can_still_be_read():
    code = ("import atexit, vdrzax\n"
            "import device as fake\n"
            "device = fake.Device()\n"
            "device.reply = b'edge-1'.ljust(577, b'\\0')\n"
            "atexit.register(lambda: print(found[0].name))\n"
            "found = vdrzax.Client().instances()\n")
    here = os.path.dirname(__file__)
    done = subprocess.run([sys.executable, "-B", "-c", code], check=True, stdout=subprocess.PIPE,
                          env={**os.environ, "PYTHONPATH": f"{os.environ['PYTHONPATH']}:{here}"})
    assert done.stdout == b"edge-1\n"


def test_threads_share_a_client(vdr, device):
    import concurrent.futures

    device.reply = policies(50)
    with concurrent.futures.ThreadPoolExecutor(8) as pool:
        sums = set(pool.map(lambda _: sum(each.policyWord0 for each in vdr.policies(7)), range(64)))
    assert sums == {sum(range(50))}
    assert isinstance(vdr.policies(7), vdrzax.Records)
