"""What all objects of a client have."""
import ctypes
from typing import Generic, Iterator, Optional, TypeVar

from ._fields import Record
from ._library import Library
from ._lists import Records

R = TypeVar("R", bound=Record)
ANSWER_SIZE = 88


class Object:
    """A kind of object of the datapath; its methods are the verbs that vdrctl has for it.

    A call of the object itself is the verb `list`. Where a command takes no more than its list, the
    object can be iterated as well.
    """

    def __init__(self, library: Library) -> None:
        self._library = library


class Listed(Object, Generic[R]):
    """An object whose list takes no arguments."""

    def __call__(self) -> Records[R]:
        raise NotImplementedError

    def __iter__(self) -> Iterator[R]:
        return iter(self())


class Setting(Object):
    """A number of the datapath as a whole."""

    def __init__(self, library: Library, getter: str, setter: str) -> None:
        super().__init__(library)
        self._getter, self._setter = getter, setter

    def get(self) -> int:
        return self._library.number(self._getter)

    def set(self, value: int) -> None:
        """The kernel decides what the u32 means, and may refuse it."""
        self._library.send(self._setter, value)


def answer_area(answer: Optional[bytearray]) -> Optional[object]:
    """88 bytes of the caller's that the kernel may fill, also when the command fails; None asks for
    no answer."""
    if answer is None:
        return None
    if not isinstance(answer, bytearray):
        raise TypeError(f"answer is a bytearray, not {type(answer).__name__}")
    if len(answer) != ANSWER_SIZE:
        raise ValueError(f"answer has {len(answer)} bytes; the kernel's answer takes {ANSWER_SIZE}")
    return (ctypes.c_char * ANSWER_SIZE).from_buffer(answer)
