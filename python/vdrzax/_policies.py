"""Policies, policy tables, and what binds both to LIFs."""
import struct
from typing import Optional, Sequence, Tuple

from ._arguments import Ipv4, Ipv4Prefix, in_range, ipv4, ipv4_prefix
from ._lists import Records
from ._object import Listed, Object, answer_area
from ._records import LifPolicyTableRef, PolicyRecord, PolicyTableRecord, RouteRecord

_MOST_TABLES = 20
_TYPE_WITH_LIF = 4


class Policies(Object):
    """Policies, known by a key. `answer`, 88 bytes, takes what the kernel answers."""

    def __call__(self, key: int) -> Records[PolicyRecord]:
        """List the policies of a key."""
        return self._library.listed(PolicyRecord, "VDRZAX_GetPolicy", key)

    def count(self, key: int) -> int:
        return self._library.number("VDRZAX_GetPolicyCount", key)

    def set(self, key: int, *, first: int = 0, second: int = 0, third: int = 0,
            answer: Optional[bytearray] = None) -> None:
        """Add a policy, or replace all of it."""
        self._library.send("VDRZAX_SetPolicy", key, first, second, third, answer_area(answer))

    def delete(self, key: int, *, first: int = 0, second: int = 0,
               answer: Optional[bytearray] = None) -> None:
        self._library.send("VDRZAX_DelPolicy", key, first, second, answer_area(answer))


class PolicyTables(Listed[PolicyTableRecord]):
    """Policy tables, known by a key. `answer`, 88 bytes, takes what the kernel answers."""

    def __call__(self) -> Records[PolicyTableRecord]:
        return self._library.listed(PolicyTableRecord, "VDRZAX_GetPolicyTable")

    def set(self, key: int, name: str, *, answer: Optional[bytearray] = None) -> None:
        """Add a policy table, or replace it."""
        self._library.send("VDRZAX_SetPolicyTable", key, name, answer_area(answer))

    def delete(self, key: int, *, answer: Optional[bytearray] = None) -> None:
        self._library.send("VDRZAX_DelPolicyTable", key, answer_area(answer))


class LifPolicies(Object):
    """Policies of the LIFs of a router instance, which the datapath reports as routes.

    Type 4 is the one that names a LIF, and requires it. A list takes the name with every type.
    """

    def __call__(self, instance: str, type: int, *,
                 lif: Optional[str] = None) -> Records[RouteRecord]:
        return self._library.listed(RouteRecord, "VDRZAX_GetLifPolicies", instance, type, lif)

    def set(self, instance: str, type: int, prefix: Ipv4Prefix, *, lif: Optional[str] = None,
            gateway: Ipv4 = 0, interface: Optional[str] = None, flags: int = 0,
            answer: Optional[bytearray] = None) -> None:
        """Add a policy, or replace all of it."""
        self._library.send("VDRZAX_SetLifPolicy", type, _lif(type, lif), *ipv4_prefix(prefix),
                           ipv4(gateway, "gateway"), interface, instance, flags,
                           answer_area(answer))

    def delete(self, instance: str, type: int, prefix: Ipv4Prefix, *, lif: Optional[str] = None,
               gateway: Ipv4 = 0, interface: Optional[str] = None, flags: int = 0,
               answer: Optional[bytearray] = None) -> None:
        self._library.send("VDRZAX_DelLifPolicy", type, _lif(type, lif), *ipv4_prefix(prefix),
                           ipv4(gateway, "gateway"), interface, instance, flags,
                           answer_area(answer))


class LifPolicyTables(Object):
    """References of LIFs to policy tables."""

    def show(self, instance: str, lif: str) -> LifPolicyTableRef:
        return self._library.record(LifPolicyTableRef, "VDRZAX_GetLifPolicyTableRef", instance, lif)

    def set(self, instance: str, lif: str, tables: Sequence[Tuple[int, int, int]], *,
            answer: Optional[bytearray] = None) -> None:
        """Refer to at most 20 tables, each by three numbers of 64 bits."""
        if len(tables) > _MOST_TABLES:
            raise ValueError(f"tables takes {_MOST_TABLES}, not {len(tables)}")
        entries = b"".join(map(_packed, tables))
        self._library.send("VDRZAX_SetLifPolicyTableRef", instance, lif, len(tables), entries,
                           answer_area(answer))

    def delete(self, instance: str, lif: str, *, answer: Optional[bytearray] = None) -> None:
        self._library.send("VDRZAX_DelLifPolicyTableRef", instance, lif, answer_area(answer))


def _lif(type: int, lif: Optional[str]) -> Optional[str]:
    """The library would leave the name out with any other type."""
    if lif is not None and in_range("type", type, 0x7FFFFFFF, -0x80000000) != _TYPE_WITH_LIF:
        raise ValueError(f"lif goes with type {_TYPE_WITH_LIF} alone, not with {type}")
    return lif


def _packed(table: Tuple[int, int, int]) -> bytes:
    if len(table) != 3:
        raise ValueError(f"a table is three numbers, not {len(table)}")
    largest = (1 << 64) - 1
    return struct.pack("<3Q", *(in_range("a table's number", each, largest) for each in table))
