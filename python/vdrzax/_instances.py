"""Router instances, their control plane, the datapath as a whole, connections."""
from typing import Iterator, Optional

from ._arguments import Ipv4, ipv4
from ._library import Library
from ._lists import Records
from ._object import Object
from ._records import CPSyncStateEntry, InstanceRecord, StatsRecord


class Instances(Object):
    """Router instances."""

    def __call__(self, instance: Optional[str] = None) -> Records[InstanceRecord]:
        """List all router instances, or the one that is named."""
        return self._library.listed(InstanceRecord, "VDRZAX_GetInstances", instance,
                                    instance is not None)

    def __iter__(self) -> Iterator[InstanceRecord]:
        return iter(self())

    def show(self, instance: str) -> InstanceRecord:
        return self._library.record(InstanceRecord, "VDRZAX_GetInstance", instance)

    def set(self, instance: str, *, second: int = 0, text: Optional[str] = None, fourth: int = 0,
            flag: int = 0) -> None:
        """Create a router instance, or replace all of it. The text has at most 18 bytes."""
        self._library.send("VDRZAX_SetVdrInstance", instance, second, text, fourth, flag)

    def delete(self, instance: str) -> None:
        self._library.send("VDRZAX_DelVdrInstance", instance)

    def tune(self, instance: str, tunables: str, value: int) -> None:
        """Set the tunables of a router instance."""
        self._library.send("VDRZAX_SetVdrInstanceTunables", instance, tunables, value)


class ControlPlaneStats(Object):
    """Counters of the control plane of a router instance."""

    def show(self, instance: str) -> StatsRecord:
        return self._library.record(StatsRecord, "VDRZAX_GetVdrInstanceCPStats", instance)

    def reset(self, instance: str) -> None:
        self._library.send("VDRZAX_ResetVdrInstanceCPStats", instance)


class ControlPlaneSyncState(Object):
    """Sync state of the control plane of a router instance."""

    PARTS = 5

    def show(self, instance: str) -> Records[CPSyncStateEntry]:
        """The five parts of the state."""
        name = "VDRZAX_GetVdrInstanceCPSyncState"
        address = self._library.pointer(name, instance)
        size = self.PARTS * CPSyncStateEntry.SIZE
        return Records(CPSyncStateEntry, self._library.owned(name, address, address, size))

    def set(self, instance: str, state: int) -> None:
        self._library.send("VDRZAX_SetVdrInstanceCPSyncState", instance, state)


class ControlPlane(Object):
    """The control plane of a router instance."""

    def __init__(self, library: Library) -> None:
        super().__init__(library)
        self.stats = ControlPlaneStats(library)
        self.sync_state = ControlPlaneSyncState(library)

    def activate(self, value: int) -> None:
        """Activate the control plane; no instance is named."""
        self._library.send("VDRZAX_CPActivate", value)

    def set_address(self, instance: str, address: Ipv4) -> None:
        self._library.send("VDRZAX_SetCPIp", instance, ipv4(address))


class DatapathStats(Object):
    """Counters of the datapath as a whole."""

    def show(self) -> StatsRecord:
        return self._library.record(StatsRecord, "VDRZAX_GetVdrDiStats")

    def reset(self) -> None:
        self._library.send("VDRZAX_ResetVdrDiStats")


class Datapath(Object):
    """The datapath as a whole."""

    def __init__(self, library: Library) -> None:
        super().__init__(library)
        self.stats = DatapathStats(library)


class Connections(Object):
    """Connections of the datapath."""

    def __call__(self) -> bytes:
        """All connections, in the kernel's own layout: 131072 bytes."""
        return self._library.raw("VDRZAX_GetConnections")

    def show(self, connection: str) -> bytes:
        """A connection, in the kernel's own layout: 152 bytes."""
        return self._library.raw("VDRZAX_GetConnection", connection)

    def mac(self, connection: str) -> str:
        """The virtual hardware address of a connection."""
        return self._library.raw("VDRZAX_GetVMAC", connection).hex(":")

    def plumb(self, connection: str, *, second: str = "", fourth: Optional[str] = None,
              fifth: Optional[str] = None, sixth: Optional[str] = None, seventh: int = 0) -> None:
        """Create a connection. The texts have at most 15, 17, 31 and 255 bytes."""
        ignored = 0
        self._library.send("VDRZAX_PlumbVdrConnection", connection, second, ignored, fourth, fifth,
                           sixth, seventh)

    def unplumb(self, connection: str) -> None:
        self._library.send("VDRZAX_UnPlumbVdrConnection", connection)

    def deletion_pending(self) -> int:
        """Whether the deletion of connections is pending; what the number means is the kernel's."""
        return self._library.number("VDRZAX_VDRDevCheckConnDeletion")
