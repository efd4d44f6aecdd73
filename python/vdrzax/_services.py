"""Services of the host: full sync, software receive-side scaling (RSS), public addresses."""
import ctypes
import struct
from typing import Iterator, List, Sequence

from ._arguments import Ipv4, MacAddress, in_range, ipv4
from ._functions import FUNCTIONS
from ._library import Library
from ._object import Object
from ._records import SoftRssIndTable, SoftRssStats, SoftRssTunables, VMPublicIPEntry

_MOST_QUEUES = 128


class FullSync(Object):
    """The save of the complete state for a later full synchronisation."""

    def save(self, flag: int = 0) -> int:
        """Save, and return the status. The flag is one byte."""
        return self._library.number("VDRZAX_PerformFullSyncSave", flag)

    def status(self) -> int:
        """How the last save stands."""
        return self._library.number("VDRZAX_GetFullSyncSaveStatus")


class SoftRssStatistics(Object):
    """Statistics of a software RSS object."""

    def show(self, name: str) -> SoftRssStats:
        return self._library.record(SoftRssStats, "VDRZAX_SoftRSSGetStats", name)

    def reset(self, name: str) -> None:
        self._library.send("VDRZAX_SoftRSSStatsReset", name)


class SoftRssTuning(Object):
    """Tunables of a software RSS object."""

    def show(self, name: str) -> SoftRssTunables:
        area = ctypes.create_string_buffer(SoftRssTunables.SIZE)
        self._library.send("VDRZAX_SoftRSSGetTunables", name, area)
        return SoftRssTunables(memoryview(area.raw))

    def set(self, name: str, value: int) -> None:
        """Set the number of 64 bits; the kernel sets the other one itself."""
        sent = struct.pack("<QI", in_range("value", value, (1 << 64) - 1), 0)
        self._library.send("VDRZAX_SoftRSSSetTunables", name, sent)


class SoftRssTable(Object):
    """Indirection table of a software RSS object: the index of a queue in each byte."""

    def show(self, name: str) -> bytes:
        """All 128 bytes; what the kernel did not fill is unspecified."""
        area = ctypes.create_string_buffer(_MOST_QUEUES)
        self._library.send("VDRZAX_SoftRSSGetIndTable", name, area)
        return area.raw

    def set(self, name: str, queues: Sequence[int]) -> None:
        """Set the table to at most 128 indexes; bytes are such a sequence."""
        if len(queues) > _MOST_QUEUES:
            raise ValueError(f"queues takes {_MOST_QUEUES}, not {len(queues)}")
        indexes = bytes(in_range("a queue", queue, 255) for queue in queues)
        table = SoftRssIndTable((ctypes.c_uint8 * _MOST_QUEUES)(*indexes), len(indexes))
        self._library.send("VDRZAX_SoftRSSTableSet", name, ctypes.byref(table))


class SoftRss(Object):
    """Software receive-side scaling."""

    def __init__(self, library: Library) -> None:
        super().__init__(library)
        self.stats = SoftRssStatistics(library)
        self.tunables = SoftRssTuning(library)
        self.table = SoftRssTable(library)


class PublicIps(Object):
    """Public addresses of virtual machines."""

    # An entry is as long as its items; the table has their number in front.
    _HEAD = struct.Struct("<14xI")
    _COUNT = struct.Struct("<I")

    def __call__(self) -> List[VMPublicIPEntry]:
        """List the entries. They have different lengths, so that they make no array."""
        name = "VDRZAX_GetVMPublicIPTable"
        address = self._library.pointer(name)
        memory = self._library.owned(name, address, address, FUNCTIONS[name].room)
        entries, start = [], self._COUNT.size
        for _ in range(self._COUNT.unpack_from(memory)[0]):
            (items,) = self._HEAD.unpack_from(memory, start)
            end = start + self._HEAD.size + 4 * items
            entries.append(VMPublicIPEntry(memory[start:end]))
            start = end
        return entries

    def __iter__(self) -> Iterator[VMPublicIPEntry]:
        return iter(self())

    def show(self, address: Ipv4) -> VMPublicIPEntry:
        return self._library.record(VMPublicIPEntry, "VDRZAX_GetVMPublicIPEntry", ipv4(address))

    def add(self, address: Ipv4, item: Ipv4, mac: MacAddress, *, d: int = 0) -> None:
        """Add an item to the entry of a public address."""
        self._library.send("VDRZAX_AddVMPublicIP", ipv4(address), ipv4(item, "item"), mac, d)

    def remove(self, address: Ipv4, item: Ipv4) -> None:
        """Remove an item from the entry of a public address."""
        self._library.send("VDRZAX_DelVMPublicIP", ipv4(address), ipv4(item, "item"))

    def delete(self, address: Ipv4) -> None:
        """Delete the entry of a public address."""
        self._library.send("VDRZAX_DelVMPublicIPEntry", ipv4(address))

    def clear(self) -> None:
        """Delete the entries of all public addresses."""
        self._library.send("VDRZAX_DelAllVMPublicIPEntries")
