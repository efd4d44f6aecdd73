"""Tables of the host that belong to no router instance."""
from ._arguments import MacAddress, mac_bytes
from ._lists import Records
from ._object import Listed, Object
from ._records import E2IEntry, E2ITable


class E2I(Listed[E2IEntry]):
    """Edge-to-infrastructure mapping."""

    def __call__(self) -> Records[E2IEntry]:
        return self._library.table(E2IEntry, E2ITable, "VDRZAX_GetE2ITable")

    def show(self, key: int) -> E2IEntry:
        return self._library.record(E2IEntry, "VDRZAX_GetE2IEntry", key)

    def add(self, key: int, mac: MacAddress, *, value2: int = 0, value4: int = 0,
            value5: int = 0) -> None:
        """Add an entry, or replace all of it."""
        self._library.send("VDRZAX_AddE2I", key, value2, mac, value4, value5)

    def delete(self, key: int) -> None:
        self._library.send("VDRZAX_DelE2I", key)

    def clear(self) -> None:
        """Delete all entries."""
        self._library.send("VDRZAX_DelAllE2I")


class PhysicalMacs(Object):
    """Physical MACs of the host."""

    def __call__(self) -> bytes:
        """The physical MACs, in the kernel's own layout: 131072 bytes."""
        return self._library.raw("VDRZAX_GetPmac")

    def add(self, mac: MacAddress, *, value: int = 0) -> None:
        self._library.send("VDRZAX_AddPmac", value, mac_bytes(mac))

    def delete(self, mac: MacAddress) -> None:
        self._library.send("VDRZAX_DelPmac", mac_bytes(mac))


class Locale(Object):
    """Locale identifier of the host."""

    def show(self) -> bytes:
        """The identifier, in the kernel's own layout: 16 bytes."""
        return self._library.raw("VDRZAX_GetLocaleId")


class FlTables(Object):
    """FL tables of the datapath."""

    def show(self, selector: int) -> bytes:
        """The table that 16 bits choose, in the kernel's own layout: 426080 bytes."""
        return self._library.raw("VDRZAX_DumpFLTable", selector)
