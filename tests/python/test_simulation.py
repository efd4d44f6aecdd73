"""The module and vdrctl on one simulated datapath: what one sets the other reads, field by field."""
import json
import os
import pathlib
import re
import subprocess
import sys

import pytest
from hypothesis import given, settings
from hypothesis import strategies as st

import vdrzax


def vdrctl(*words):
    done = subprocess.run([os.environ["VDRCTL"], "--json", *words], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, check=False)
    assert done.returncode == 0, done.stderr
    return json.loads(done.stdout) if done.stdout else None


def as_json(value):
    """A value of the module as vdrctl prints it."""
    if isinstance(value, bytes):
        return value.hex()
    if isinstance(value, dict):
        return {name: as_json(member) for name, member in value.items()}
    if isinstance(value, (list, tuple)):
        return [as_json(member) for member in value]
    return value


@pytest.fixture(scope="module")
def host(vdr):
    """A host with something in every table that the module can fill."""
    mac = "02:00:00:00:00:0a"
    vdr.instances.set("edge-1", second=10, text="blue", fourth=4, flag=1)
    vdr.instances.set("edge-2")
    vdr.lifs.set("edge-1", "uplink", aux_name="aux", a3=5, a4=6, a5=1, flags=3, mode=2, mac=mac)
    vdr.lifs.address.set("edge-1", "uplink", "10.0.0.1/24")
    vdr.lifs.address6.set("edge-1", "uplink", "2001:db8::1/64")
    vdr.bridge_lifs.set("edge-1", "uplink", value1=7)
    vdr.routes.set("edge-1", "10.2.0.0/16", gateway="10.0.0.2", interface="uplink", flags=1)
    vdr.routes.set("edge-1", "10.2.0.0/16", gateway="10.0.0.3", interface="uplink", flags=1)
    vdr.routes6.set("edge-1", "2001:db8::/32", gateway="fe80::1", interface="uplink")
    vdr.arp.set("edge-1", "uplink", "10.0.0.2", mac)
    vdr.neighbours6.set("edge-1", "uplink", "fe80::1", mac)
    vdr.policies.set(1, first=2, second=3, third=4)
    vdr.policy_tables.set(1, "tab")
    vdr.lif_policies.set("edge-1", 1, "10.2.0.0/16", interface="uplink")
    vdr.lif_policy_tables.set("edge-1", "uplink", [(1, 2, 3), (4, 5, 6)])
    vdr.bridges.create("edge-1", 5000)
    vdr.fdb.set("edge-1", 7, 0, mac, value=9, flag=1)
    vdr.bridge_endpoints.add("uplink", "ep", value1=5000, tag=3)
    vdr.clusters.create("edge-1")
    vdr.clusters.nodes.add("edge-1", "n1", mac)
    vdr.bfd_ports.plumb("p1", mac=mac)
    vdr.transport_node.set("one", value=4)
    vdr.connections.plumb("c1", second="two")
    vdr.e2i.add(7, mac, value2=2)
    vdr.physical_macs.add(mac, value=5)
    vdr.multicast.local_receivers.add("edge-1", "239.1.2.3", "r1")
    vdr.multicast.remote_receivers.add("edge-1", "239.1.2.3", 5, mac)
    vdr.multicast.router.add("edge-1", "10.0.0.9")
    vdr.soft_rss.tunables.set("rss", 5)
    vdr.soft_rss.table.set("rss", [1, 2, 3])
    vdr.public_ips.add("192.0.2.1", "10.0.0.1", mac)
    vdr.log_level.set(3)
    return vdr


