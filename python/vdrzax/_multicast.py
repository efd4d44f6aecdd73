"""Multicast routing of router instances. A group is the key of its receivers."""
from ._arguments import Ipv4, MacAddress, ipv4, ipv4_text
from ._library import Library
from ._lists import Records
from ._object import Object
from ._records import MRoutingDomain, MRoutingLocalRcvr, MRoutingMcastGroup, VTEPTable, VtepEntry


class MulticastDomain(Object):
    """Multicast routing domain."""

    def show(self, instance: str) -> MRoutingDomain:
        return self._library.record(MRoutingDomain, "VDRZAX_GetMRoutingDomain", instance)


class MulticastGroups(Object):
    """Multicast groups."""

    def __call__(self, instance: str) -> Records[MRoutingMcastGroup]:
        return self._library.listed(MRoutingMcastGroup, "VDRZAX_GetMRoutingAllMcastGroups",
                                    instance)


class LocalReceivers(Object):
    """Local receivers of a group."""

    def __call__(self, instance: str, group: Ipv4) -> Records[MRoutingLocalRcvr]:
        return self._library.listed(MRoutingLocalRcvr, "VDRZAX_GetMRoutingLocalRcvrs", instance,
                                    ipv4(group, "group"))

    def add(self, instance: str, group: Ipv4, receiver: str) -> None:
        self._library.send("VDRZAX_AddMRoutingLocalRcvrs", instance, ipv4(group, "group"), receiver)

    def delete(self, instance: str, group: Ipv4, receiver: str) -> None:
        self._library.send("VDRZAX_DelMRoutingLocalRcvrs", instance, ipv4(group, "group"), receiver)


class RemoteReceivers(Object):
    """Remote receivers of a group, each known in it by the number b."""

    def __call__(self, instance: str, group: Ipv4) -> Records[VtepEntry]:
        return self._library.table(VtepEntry, VTEPTable, "VDRZAX_GetMRoutingRemoteRcvrs", instance,
                                   ipv4(group, "group"))

    def add(self, instance: str, group: Ipv4, b: int, mac: MacAddress, *, d: int = 0,
            e: int = 0) -> None:
        """Add a receiver, or replace all of it."""
        self._library.send("VDRZAX_AddMRoutingRemoteRcvrs", instance, ipv4(group, "group"), b, mac,
                           d, e)

    def delete(self, instance: str, group: Ipv4, b: int) -> None:
        self._library.send("VDRZAX_DelMRoutingRemoteRcvrs", instance, ipv4(group, "group"), b)


class ReplicationAddress(Object):
    """Replication address of a group."""

    def show(self, instance: str, group: Ipv4) -> str:
        return ipv4_text(self._library.number("VDRZAX_GetMRoutingReplicationIP", instance,
                                              ipv4(group, "group")))


class MulticastRouter(Object):
    """Multicast router."""

    def show(self, instance: str, group: Ipv4) -> str:
        """The address of the router."""
        return ipv4_text(self._library.number("VDRZAX_GetMRoutingMRouterIP", instance,
                                              ipv4(group, "group")))

    def add(self, instance: str, address: Ipv4) -> None:
        self._library.send("VDRZAX_AddMRoutingMRouter", instance, ipv4(address))

    def delete(self, instance: str) -> None:
        self._library.send("VDRZAX_DelMRoutingMRouter", instance)


class Multicast(Object):
    """Multicast routing of a router instance."""

    def __init__(self, library: Library) -> None:
        super().__init__(library)
        self.domain = MulticastDomain(library)
        self.groups = MulticastGroups(library)
        self.local_receivers = LocalReceivers(library)
        self.remote_receivers = RemoteReceivers(library)
        self.replication_address = ReplicationAddress(library)
        self.router = MulticastRouter(library)

    def set(self, instance: str, *, second_name: str = "", value1: int = 0, value2: int = 0,
            value3: int = 0, flag: int = 0) -> None:
        """Configure multicast routing. value3 has 16 bits, the flag is one byte."""
        self._library.send("VDRZAX_SetMcastRouting", instance, second_name, value1, value2, value3,
                           flag)
