"""The library, loaded: calls with checked arguments, and memory that is given back."""
import ctypes
import errno
import os
import weakref
from typing import Any, Callable, Optional, Type, TypeVar

from . import _records
from ._arguments import Pointer
from ._errors import failure
from ._fields import Record
from ._functions import FUNCTIONS, SONAME
from ._lists import Records

R = TypeVar("R", bound=Record)


class Library:
    """libvdrzax as loaded from `path`, else from VDRZAX_LIBRARY, else by the loader."""

    def __init__(self, path: Optional[str] = None) -> None:
        self.path = path or os.environ.get("VDRZAX_LIBRARY") or SONAME
        try:
            self._loaded = ctypes.CDLL(self.path, use_errno=True)
        except OSError as error:
            raise ImportError(f"the library cannot be loaded: {error}; VDRZAX_LIBRARY may name "
                              f"the file") from error
        free = ctypes.CDLL(None).free
        free.argtypes, free.restype = [ctypes.c_void_p], None
        self._functions = {"free": free}

    def function(self, name: str) -> Callable[..., Any]:
        """The function with its types, `free` among them."""
        found = self._functions.get(name)
        if found is None:
            row = FUNCTIONS[name]
            found = getattr(self._loaded, name)
            found.argtypes = [parameter.c_type for parameter in row.parameters]
            found.restype = None if row.is_release else ctypes.c_int
            self._functions[name] = found
        return found

    def send(self, name: str, *arguments: Any) -> None:
        """Calls a function with all arguments of its prototype."""
        try:
            converted = [parameter.convert(argument) for parameter, argument
                         in zip(FUNCTIONS[name].parameters, arguments)]
        except (TypeError, ValueError) as error:
            raise type(error)(f"{name}: {error}") from None
        ctypes.set_errno(0)
        if self.function(name)(*converted) != 0:
            raise failure(name, ctypes.get_errno())

    def fill(self, name: str, into: Any, *arguments: Any) -> None:
        """Calls a function with one pointer, wherever it stands among the arguments."""
        place = [isinstance(each, Pointer) for each in FUNCTIONS[name].parameters].index(True)
        self.send(name, *arguments[:place], into, *arguments[place:])

    def number(self, name: str, *arguments: Any) -> int:
        """The u32 that a function reads."""
        value = ctypes.c_uint32()
        self.fill(name, ctypes.byref(value), *arguments)
        return value.value

    def raw(self, name: str, *arguments: Any) -> bytes:
        """The reply of a function as the kernel wrote it, zeros behind it."""
        area = ctypes.create_string_buffer(FUNCTIONS[name].room)
        self.fill(name, area, *arguments)
        return area.raw

    def pointer(self, name: str, *arguments: Any) -> int:
        """The address of what a getter returns, which is the caller's to release."""
        address = ctypes.c_void_p()
        self.fill(name, ctypes.byref(address), *arguments)
        assert address.value is not None
        return address.value

    def record(self, kind: Type[R], name: str, *arguments: Any) -> R:
        address = self.pointer(name, *arguments)
        return kind(self.owned(name, address, address, kind.SIZE))

    def listed(self, kind: Type[R], name: str, *arguments: Any) -> Records[R]:
        row = FUNCTIONS[name]
        address = self.pointer(name, *arguments)
        # VDRZAX_GetLifs alone succeeds without a list, which errno tells.
        if name == "VDRZAX_GetLifs" and ctypes.get_errno() in (errno.EBADMSG, errno.ENOMEM):
            raise failure(name, ctypes.get_errno())
        header = _records.RecordList.from_address(address)
        memory = self.owned(name, address, header.entries, row.most * kind.SIZE)
        return Records(kind, memory[:header.count * kind.SIZE])

    def table(self, kind: Type[R], header_type: Any, name: str, *arguments: Any) -> Records[R]:
        """A list whose header has a type of its own, and as many entries as it counts."""
        address = self.pointer(name, *arguments)
        header = header_type.from_address(address)
        # The library looks at the entries by their count, so there is something to own without any.
        entries, size = (header.entries, header.count * kind.SIZE) if header.count else (address, 1)
        memory = self.owned(name, address, entries, size)
        return Records(kind, memory[:header.count * kind.SIZE])

    def owned(self, getter: str, address: int, start: int, size: int) -> memoryview:
        """The memory at `start`, which gives `address` back when nobody looks at it any more.

        In a process made by fork both sides give back their own copy. At the end of the process
        nothing is given back, because others that run at exit may still look.
        """
        area = (ctypes.c_ubyte * size).from_address(start)
        release = self.function(FUNCTIONS[getter].release or "free")
        weakref.finalize(area, release, address).atexit = False
        return memoryview(area).cast("B").toreadonly()
