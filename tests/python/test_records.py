"""Records as views: where each field lies, by the structures of the header."""
import ctypes
import pathlib
import sys

import pytest
from device import u32

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
import public_header  # noqa: E402

import vdrzax  # noqa: E402
from vdrzax import _records  # noqa: E402

INCLUDE = pathlib.Path(__file__).resolve().parents[2] / "include"
STRUCTURES = {record.name: record for record in public_header.records(INCLUDE)}
RECORDS = [name for name, kind in vars(_records).items()
           if isinstance(kind, type) and issubclass(kind, vdrzax.Record) and name in STRUCTURES]
WIDTHS = {"uint8_t": 1, "uint16_t": 2, "uint32_t": 4, "uint64_t": 8, "char": 1}


def pattern(size):
    return bytes(1 + position * 37 % 255 for position in range(size))


def size_of(structure):
    return sum(width_of(field) * (field.length or 1) for field in structure.fields)


def width_of(field):
    return WIDTHS.get(field.type) or size_of(STRUCTURES[field.type])


def raw(value):
    """A value of a field as the bytes that it was made of."""
    if isinstance(value, str):
        return bytes.fromhex(value.replace(":", ""))
    if isinstance(value, int):
        return value.to_bytes(3, "little")
    return bytes(value)


def expect_field(field, value, area):
    width = width_of(field)
    parts = [area[start:start + width] for start in range(0, len(area), width)]
    if field.type == "char":
        assert value == area.decode("utf-8", "surrogateescape")
    elif field.type in STRUCTURES:
        assert [bytes(entry._memory) for entry in value] == parts
    elif field.length is None:
        assert value == int.from_bytes(area, "little")
    elif width > 1:
        assert value == tuple(int.from_bytes(part, "little") for part in parts)
    else:
        assert raw(value) == area


def test_there_are_records():
    assert len(RECORDS) > 20


@pytest.mark.parametrize("name", RECORDS)
def test_fields_lie_where_the_header_has_them(name):
    structure, kind = STRUCTURES[name], getattr(_records, name)
    assert kind.SIZE == size_of(structure)
    area = pattern(kind.SIZE)
    record, offset = kind(memoryview(area)), 0
    for field in structure.fields:
        end = offset + width_of(field) * (field.length or 1)
        if field.name.startswith("skipped"):
            assert not hasattr(record, field.name)
        else:
            expect_field(field, getattr(record, field.name), area[offset:end])
        offset = end


@pytest.mark.parametrize("name", RECORDS)
def test_numpy_sees_the_same_fields(name):
    import numpy

    kind = getattr(_records, name)
    area = pattern(kind.SIZE)
    row, record = numpy.frombuffer(area, kind.dtype())[0], kind(memoryview(area))
    assert kind.dtype().itemsize == kind.SIZE
    assert list(kind.FIELDS) == list(kind.dtype().names)
    for field in kind.FIELDS:
        value = getattr(record, field)
        if isinstance(value, tuple) and isinstance(value[0], vdrzax.Record):
            assert [entry.tobytes() for entry in row[field]] == [bytes(entry._memory)
                                                                 for entry in value]
            continue
        seen = row[field].tolist()
        if isinstance(seen, bytes):
            assert seen == value.encode("utf-8", "surrogateescape")
        elif isinstance(seen, list) and not isinstance(value, tuple):
            assert bytes(seen) == raw(value)
        else:
            assert seen == (list(value) if isinstance(value, tuple) else value)


@pytest.mark.parametrize("name, size", [("IoctlEnvelope", 24), ("RecordList", 16), ("E2ITable", 12),
                                        ("VTEPTable", 16), ("SoftRssIndTable", 132)])
def test_structures_that_the_module_fills_have_their_size(name, size):
    assert ctypes.sizeof(getattr(_records, name)) == size


def instance_reply():
    area = bytearray(577)
    area[0:7] = b"edge-\xe4\0"
    area[64:68] = u32(0x01020304)
    area[393:399] = bytes([2, 0, 0x5E, 0x10, 0xAB, 0xFF])
    area[431:447] = u32(1) + u32(2) + u32(3) + u32(4)
    area[523:563] = bytes(range(40))
    area[576] = 9
    return bytes(area)


def test_a_record_reads_what_the_kernel_wrote(vdr, device):
    device.reply = instance_reply()
    record = vdr.instances.show("any")
    assert record.name == "edge-\udce4"
    assert record.word64 == 0x01020304
    assert record.address393 == "02:00:5e:10:ab:ff"
    assert record.words431 == (1, 2, 3, 4)
    assert record.bytes523 == bytes(range(40))
    assert record.byte576 == 9
    assert record.asdict()["words431"] == (1, 2, 3, 4)
    assert "skipped414" not in record.asdict()
    assert repr(record).startswith("InstanceRecord(name='edge-\\udce4', word64=16909060, ")


