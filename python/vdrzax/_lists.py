"""Lists of records in the memory of the library."""
from typing import (TYPE_CHECKING, Any, Generic, Iterator, List, Sequence, Type, TypeVar, Union,
                    overload)

from ._fields import Record

if TYPE_CHECKING:
    import numpy as np

R = TypeVar("R", bound=Record)


class Records(Sequence[R], Generic[R]):
    """The records of a list. It owns the library's memory; its records, and arrays made of it, are
    views that keep that memory, and it is released when the last of them is gone."""

    __slots__ = ("_kind", "_memory", "_count")

    def __init__(self, kind: Type[R], memory: memoryview) -> None:
        self._kind, self._memory = kind, memory
        self._count = len(memory) // kind.SIZE

    def __len__(self) -> int:
        return self._count

    @overload
    def __getitem__(self, index: int) -> R: ...
    @overload
    def __getitem__(self, index: slice) -> List[R]: ...

    def __getitem__(self, index: Union[int, slice]) -> Union[R, List[R]]:
        if isinstance(index, slice):
            return [self._at(each) for each in range(*index.indices(self._count))]
        place = index + self._count if index < 0 else index
        if not 0 <= place < self._count:
            raise IndexError(f"record {index} of {self._count}")
        return self._at(place)

    def __iter__(self) -> Iterator[R]:
        return map(self._at, range(self._count))

    def _at(self, place: int) -> R:
        start = place * self._kind.SIZE
        return self._kind(self._memory[start:start + self._kind.SIZE])

    def numpy(self) -> "np.ndarray[Any, np.dtype[Any]]":
        """The list as a structured array of the same memory, without a copy; it can't be written.

        Texts are fields of bytes, sub-entries arrays of all that there is room for. Needs numpy.
        """
        import numpy as np

        return np.frombuffer(self._memory, self._kind.dtype())

    def __repr__(self) -> str:
        return f"<{self._count} of {self._kind.__name__}>"