READINGS = [
    ("instances()", "instance list"),
    ("instances('edge-1')", "instance list edge-1"),
    ("instances.show('edge-1')", "instance show edge-1"),
    ("lifs('edge-1')", "lif list edge-1"),
    ("lifs.show('edge-1', 'uplink')", "lif show edge-1 uplink"),
    ("bridge_lifs('edge-1')", "bridge-lif list edge-1"),
    ("bridge_lifs.show('edge-1', 'uplink')", "bridge-lif show edge-1 uplink"),
    ("lifs.external_vlan(1)", "lif external-vlan list 1"),
    ("control_plane.sync_state.show('edge-1')", "control-plane sync-state show edge-1"),
    ("routes('edge-1')", "route list edge-1"),
    ("routes.selection('edge-1')", "route selection edge-1"),
    ("routes.resolve('edge-1', '10.2.3.4/32')", "route resolve edge-1 10.2.3.4/32"),
    ("demux_routes()", "demux-route list"),
    ("policies(1)", "policy list 1"),
    ("policy_tables()", "policy-table list"),
    ("lif_policies('edge-1', 1)", "lif-policy list edge-1 1"),
    ("lif_policy_tables.show('edge-1', 'uplink')", "lif-policy-table show edge-1 uplink"),
    ("bridges()", "bridge list"),
    ("bridges.show('edge-1')", "bridge show edge-1"),
    ("bridges.networks('edge-1')", "bridge network list edge-1"),
    ("bridges.ports('edge-1', 0)", "bridge port list edge-1 0"),
    ("fdb('edge-1', 7, 0)", "fdb list edge-1 7 0"),
    ("clusters()", "cluster list"),
    ("clusters.nodes()", "cluster node list"),
    ("clusters.endpoints()", "cluster endpoint list"),
    ("clusters.bfd.sessions()", "cluster bfd sessions"),
    ("e2i()", "e2i list"),
    ("e2i.show(7)", "e2i show 7"),
    ("multicast.domain.show('edge-1')", "multicast domain show edge-1"),
    ("multicast.groups('edge-1')", "multicast group list edge-1"),
    ("multicast.local_receivers('edge-1', '239.1.2.3')",
     "multicast local-receiver list edge-1 239.1.2.3"),
    ("multicast.remote_receivers('edge-1', '239.1.2.3')",
     "multicast remote-receiver list edge-1 239.1.2.3"),
    ("soft_rss.tunables.show('rss')", "soft-rss tunables show rss"),
]
NUMBERS = [
    ("log_level.get()", "log-level get"),
    ("extended_log_level.get()", "extended-log-level get"),
    ("stats_level.get()", "stats-level get"),
    ("tx_dispatch_queue_size.get()", "tx-dispatch-queue-size get"),
    ("policies.count(1)", "policy count 1"),
    ("connections.deletion_pending()", "connection deletion-pending"),
    ("connections.mac('c1')", "connection mac c1"),
    ("multicast.replication_address.show('edge-1', '239.1.2.3')",
     "multicast replication-address show edge-1 239.1.2.3"),
    ("multicast.router.show('edge-1', '239.1.2.3')", "multicast router show edge-1 239.1.2.3"),
    ("full_sync.status()", "full-sync status"),
]
# These have no more than their rows: the kernel's own layouts.
BYTES = [
    ("connections()", "connection list"),
    ("connections.show('c1')", "connection show c1"),
    ("routes6('edge-1')", "route6 list edge-1"),
    ("arp('edge-1')", "arp list edge-1"),
    ("proxy_arp('edge-1')", "proxy-arp list edge-1"),
    ("neighbours6('edge-1')", "neighbour6 list edge-1"),
    ("bridge_endpoints()", "bridge-endpoint list"),
    ("bridge_endpoints.stats('uplink')", "bridge-endpoint stats uplink"),
    ("bridge_endpoints.status('uplink')", "bridge-endpoint status uplink"),
    ("bfd_ports()", "bfd-port list"),
    ("transport_node.show()", "transport-node show"),
    ("physical_macs()", "physical-mac list"),
    ("locale.show()", "locale show"),
    ("fl_tables.show(0)", "fl-table show 0"),
    ("soft_rss.table.show('rss')", "soft-rss table show rss"),
]


@pytest.mark.parametrize("words, command", READINGS)
def test_a_record_is_what_vdrctl_prints(host, words, command):
    found = eval(f"host.{words}")
    one = isinstance(found, vdrzax.Record)
    plain = found.asdict() if one else [each.asdict() for each in found]
    assert plain
    printed = vdrctl(*command.split())
    for record in [plain, printed] if one else [*plain, *printed]:
        # A bridge counts how often it was read.
        record.pop("qwords313", None)
    assert as_json(plain) == printed


