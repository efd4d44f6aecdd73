"""What a run of vdrsim notes: a line a command."""
import dataclasses
import json
import re
from typing import Any, Dict, List, Set, Tuple, Union

from ._arguments import Mac, Text
from ._functions import FUNCTIONS

# The fields of a request that are not zero, and the name of an errno where the command failed.
Sent = Union[Tuple[str, Dict[str, Any]], Tuple[str, Dict[str, Any], str]]


@dataclasses.dataclass(frozen=True)
class Command:
    """A command as it was noted.

    time is in seconds; name that of the function without its prefix, or the code where there is
    none; errno 0, or a name; length what the envelope said of the reply, produced how many bytes it
    had.
    """

    seq: int
    time: float
    pid: int
    tid: int
    node: str
    code: int
    name: str
    request: Dict[str, Any]
    input: bytes
    capacity: int
    errno: Union[int, str]
    length: int
    produced: int

    @property
    def sent(self) -> Sent:
        """The command as it stands in an assertion."""
        texts = _texts(self.name)
        short = {name: value if name in texts else _without_end(value)
                 for name, value in self.request.items()}
        fields = {name: value for name, value in short.items() if not _is_empty(value)}
        failed = isinstance(self.errno, str)
        return (self.name, fields, str(self.errno)) if failed else (self.name, fields)


class Journal:
    """The commands of a run in the order of their effects, and the marks that were set among them.

    is_whole: whether the run came to its end.
    """

    def __init__(self, text: str) -> None:
        lines = [json.loads(line) for line in text.splitlines()[1:]]
        self.entries: List[Command] = [_command(line) for line in lines if "code" in line]
        self.is_whole = bool(lines) and "end" in lines[-1]
        self.marks: List[str] = [line["mark"] for line in lines if "mark" in line]

    @property
    def commands(self) -> List[Sent]:
        """Each command by its name, which is the function's without its prefix, and the fields of
        its request that are neither zero nor empty; a command that failed has its errno as well:

            [("SetVdrInstance", {"name": "edge-1", "second": 10}, "ENOMEM"),
             ("SetVdrInstance", {"name": "edge-1", "second": 10})]
        """
        return [entry.sent for entry in self.entries]

    def of(self, *names: str) -> List[Sent]:
        """Those of the commands that have one of the names."""
        return [entry.sent for entry in self.entries if entry.name in names]


def _command(line: Dict[str, Any]) -> Command:
    members: Dict[str, Any] = {field.name: line.get(field.name)
                               for field in dataclasses.fields(Command)}
    members.update(name=line["name"] or str(line["code"]), request=line["request"] or {},
                   input=bytes.fromhex(line["input"]))
    return Command(**members)


def _texts(name: str) -> Set[str]:
    """The fields of a command that are texts and addresses: all other strings are bytes."""
    function = FUNCTIONS.get(f"VDRZAX_{name}")
    parameters = function.parameters if function else ()
    return {each.name for each in parameters if isinstance(each, (Mac, Text))}


def _without_end(value: Any) -> Any:
    """An area of bytes, in hexadecimal, without the zeros at its end."""
    return re.sub("(00)+$", "", value) if isinstance(value, str) else value


def _is_empty(value: Any) -> bool:
    return not value or value == "00:00:00:00:00:00"
