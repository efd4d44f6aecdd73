"""Routes and neighbours of router instances."""
import ctypes
from typing import Optional

from ._arguments import (Ipv4, Ipv4Prefix, Ipv6, Ipv6Prefix, MacAddress, ipv4, ipv4_prefix, ipv6,
                         ipv6_prefix, mac_text)
from ._lists import Records
from ._object import Listed, Object, answer_area
from ._records import DemuxRouteRecord, RouteRecord

_ROUTE6_SIZE = 776


class Routes(Object):
    """IPv4 routes of a router instance.

    A prefix is the first two words of a route, address and netmask, a gateway the third one.
    """

    def __call__(self, instance: str) -> Records[RouteRecord]:
        """List the routes."""
        return self._library.listed(RouteRecord, "VDRZAX_GetRoutes", instance)

    def selection(self, instance: str) -> Records[RouteRecord]:
        """List the routes for LIF selection."""
        return self._library.listed(RouteRecord, "VDRZAX_GetLifSelectionRoutes", instance)

    def resolve(self, instance: str, prefix: Ipv4Prefix, *, third: Ipv4 = 0) -> RouteRecord:
        """The route that the datapath resolves a query to."""
        return self._library.record(RouteRecord, "VDRZAX_GetResolveRoute", instance,
                                    *ipv4_prefix(prefix), ipv4(third, "third"))

    def set(self, instance: str, prefix: Ipv4Prefix, *, gateway: Ipv4 = 0,
            interface: Optional[str] = None, flags: int = 0,
            answer: Optional[bytearray] = None) -> None:
        """Add a route, or replace all of it. `answer`, 88 bytes, takes what the kernel answers."""
        self._library.send("VDRZAX_SetRoute", *ipv4_prefix(prefix), ipv4(gateway, "gateway"),
                           interface, instance, flags, answer_area(answer))

    def delete(self, instance: str, prefix: Ipv4Prefix, *, gateway: Ipv4 = 0,
               interface: Optional[str] = None, answer: Optional[bytearray] = None) -> None:
        self._library.send("VDRZAX_DelRoute", *ipv4_prefix(prefix), ipv4(gateway, "gateway"),
                           interface, instance, answer_area(answer))


class Routes6(Object):
    """IPv6 routes of a router instance."""

    def __call__(self, instance: str) -> bytes:
        """The routes in the kernel's own layout: 776 bytes each. These are two commands."""
        table, count = ctypes.c_void_p(), ctypes.c_uint32()
        self._library.send("VDRZAX_GetRoutesv6", instance, ctypes.byref(table), ctypes.byref(count))
        assert table.value is not None
        size = count.value * _ROUTE6_SIZE
        memory = self._library.owned("VDRZAX_GetRoutesv6", table.value, table.value, max(size, 1))
        return bytes(memory[:size])

    def set(self, instance: str, prefix: Ipv6Prefix, *, gateway: Ipv6 = (0, 0),
            interface: Optional[str] = None) -> None:
        """Add a route, or replace all of it."""
        self._library.send("VDRZAX_SetRoutev6", *ipv6_prefix(prefix), *ipv6(gateway, "gateway"),
                           interface, instance)

    def delete(self, instance: str, prefix: Ipv6Prefix, *, gateway: Ipv6 = (0, 0),
               interface: Optional[str] = None) -> None:
        self._library.send("VDRZAX_DelRoutev6", *ipv6_prefix(prefix), *ipv6(gateway, "gateway"),
                           interface, instance)


class DemuxRoutes(Listed[DemuxRouteRecord]):
    """Demultiplexing routes of the datapath."""

    def __call__(self) -> Records[DemuxRouteRecord]:
        return self._library.listed(DemuxRouteRecord, "VDRZAX_GetDemuxRoutes")


class PathMtu6(Object):
    """IPv6 path MTU table of the datapath."""

    def clear(self) -> None:
        self._library.send("VDRZAX_PMTUTableCearv6")


class Arp(Object):
    """IPv4 neighbours of a router instance."""

    def __call__(self, instance: str, *, interface: Optional[str] = None) -> bytes:
        """The neighbours, or those of one interface, in the kernel's own layout: 7667712 bytes."""
        return self._library.raw("VDRZAX_GetArps", instance, interface)

    def set(self, instance: str, lif: str, address: Ipv4, mac: MacAddress) -> None:
        """Add a neighbour, or replace it."""
        self._library.send("VDRZAX_SetArp", ipv4(address), mac_text(mac), lif, instance)

    def delete(self, instance: str, lif: str, address: Ipv4) -> None:
        self._library.send("VDRZAX_DelArp", ipv4(address), lif, instance)

    def clear(self, instance: str, *, interface: Optional[str] = None) -> None:
        """Delete all neighbours, or those of one interface."""
        self._library.send("VDRZAX_ClearArp", instance, interface)


class ProxyArp(Object):
    """IPv4 addresses that a router instance answers for."""

    def __call__(self, instance: str, *, interface: Optional[str] = None) -> bytes:
        """The addresses, or those of one interface, in the kernel's own layout: 7667712 bytes."""
        return self._library.raw("VDRZAX_GetProxyArps", instance, interface)

    def set(self, instance: str, lif: str, address: Ipv4) -> None:
        self._library.send("VDRZAX_SetProxyArp", ipv4(address), lif, instance)

    def delete(self, instance: str, lif: str, address: Ipv4) -> None:
        self._library.send("VDRZAX_DelProxyArp", ipv4(address), lif, instance)


class Neighbours6(Object):
    """IPv6 neighbours of a router instance."""

    def __call__(self, instance: str, *, interface: Optional[str] = None) -> bytes:
        """The neighbours, or those of one interface, in the kernel's own layout: 7667712 bytes."""
        return self._library.raw("VDRZAX_GetArpsv6", instance, interface)

    def set(self, instance: str, lif: str, address: Ipv6, mac: MacAddress) -> None:
        """Add a neighbour, or replace it."""
        self._library.send("VDRZAX_SetArpv6", *ipv6(address), mac_text(mac), lif, instance)

    def delete(self, instance: str, lif: str, address: Ipv6) -> None:
        self._library.send("VDRZAX_DelArpv6", *ipv6(address), lif, instance)

    def clear(self, instance: str, *, interface: Optional[str] = None) -> None:
        """Delete all neighbours, or those of one interface."""
        self._library.send("VDRZAX_ClearArpv6", instance, interface)


class ProxyNeighbours6(Object):
    """IPv6 addresses that a router instance answers for."""

    def set(self, instance: str, lif: str, address: Ipv6) -> None:
        self._library.send("VDRZAX_SetProxyArpv6", *ipv6(address), lif, instance)

    def delete(self, instance: str, lif: str, address: Ipv6) -> None:
        self._library.send("VDRZAX_DelProxyArpv6", *ipv6(address), lif, instance)