@pytest.mark.parametrize("words, command", NUMBERS)
def test_a_number_is_what_vdrctl_prints(host, words, command):
    (printed,) = vdrctl(*command.split()).values()
    assert eval(f"host.{words}") == printed


@pytest.mark.parametrize("words, command", BYTES)
def test_bytes_are_what_vdrctl_prints(host, words, command):
    printed = vdrctl(*command.split())
    found = eval(f"host.{words}")
    assert len(found) == printed["length"]
    assert found.rstrip(b"\0").hex() == bytes.fromhex(printed["bytes"]).rstrip(b"\0").hex()


def test_counters_are_those_of_vdrctl(host):
    for words, command in (("lifs.stats.show('edge-1', 'uplink')", "lif stats show edge-1 uplink"),
                           ("control_plane.stats.show('edge-1')", "control-plane stats show edge-1"),
                           ("datapath.stats.show()", "datapath stats show")):
        stats, printed = eval(f"host.{words}"), vdrctl(*command.split())
        assert stats.type == printed.pop("type")
        for name, slots in printed.items():
            first = int(name[len("slots"):])
            if words != "datapath.stats.show()":
                assert list(stats.slots[first:first + len(slots)]) == slots
            else:
                # The commands of this test are counted themselves.
                assert len(slots) == len(stats.slots[first:first + len(slots)])


def test_entries_with_counts_of_their_own(host):
    (entry,) = vdrctl("public-ip", "list")
    (found,) = host.public_ips
    assert (found.entryHeader.hex(), found.itemCount) == (entry["entryHeader"], entry["itemCount"])
    assert list(found.items) == [each["item"] for each in entry["items"]]
    printed, stats = vdrctl("soft-rss", "stats", "show", "rss"), host.soft_rss.stats.show("rss")
    assert stats.queueCount == printed["queueCount"]
    assert list(stats.words8) == [each["word"] for each in printed["words8"]]


def test_the_words_of_the_front_page(vdr):
    vdr.instances.set("edge-7", second=10, flag=1)
    seen = {instance.name: instance.word64 for instance in vdr.instances}
    assert seen["edge-7"] == 10
    with pytest.raises(ValueError):
        vdr.instances.set("edge-7", flag=300)
    with pytest.raises(ValueError):
        vdr.instances.set("e" * 64)
    with pytest.raises(vdrzax.NotFound) as caught:
        vdr.instances.delete("edge-9")
    assert (caught.value.function, caught.value.errno) == ("VDRZAX_DelVdrInstance", 2)
    vdr.routes.set("edge-7", "10.0.0.0/8")
    assert vdr.routes("edge-7").numpy()["routeWord0"].tolist() == [10]
    vdr.instances.delete("edge-7")


@pytest.mark.parametrize("page", ["README.md", "docs/python.md"])
def test_the_programs_of_the_pages_run(page):
    tree = pathlib.Path(__file__).resolve().parents[2]
    programs = re.findall(r"^```python\n(.*?)^```$", (tree / page).read_text(), re.M | re.S)
    programs = [program for program in programs if "import vdrzax" in program]
    assert programs
    for program in programs:
        subprocess.run([sys.executable, "-B", "-c", program], check=True, stdout=subprocess.DEVNULL)


def test_the_simulation_has_a_device(vdr):
    with pytest.raises(vdrzax.Error) as caught:
        vdr.command(250)
    assert type(caught.value) is vdrzax.Error


@settings(max_examples=60)
@given(st.text(st.characters(blacklist_categories=["Cs"], blacklist_characters="\0"), min_size=1)
       .filter(lambda name: len(name.encode()) < 64), st.integers(0, (1 << 32) - 1),
       st.integers(0, 255))
def test_what_is_set_is_read(vdr, name, second, flag):
    vdr.instances.set(name, second=second, flag=flag)
    record = vdr.instances.show(name)
    assert (record.name, record.word64, record.byte72) == (name, second, flag)
    assert [each.name for each in vdr.instances(name)] == [name]
    vdr.instances.delete(name)
    with pytest.raises(vdrzax.NotFound):
        vdr.instances.show(name)
