"""Logical interfaces (LIFs) of router instances."""
from typing import Optional

from ._arguments import (Ipv4, Ipv4Prefix, Ipv6Prefix, MacAddress, in_range, ipv4, ipv4_prefix,
                         ipv6_prefix)
from ._library import Library
from ._lists import Records
from ._object import Object
from ._records import LifRecord, StatsRecord

_FLAG_BITS = 29


class LifStats(Object):
    """Counters of a LIF."""

    def show(self, instance: str, lif: str, *, cached: bool = False) -> StatsRecord:
        """The counters, gathered afresh or those that the kernel has cached."""
        getter = "VDRZAX_GetLifStatsCached" if cached else "VDRZAX_GetLifStats"
        return self._library.record(StatsRecord, getter, instance, lif)

    def reset(self, instance: str, lif: str) -> None:
        self._library.send("VDRZAX_ResetLifStats", instance, lif)


class LifAddress(Object):
    """IPv4 addresses of a LIF."""

    def set(self, instance: str, lif: str, address: Ipv4Prefix) -> None:
        self._library.send("VDRZAX_SetLifIp", instance, lif, *ipv4_prefix(address, "address"))

    def delete(self, instance: str, lif: str, address: Ipv4Prefix) -> None:
        self._library.send("VDRZAX_DelLifIp", instance, lif, *ipv4_prefix(address, "address"))


class LifAddress6(Object):
    """IPv6 addresses of a LIF."""

    def set(self, instance: str, lif: str, address: Ipv6Prefix) -> None:
        self._library.send("VDRZAX_SetLifIpv6", instance, lif, *ipv6_prefix(address, "address"))

    def delete(self, instance: str, lif: str, address: Ipv6Prefix) -> None:
        self._library.send("VDRZAX_DelLifIpv6", instance, lif, *ipv6_prefix(address, "address"))


class LifDesignatedAddress(Object):
    """IPv4 address of the designated instance of a LIF."""

    def set(self, instance: str, lif: str, address: Ipv4) -> None:
        self._library.send("VDRZAX_SetLifDIIp", instance, lif, ipv4(address))


class LifDhcpRelay(Object):
    """DHCP relay servers of a LIF."""

    def clear(self, instance: str, lif: str) -> None:
        """Clear the servers; the library takes none."""
        self._library.send("VDRZAX_ConfigureLifDhcpRelay", instance, lif, None)


class LifVxlan(Object):
    """VXLAN settings of a LIF."""

    def enable(self, instance: str, lif: str) -> None:
        """Put a LIF under the VXLAN control plane."""
        self._library.send("VDRZAX_SetLifVxlanCP", instance, lif)

    def disable(self, instance: str, lif: str) -> None:
        """Take a LIF from the VXLAN control plane."""
        self._library.send("VDRZAX_DelLifVxlanCP", instance, lif)

    def set_multicast(self, instance: str, lif: str, address: Ipv4) -> None:
        self._library.send("VDRZAX_SetLifVxlanMulticastIp", instance, lif, ipv4(address))


class LifMtu6(Object):
    """IPv6 MTU of a LIF."""

    def set(self, instance: str, lif: str, mtu: int) -> None:
        """Set the MTU, in bytes."""
        self._library.send("VDRZAX_RAMTUSetv6", instance, lif, mtu)


class LifMulticast(Object):
    """Multicast routing on a LIF."""

    def enable(self, instance: str, lif: str) -> None:
        self._library.send("VDRZAX_SetLifMcastRouting", instance, lif, 1)

    def disable(self, instance: str, lif: str) -> None:
        self._library.send("VDRZAX_SetLifMcastRouting", instance, lif, 0)


class LifExternalVlan(Object):
    """LIFs of an external VLAN."""

    def __call__(self, vlan: int) -> Records[LifRecord]:
        return self._library.listed(LifRecord, "VDRZAX_GetExtVlanLifs", vlan)


class Lifs(Object):
    """Logical interfaces of a router instance."""

    def __init__(self, library: Library) -> None:
        super().__init__(library)
        self.stats = LifStats(library)
        self.address = LifAddress(library)
        self.address6 = LifAddress6(library)
        self.designated_address = LifDesignatedAddress(library)
        self.dhcp_relay = LifDhcpRelay(library)
        self.vxlan = LifVxlan(library)
        self.mtu6 = LifMtu6(library)
        self.multicast = LifMulticast(library)
        self.external_vlan = LifExternalVlan(library)

    def __call__(self, instance: str) -> Records[LifRecord]:
        """List the LIFs of a router instance."""
        return self._library.listed(LifRecord, "VDRZAX_GetLifs", instance)

    def show(self, instance: str, lif: str) -> LifRecord:
        return self._library.record(LifRecord, "VDRZAX_GetLif", instance, lif)

    def set(self, instance: str, lif: str, *, aux_name: str = "", a3: int = 0, a4: int = 0,
            a5: int = 0, a6: int = 0, a7: int = 0, flags: int = 0, mode: int = 0,
            mac: Optional[MacAddress] = None) -> None:
        """Create a LIF, or replace all of it. flags has 29 bits, mode is 0 to 3."""
        self._library.send("VDRZAX_SetLif", lif, aux_name, a3, a4, a5, a6, a7,
                           _flags_word(flags, mode), instance, mac)

    def delete(self, instance: str, lif: str, *, aux_name: str = "") -> None:
        self._library.send("VDRZAX_DelLif", lif, aux_name, instance)

    def enable(self, instance: str, lif: str) -> None:
        self._library.send("VDRZAX_EnableLif", instance, lif)

    def disable(self, instance: str, lif: str) -> None:
        self._library.send("VDRZAX_DisableLif", instance, lif)


def _flags_word(flags: int, mode: int) -> int:
    """The high three bits choose the mode; the word is signed."""
    bit = 1 << (_FLAG_BITS + in_range("mode", mode, 3)) >> 1
    word = in_range("flags", flags, (1 << _FLAG_BITS) - 1) | (bit if mode else 0)
    return word - (1 << 32) if word >> 31 else word
