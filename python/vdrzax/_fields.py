"""Records as views: where a field lies, how it is read, and what numpy calls it."""
import functools
import struct
from typing import (TYPE_CHECKING, Any, ClassVar, Dict, Generic, Optional, Tuple, Type, TypeVar,
                    overload)

if TYPE_CHECKING:
    import numpy as np

T = TypeVar("T")
R = TypeVar("R", bound="Record")
_LETTERS = {1: "B", 2: "H", 4: "I", 8: "Q"}


class Field(Generic[T]):
    """A field of a record. Each look at it reads the memory: there is no reference into it."""

    name = ""

    def __init__(self, offset: int) -> None:
        self.offset = offset

    def __set_name__(self, owner: Type[Any], name: str) -> None:
        self.name = name

    @overload
    def __get__(self: "F", record: None, owner: Type[Any]) -> "F": ...
    @overload
    def __get__(self, record: "Record", owner: Type[Any]) -> T: ...

    def __get__(self, record: Optional["Record"], owner: Type[Any]) -> Any:
        return self if record is None else self.read(record)

    def read(self, record: "Record") -> T:
        raise NotImplementedError

    def plain(self, record: "Record") -> Any:
        """The value made of nothing but what Python itself has."""
        return self.read(record)

    def dtype(self) -> Any:
        """What numpy calls the field."""
        raise NotImplementedError


F = TypeVar("F", bound=Field[Any])


class Number(Field[int]):
    def __init__(self, offset: int, width: int) -> None:
        super().__init__(offset)
        self._width = width
        self._struct = struct.Struct("<" + _LETTERS[width])

    def read(self, record: "Record") -> int:
        number: int = self._struct.unpack_from(record._memory, self.offset)[0]
        return number

    def dtype(self) -> Any:
        return f"<u{self._width}"


class OddNumber(Field[int]):
    """A number of a width that numpy has no name for: there it is its bytes, the lowest first."""

    def __init__(self, offset: int, width: int) -> None:
        super().__init__(offset)
        self._end, self._width = offset + width, width

    def read(self, record: "Record") -> int:
        return int.from_bytes(record._memory[self.offset:self._end], "little")

    def dtype(self) -> Any:
        return "u1", (self._width,)


class Numbers(Field[Tuple[int, ...]]):
    def __init__(self, offset: int, width: int, count: int) -> None:
        super().__init__(offset)
        self._width, self._count = width, count

    def read(self, record: "Record") -> Tuple[int, ...]:
        return self._first(record, self._count)

    def _first(self, record: "Record", count: int) -> Tuple[int, ...]:
        form = f"<{count}{_LETTERS[self._width]}"
        return struct.unpack_from(form, record._memory, self.offset)

    def dtype(self) -> Any:
        return f"<u{self._width}", (self._count,)


class CountedNumbers(Numbers):
    """Of the numbers those that the field `counter` counts."""

    def __init__(self, offset: int, width: int, count: int, counter: str) -> None:
        super().__init__(offset, width, count)
        self._counter = counter

    def read(self, record: "Record") -> Tuple[int, ...]:
        return self._first(record, min(getattr(record, self._counter), self._count))


class Text(Field[str]):
    """A text with a terminator. Bytes that are no UTF-8 come out so that they can be sent back."""

    def __init__(self, offset: int, width: int) -> None:
        super().__init__(offset)
        self._end, self._width = offset + width, width

    def read(self, record: "Record") -> str:
        area = bytes(record._memory[self.offset:self._end])
        return area.split(b"\0", 1)[0].decode("utf-8", "surrogateescape")

    def dtype(self) -> Any:
        return f"S{self._width}"


class Bytes(Field[bytes]):
    def __init__(self, offset: int, width: int) -> None:
        super().__init__(offset)
        self._end, self._width = offset + width, width

    def read(self, record: "Record") -> bytes:
        return bytes(record._memory[self.offset:self._end])

    def dtype(self) -> Any:
        return "u1", (self._width,)


class MacAddress(Field[str]):
    """A hardware address as text."""

    def read(self, record: "Record") -> str:
        return bytes(record._memory[self.offset:self.offset + 6]).hex(":")

    def dtype(self) -> Any:
        return "u1", (6,)


class Entries(Field[Tuple[R, ...]]):
    """Of the entries those that the field `counter` counts, as views."""

    def __init__(self, offset: int, entry: Type[R], count: int, counter: str) -> None:
        super().__init__(offset)
        self._entry, self._count, self._counter = entry, count, counter

    def read(self, record: "Record") -> Tuple[R, ...]:
        size = self._entry.SIZE
        count = min(getattr(record, self._counter), self._count)
        starts = (self.offset + index * size for index in range(count))
        return tuple(self._entry(record._memory[start:start + size]) for start in starts)

    def plain(self, record: "Record") -> Any:
        return [entry.asdict() for entry in self.read(record)]

    def dtype(self) -> Any:
        return self._entry.dtype(), (self._count,)


class Record:
    """A record where the library has put it.

    The view keeps the memory, and reads a field when it is asked for; it can't be written. Two
    records are equal when all their fields are.
    """

    __slots__ = ("_memory",)
    SIZE: ClassVar[int]
    FIELDS: ClassVar[Dict[str, Field[Any]]]

    def __init_subclass__(cls) -> None:
        cls.FIELDS = {name: each for name, each in vars(cls).items() if isinstance(each, Field)}

    def __init__(self, memory: memoryview) -> None:
        self._memory = memory

    def asdict(self) -> Dict[str, Any]:
        """The fields by name, copied: numbers, texts, bytes, tuples of numbers, lists of entries."""
        return {name: field.plain(self) for name, field in self.FIELDS.items()}

    @classmethod
    def dtype(cls) -> "np.dtype[Any]":
        """How numpy sees the record. Needs numpy."""
        return _dtype(cls)

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, type(self)):
            return NotImplemented
        return self.asdict() == other.asdict()

    __hash__ = None  # type: ignore[assignment]

    def __repr__(self) -> str:
        members = ", ".join(f"{name}={value!r}" for name, value in self.asdict().items())
        return f"{type(self).__name__}({members})"


@functools.lru_cache(maxsize=None)
def _dtype(kind: Type[Record]) -> "np.dtype[Any]":
    import numpy as np

    fields = kind.FIELDS.values()
    return np.dtype({"names": [field.name for field in fields],
                     "formats": [field.dtype() for field in fields],
                     "offsets": [field.offset for field in fields],
                     "itemsize": kind.SIZE})
