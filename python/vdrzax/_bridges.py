"""Bridges, their forwarding database, bridge LIFs and bridge endpoints."""
import ctypes
from ._arguments import MacAddress, mac_text
from ._functions import FUNCTIONS
from ._library import Library
from ._lists import Records
from ._object import Listed, Object
from ._records import (BridgeEndpointRecord, BridgeFdbRecord, BridgeInstanceRecord,
                       BridgeNetworkRecord, BridgePortRecord, LifRecord)

# The library reads this name and never sends it.
_UNSENT = ""


class BridgeNetworks(Object):
    """Networks of a bridge."""

    def __call__(self, bridge: str) -> Records[BridgeNetworkRecord]:
        return self._library.listed(BridgeNetworkRecord, "VDRZAX_GetBridgeNetworks", _UNSENT,
                                    bridge)


class BridgePorts(Object):
    """Ports of a bridge."""

    def __call__(self, bridge: str, network: int, *, value: int = 0) -> Records[BridgePortRecord]:
        return self._library.listed(BridgePortRecord, "VDRZAX_GetBridgePorts", _UNSENT, bridge,
                                    network, value)


class Bridges(Listed[BridgeInstanceRecord]):
    """Bridges of router instances."""

    def __init__(self, library: Library) -> None:
        super().__init__(library)
        self.networks = BridgeNetworks(library)
        self.ports = BridgePorts(library)

    def __call__(self) -> Records[BridgeInstanceRecord]:
        """List the bridges of all router instances."""
        return self._library.listed(BridgeInstanceRecord, "VDRZAX_GetBridgeInstances")

    def show(self, instance: str) -> BridgeInstanceRecord:
        return self._library.record(BridgeInstanceRecord, "VDRZAX_GetBridgeInstance", instance)

    def create(self, instance: str, value: int) -> None:
        """Add a bridge, by its number, to a router instance."""
        self._library.send("VDRZAX_BridgeAdd", instance, value)

    def delete(self, instance: str, value: int) -> None:
        self._library.send("VDRZAX_BridgeDel", instance, value)

    def enable(self, instance: str, value: int) -> None:
        """Enable a bridge; the value is one byte."""
        self._library.send("VDRZAX_BridgeEnable", instance, value)

    def disable(self, instance: str, value: int) -> None:
        """Disable a bridge; the value is one byte."""
        self._library.send("VDRZAX_BridgeDisable", instance, value)

    def set_replication_mode(self, instance: str, mode: int) -> None:
        self._library.send("VDRZAX_SetBridgeRepMode", instance, mode)

    def set_ha_state(self, instance: str, state: int) -> None:
        """Set the administrative state of the high availability of bridges."""
        self._library.send("VDRZAX_BridgeSetHAAdminState", instance, state)

    def configure(self, instance: str, code: int, value: int) -> None:
        """Send a configuration command by its number."""
        self._library.send("VDRZAX_BridgeSetConfig", instance, code, value)


class Fdb(Object):
    """Forwarding database of a bridge."""

    def __call__(self, instance: str, segment: int, selector: int) -> Records[BridgeFdbRecord]:
        """List the entries of a segment, which has 16 bits here."""
        return self._library.listed(BridgeFdbRecord, "VDRZAX_GetBridgeFdbEntries", instance,
                                    segment, selector)

    def set(self, instance: str, segment: int, selector: int, mac: MacAddress, *, value: int = 0,
            flag: int = 0) -> None:
        """Set an entry, or replace it."""
        self._library.send("VDRZAX_BridgeSetFdbEntry", instance, mac_text(mac), segment, selector,
                           value, flag)

    def clear(self, instance: str, segment: int, selector: int) -> None:
        self._library.send("VDRZAX_BridgeClearFdbTable", instance, segment, selector)


class BridgeLifs(Object):
    """LIFs that are bridge LIFs."""

    def __call__(self, instance: str) -> Records[LifRecord]:
        return self._library.listed(LifRecord, "VDRZAX_GetBridgeLifs", instance)

    def show(self, instance: str, lif: str) -> LifRecord:
        return self._library.record(LifRecord, "VDRZAX_GetBridgeLif", instance, lif)

    def set(self, instance: str, lif: str, *, second_name: str = "", value1: int = 0,
            value2: int = 0, value3: int = 0) -> None:
        """Mark a LIF as a bridge LIF."""
        self._library.send("VDRZAX_SetBridgeLif", lif, second_name, value1, value2, value3,
                           instance, 1)

    def clear(self, instance: str, lif: str, *, second_name: str = "", value1: int = 0,
              value2: int = 0, value3: int = 0) -> None:
        """Clear the mark of a bridge LIF."""
        self._library.send("VDRZAX_SetBridgeLif", lif, second_name, value1, value2, value3,
                           instance, 0)


class BridgeEndpoints(Object):
    """Bridge endpoints of LIFs."""

    def __call__(self) -> bytes:
        """All bridge endpoints, in the kernel's own layout: 235 bytes each."""
        size, most = BridgeEndpointRecord.SIZE, FUNCTIONS["VDRZAX_GetBridgeEndpoints"].most
        area, count = ctypes.create_string_buffer(size * most), ctypes.c_uint32()
        self._library.send("VDRZAX_GetBeAll", area, len(area), ctypes.byref(count))
        return area.raw[:min(count.value, most) * size]

    def add(self, lif: str, endpoint: str, *, second_name: str = "", fourth_name: str = "",
            fifth_name: str = "", value1: int = 0, value2: int = 0, tag: int = 0, flag1: int = 0,
            flag2: int = 0) -> None:
        """Add a bridge endpoint to a LIF. The tag has 16 bits, a flag is one byte."""
        self._library.send("VDRZAX_AddBridgeEndpoint", lif, second_name, endpoint, value1, value2,
                           fourth_name, tag, flag1, fifth_name, flag2)

    def delete(self, lif: str, endpoint: str) -> None:
        self._library.send("VDRZAX_DelBridgeEndpoint", lif, endpoint)

    def flush(self, *, all: bool = False) -> None:
        """Flush bridge endpoints; the kernel chooses which, unless it is told all."""
        self._library.send("VDRZAX_FlushBridgeEndpoint", bool(all))

    def stats(self, lif: str) -> bytes:
        """The statistics of the bridge endpoint of a LIF, in the kernel's own layout: 146 bytes."""
        return self._library.raw("VDRZAX_GetBeStats", lif)

    def status(self, lif: str) -> bytes:
        """The status of the bridge endpoint of a LIF, in the kernel's own layout: 229 bytes."""
        return self._library.raw("VDRZAX_GetBeStatus", lif)
