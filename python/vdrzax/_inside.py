"""What a function of a test is called by within a run: _inside.py CALL REPLY."""
import importlib.util
import pathlib
import pickle
import sys
from types import ModuleType
from typing import Any


def main() -> None:
    call, reply = map(pathlib.Path, sys.argv[1:])
    sys.path[:], name, file, words, arguments = pickle.loads(call.read_bytes())
    function: Any = loaded(name, file)
    for word in words.split("."):
        function = getattr(function, word)
    try:
        made = pickle.dumps((False, function(*pickle.loads(arguments))))
    except Exception as error:
        made = pickle.dumps((True, error))
    reply.write_bytes(made)


def loaded(name: str, file: str) -> ModuleType:
    """The file under its name, wherever the other process has it from."""
    spec = importlib.util.spec_from_file_location(name, file)
    assert spec is not None and spec.loader is not None
    module = sys.modules[name] = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


if __name__ == "__main__":
    main()