def test_a_name_that_was_read_can_be_sent(vdr, device):
    device.reply = instance_reply()
    name = vdr.instances.show("any").name
    vdr.instances.delete(name)
    assert device.sent[-1][1][0:7] == b"edge-\xe4\0"


def test_records_are_equal_by_their_fields(vdr, device):
    device.reply = instance_reply()
    one, other = vdr.instances.show("any"), vdr.instances.show("any")
    assert one == other
    device.reply = bytes(577)
    assert one != vdr.instances.show("any")
    assert one != "edge"


def test_a_record_cannot_be_written(vdr, device):
    record = vdr.instances.show("any")
    with pytest.raises(AttributeError):
        record.word64 = 3
    with pytest.raises(AttributeError):
        record.word65 = 3


def test_of_sub_entries_those_that_are_counted_are_seen(vdr, device):
    area = bytearray(668)
    area[17] = 2
    area[28 + 4:28 + 8] = u32(7)
    area[28 + 80 + 8:28 + 80 + 12] = b"lif\0"
    device.reply = bytes(area)
    route = vdr.routes.resolve("edge-1", "10.0.0.0/8")
    assert [hop.hopWord for hop in route.nextHops] == [7, 0]
    assert route.nextHops[1].hopName == "lif"
    assert route.asdict()["nextHops"][1] == {"hopWord": 0, "hopName": "lif", "hopQword": 0}


def test_statistics_of_queues_are_as_many_as_there_are_queues(vdr, device):
    area = bytearray(852)
    area[4:8], area[8:12], area[12:16] = u32(2), u32(5), u32(6)
    device.reply = bytes(area)
    stats = vdr.soft_rss.stats.show("rss")
    assert (stats.words8, stats.qwords76) == ((5, 6), (0, 0))


def test_addresses_come_out_as_text(vdr, device):
    device.reply = bytes([10, 1, 2, 3])
    assert vdr.multicast.router.show("edge-1", "224.0.0.1") == "10.1.2.3"
    assert vdr.multicast.replication_address.show("edge-1", "224.0.0.1") == "10.1.2.3"
    device.reply = bytes([2, 0, 0, 0, 0, 10])
    assert vdr.connections.mac("c1") == "02:00:00:00:00:0a"


def test_numbers_and_raw_replies_are_what_the_kernel_wrote(vdr, device):
    device.reply = u32(0xFFFFFFFE)
    assert vdr.log_level.get() == 0xFFFFFFFE
    assert vdr.full_sync.save() == 0xFFFFFFFE
    device.reply = b"abc"
    assert vdr.connections.show("c1") == b"abc" + bytes(149)
    assert vdr.locale.show() == b"abc" + bytes(13)
    assert vdr.command(200, capacity=16) == b"abc"
    device.claimed = 100
    assert vdr.command(200, capacity=3) == b"abc"


def test_tunables_and_tables_of_software_rss(vdr, device):
    device.reply = bytes(range(128))
    assert vdr.soft_rss.table.show("rss") == bytes(range(128))
    device.reply = bytes(range(12))
    tunables = vdr.soft_rss.tunables.show("rss")
    assert (tunables.qword0, tunables.word8) == (0x0706050403020100, 0x0B0A0908)


def test_an_answer_is_filled_when_it_is_asked_for(vdr, device):
    device.reply = bytes(range(88))
    for call in (lambda **more: vdr.routes.set("edge-1", "10.0.0.0/8", **more),
                 lambda **more: vdr.routes.delete("edge-1", "10.0.0.0/8", **more),
                 lambda **more: vdr.policies.set(7, **more),
                 lambda **more: vdr.policies.delete(7, **more),
                 lambda **more: vdr.policy_tables.set(7, "tab", **more),
                 lambda **more: vdr.policy_tables.delete(7, **more),
                 lambda **more: vdr.lif_policies.set("edge-1", 1, "10.0.0.0/8", **more),
                 lambda **more: vdr.lif_policies.delete("edge-1", 1, "10.0.0.0/8", **more),
                 lambda **more: vdr.lif_policy_tables.set("edge-1", "up", [(1, 2, 3)], **more),
                 lambda **more: vdr.lif_policy_tables.delete("edge-1", "up", **more)):
        answer = bytearray(b"x" * 88)
        call(answer=answer)
        assert answer == bytes(range(88))
        assert device.sent[-1][2] == 88
        call()
        assert device.sent[-1][2] == 0
    for wrong, error in ((bytearray(87), ValueError), (bytes(88), TypeError)):
        with pytest.raises(error):
            vdr.routes.set("edge-1", "10.0.0.0/8", answer=wrong)
