"""What the functions of the library take, and values as callers write them.

Nothing is cut or wrapped: what does not fit raises ValueError, what is of another type TypeError,
both before anything is sent.
"""
import ctypes
import ipaddress
import operator
import re
import socket
import sys
from typing import Any, Optional, SupportsIndex, Tuple, Type, Union

# A number stands for itself, as the datapath has it; texts and objects get network byte order.
Ipv4 = Union[str, ipaddress.IPv4Address, int]
# Two numbers are the halves of the address, the first one first, as the datapath has them.
Ipv6 = Union[str, ipaddress.IPv6Address, Tuple[int, int]]
# "10.0.0.0/24" or "10.0.0.0/255.255.255.0", or an address and a netmask.
Ipv4Prefix = Union[str, ipaddress.IPv4Interface, ipaddress.IPv4Network, Tuple[Ipv4, Ipv4]]
# "2001:db8::/32", or an address and the length of its prefix.
Ipv6Prefix = Union[str, ipaddress.IPv6Interface, ipaddress.IPv6Network, Tuple[Ipv6, int]]
# Six groups of one or two hexadecimal digits with colons or dashes between them, or six bytes.
MacAddress = Union[str, bytes]

_MAC = re.compile(r"[0-9a-fA-F]{1,2}(?:[:-][0-9a-fA-F]{1,2}){5}")


class Parameter:
    """A parameter of a function, by the name that it has in the header."""

    c_type: Any = ctypes.c_void_p

    def __init__(self, name: str, optional: bool = False) -> None:
        self.name = name
        self.optional = optional

    def convert(self, value: Any) -> Any:
        """What ctypes passes for `value`. None is passed where the function takes NULL."""
        if value is None:
            if self.optional:
                return None
            raise TypeError(f"{self.name} is required, not None")
        return self.convert_given(value)

    def convert_given(self, value: Any) -> Any:
        return value


class Text(Parameter):
    """A text of at most `limit` bytes; without a limit it is not sent."""

    c_type = ctypes.c_char_p

    def __init__(self, name: str, limit: int = sys.maxsize, optional: bool = False) -> None:
        super().__init__(name, optional)
        self.limit = limit

    def convert_given(self, value: Any) -> bytes:
        if not isinstance(value, str):
            raise TypeError(f"{self.name} is a text, not {_kind(value)}")
        text = value.encode("utf-8", "surrogateescape")
        if b"\0" in text:
            raise ValueError(f"{self.name} has a NUL in {value!r}")
        if len(text) > self.limit:
            raise ValueError(f"{self.name} takes {self.limit} bytes, and {value!r} has {len(text)}")
        return text


class Number(Parameter):
    """An integer of `width` bytes."""

    def __init__(self, name: str, width: int, signed: bool = False) -> None:
        super().__init__(name)
        bits = 8 * width
        self.least = -(1 << bits - 1) if signed else 0
        self.largest = self.least + (1 << bits) - 1
        self.c_type = getattr(ctypes, f"c_{'' if signed else 'u'}int{bits}")

    def convert_given(self, value: Any) -> int:
        return in_range(self.name, value, self.largest, self.least)


class Mac(Parameter):
    """A pointer to six bytes."""

    c_type = ctypes.c_char_p

    def convert_given(self, value: Any) -> bytes:
        return mac_bytes(value, self.name)


class Pointer(Parameter):
    """What the module itself passes: where a result goes, or bytes that it has made."""

    def __init__(self, name: str) -> None:
        super().__init__(name, optional=True)


class Function:
    """A function of the header.

    release: what frees what the getter returned; record and most: what a list holds, and how many
    at most; room: bytes that the kernel may write.
    """

    def __init__(self, parameters: Tuple[Parameter, ...], is_release: bool = False,
                 release: Optional[str] = None, record: Optional[str] = None, most: int = 0,
                 room: int = 0) -> None:
        self.parameters = parameters
        self.is_release = is_release
        self.release = release
        self.record = record
        self.most = most
        self.room = room


def in_range(name: str, value: SupportsIndex, largest: int, least: int = 0) -> int:
    try:
        number = operator.index(value)
    except TypeError:
        raise TypeError(f"{name} is a whole number, not {_kind(value)}") from None
    if not least <= number <= largest:
        raise ValueError(f"{name} takes {least} to {largest}, not {number}")
    return number


def ipv4(value: Ipv4, name: str = "address") -> int:
    """The address as the number that the datapath has: its bytes are in network order."""
    if isinstance(value, (str, ipaddress.IPv4Address)):
        packed = _packed(socket.AF_INET, value, name, "an IPv4 address")
        return int.from_bytes(packed, sys.byteorder)
    _refuse_other_type(value, SupportsIndex, name, "an IPv4 address")
    return in_range(name, value, 0xFFFFFFFF)


