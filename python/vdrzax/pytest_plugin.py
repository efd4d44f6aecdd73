"""The fixture `vdrsim`: a test runs its agent on a simulated datapath, and sees what it sent.

    def test_agent(vdrsim):
        vdrsim.run(["./agent"])
        assert vdrsim.journal.commands == [("SetVdrInstance", {"name": "edge-1", "second": 10})]
"""
import json
import os
import pathlib
import pickle
import shutil
import subprocess
import sys
from typing import (TYPE_CHECKING, Any, Callable, Dict, List, Mapping, Optional, Sequence, TypeVar,
                    Union)

import pytest

from ._journal import Journal

if TYPE_CHECKING:
    Finished = subprocess.CompletedProcess[str]

T = TypeVar("T")
State = Union[Mapping[str, Any], str, "os.PathLike[str]"]


class Vdrsim:
    """Runs programs on a simulated datapath, each run on one of its own.

    journal is that of the last run, state what its datapath held at the end, as a run takes it.
    """

    def __init__(self, program: str, directory: pathlib.Path) -> None:
        self._program, self._directory = program, directory
        self.journal = Journal("")
        self.state: Dict[str, Any] = {}

    def run(self, command: Sequence[Union[str, "os.PathLike[str]"]], *, faults: Sequence[str] = (),
            strict_faults: bool = True, seed: Optional[int] = None, state: Optional[State] = None,
            input: Optional[str] = None, env: Optional[Mapping[str, str]] = None,
            cwd: Union[str, "os.PathLike[str]", None] = None,
            timeout: Optional[float] = None) -> "Finished":
        """Runs a program until it and all that it started have ended.

        faults: rules of `vdrsim run --fault`; one that never matched fails the run, unless
        strict_faults is off. state: what the datapath holds at the start, a document or the path of
        one. After `timeout` seconds the run is ended, and subprocess.TimeoutExpired is raised.
        Returns what the program returned, and what it wrote. Raises RuntimeError when the run did
        not come about, with what vdrsim said.
        """
        options = self._options(faults, strict_faults, seed, state)
        words = [self._program, "run", *options, "--", *(os.fspath(word) for word in command)]
        done = _finish(words, input, env, cwd, timeout)
        self._read(done)
        return done

    def python(self, function: Callable[..., T], *arguments: Any, **options: Any) -> T:
        """Calls a function of a test file in a Python of its own, in a run, and returns its result.

        A process that is not in a run has no device, so that this is how a test uses Client. The
        function stands at the top of its file; arguments and result can be pickled. `options` are
        those of run. What the function raises is raised here.
        """
        if "<" in function.__qualname__:
            raise ValueError(f"{function.__qualname__} does not stand at the top of its file")
        call, reply = self._directory / "call", self._directory / "reply"
        reply.unlink(missing_ok=True)
        module = sys.modules[function.__module__]
        call.write_bytes(pickle.dumps((sys.path, module.__name__, module.__file__,
                                       function.__qualname__, pickle.dumps(arguments))))
        inside = str(pathlib.Path(__file__).with_name("_inside.py"))
        done = self.run([sys.executable, "-B", inside, call, reply], **options)
        if not reply.exists():
            raise RuntimeError(f"the function did not return: {done.stderr}")
        failed, value = pickle.loads(reply.read_bytes())
        if failed:
            raise value
        result: T = value
        return result

    def _options(self, faults: Sequence[str], strict_faults: bool, seed: Optional[int],
                 state: Optional[State]) -> List[str]:
        for name in ("journal", "saved"):
            (self._directory / name).unlink(missing_ok=True)
        options = ["--journal", str(self._directory / "journal"),
                   "--save", str(self._directory / "saved")]
        for rule in faults:
            options += ["--fault", rule]
        if faults and strict_faults:
            options.append("--strict-faults")
        if seed is not None:
            options += ["--seed", str(seed)]
        if state is not None:
            options += ["--state", self._state_file(state)]
        return options

    def _state_file(self, state: State) -> str:
        if not isinstance(state, Mapping):
            return os.fspath(state)
        path = self._directory / "state"
        path.write_text(json.dumps(state))
        return str(path)

    def _read(self, done: "Finished") -> None:
        journal, saved = self._directory / "journal", self._directory / "saved"
        self.journal = Journal(journal.read_text() if journal.exists() else "")
        if not self.journal.is_whole:
            raise RuntimeError(f"there was no run: {done.stderr.strip()}")
        self.state = json.loads(saved.read_text()) if saved.exists() else {}


def _finish(words: Sequence[str], input: Optional[str], env: Optional[Mapping[str, str]],
            cwd: Union[str, "os.PathLike[str]", None], timeout: Optional[float]) -> "Finished":
    with subprocess.Popen(words, stdin=subprocess.PIPE if input is not None else None, env=env,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, cwd=cwd, encoding="utf-8",
                          errors="backslashreplace") as process:
        try:
            output, complaints = process.communicate(input, timeout)
        except BaseException:
            # vdrsim then ends all that the program has started.
            process.terminate()
            process.communicate()
            raise
    return subprocess.CompletedProcess(words, process.returncode, output, complaints)


def _program(config: pytest.Config) -> Optional[str]:
    named = (config.getoption("--vdrsim") or os.environ.get("VDRSIM") or config.getini("vdrsim")
             or "vdrsim")
    return shutil.which(named)


def pytest_addoption(parser: pytest.Parser) -> None:
    parser.getgroup("vdrzax").addoption("--vdrsim", metavar="PATH",
                                        help="the vdrsim to run agents by, instead of the one on "
                                             "the path")
    parser.addini("vdrsim", "the vdrsim to run agents by, instead of the one on the path")


@pytest.fixture
def vdrsim(pytestconfig: pytest.Config, tmp_path_factory: pytest.TempPathFactory) -> Vdrsim:
    """Runs programs on a simulated datapath, and tells what they sent."""
    program = _program(pytestconfig)
    if program is None:
        pytest.fail("vdrsim is not found: it is named by --vdrsim, VDRSIM in the environment, "
                    "`vdrsim` in the ini-file, or found on the path", pytrace=False)
    return Vdrsim(program, tmp_path_factory.mktemp("vdrsim"))