def ipv4_text(number: int) -> str:
    """The address that a number of the datapath stands for."""
    return socket.inet_ntop(socket.AF_INET, number.to_bytes(4, sys.byteorder))


def ipv6(value: Ipv6, name: str = "address") -> Tuple[int, int]:
    """The halves of the address as the numbers that the datapath has."""
    if isinstance(value, tuple) and len(value) == 2:
        first, second = value
        return in_range(name, first, (1 << 64) - 1), in_range(name, second, (1 << 64) - 1)
    _refuse_other_type(value, (str, ipaddress.IPv6Address), name, "an IPv6 address")
    packed = _packed(socket.AF_INET6, value, name, "an IPv6 address")
    return (int.from_bytes(packed[:8], sys.byteorder), int.from_bytes(packed[8:], sys.byteorder))


def ipv4_prefix(value: Ipv4Prefix, name: str = "prefix") -> Tuple[int, int]:
    """Address and netmask. Bits of the address behind the mask stay."""
    if isinstance(value, tuple) and len(value) == 2:
        return ipv4(value[0], name), ipv4(value[1], name)
    address, mask = _split(value, (ipaddress.IPv4Interface, ipaddress.IPv4Network), name,
                           "an IPv4 prefix, as 10.0.0.0/24")
    if "." in mask:
        return ipv4(address, name), _netmask(mask, name)
    length = _length(mask, 32, name)
    bits = (0xFFFFFFFF << (32 - length)) & 0xFFFFFFFF
    return ipv4(address, name), ipv4(ipaddress.IPv4Address(bits), name)


def ipv6_prefix(value: Ipv6Prefix, name: str = "prefix") -> Tuple[int, int, int]:
    """The halves of the address, and the length of the prefix."""
    if isinstance(value, tuple) and len(value) == 2:
        return (*ipv6(value[0], name), in_range(name, value[1], 128))
    address, length = _split(value, (ipaddress.IPv6Interface, ipaddress.IPv6Network), name,
                             "an IPv6 prefix, as 2001:db8::/32")
    return (*ipv6(address, name), _length(length, 128, name))


def mac_bytes(value: MacAddress, name: str = "mac") -> bytes:
    if isinstance(value, (bytes, bytearray)):
        if len(value) != 6:
            raise ValueError(f"{name} takes 6 bytes, not {len(value)}")
        return bytes(value)
    _refuse_other_type(value, str, name, "a hardware address")
    if not _MAC.fullmatch(value):
        raise ValueError(f"{name} is a hardware address, as 02:00:5e:10:ab:ff, not {value!r}")
    return bytes(int(group, 16) for group in re.split("[:-]", value))


def mac_text(value: MacAddress, name: str = "mac") -> str:
    """The address as commands that take the text itself want it."""
    return mac_bytes(value, name).hex(":")


def exact_bytes(value: bytes, limit: int, name: str) -> bytes:
    """At most `limit` bytes, with zeros behind."""
    if not isinstance(value, (bytes, bytearray)):
        raise TypeError(f"{name} is bytes, not {_kind(value)}")
    if len(value) > limit:
        raise ValueError(f"{name} takes {limit} bytes, not {len(value)}")
    return bytes(value).ljust(limit, b"\0")


def _packed(family: int, value: Any, name: str, what: str) -> bytes:
    try:
        return socket.inet_pton(family, str(value))
    except (OSError, ValueError):
        raise ValueError(f"{name} is {what}, not {str(value)!r}") from None


def _netmask(text: str, name: str) -> int:
    """Ones and then zeros: anything else is a slip of the hand."""
    mask = ipv4(text, name)
    bits = int.from_bytes(socket.inet_pton(socket.AF_INET, text), "big")
    if bits | (bits - 1) != 0xFFFFFFFF and bits != 0:
        raise ValueError(f"{name} has {text!r}, which is no netmask")
    return mask


def _length(text: str, longest: int, name: str) -> int:
    if not re.fullmatch("[0-9]{1,3}", text) or int(text) > longest:
        raise ValueError(f"{name} takes a length of 0 to {longest}, not {text!r}")
    return int(text)


def _split(value: Any, objects: Tuple[Type[Any], ...], name: str, what: str) -> Tuple[str, str]:
    _refuse_other_type(value, (str, *objects), name, what)
    address, slash, rest = str(value).partition("/")
    if not slash:
        raise ValueError(f"{name} is {what}, not {str(value)!r}")
    return address, rest


def _refuse_other_type(value: Any, types: Any, name: str, what: str) -> None:
    if not isinstance(value, types):
        raise TypeError(f"{name} is {what}, not {_kind(value)}")


def _kind(value: Any) -> str:
    return type(value).__name__
