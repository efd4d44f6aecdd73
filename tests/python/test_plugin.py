"""The fixture vdrsim, as a test of an agent has it."""
import json
import os
import pathlib
import re
import subprocess
import time

import pytest

import vdrzax
from vdrzax._journal import Journal

VDRCTL = os.environ["VDRCTL"]
SET = ("SetVdrInstance", {"name": "edge-1", "second": 10})


def set_edge(vdrsim, **options):
    return vdrsim.run([VDRCTL, "instance", "set", "edge-1", "--second", "10"], **options)


def test_a_run_returns_what_the_program_did(vdrsim):
    done = vdrsim.run(["sh", "-c", "cat; echo complaint >&2; exit 7"], input="words")
    assert (done.returncode, done.stdout, done.stderr) == (7, "words", "complaint\n")
    assert vdrsim.journal.commands == []


def test_the_journal_names_what_was_sent(vdrsim):
    assert set_edge(vdrsim).returncode == 0
    assert vdrsim.journal.commands == [SET]
    (entry,) = vdrsim.journal.entries
    assert (entry.seq, entry.node, entry.code, entry.name) == (1, "normal", 2, "SetVdrInstance")
    assert (entry.errno, entry.capacity, entry.produced, len(entry.input)) == (0, 0, 0, 968)
    assert entry.request["flag"] == 0
    assert entry.input[256] == 10
    assert entry.pid > 0


def test_a_command_that_failed_has_its_errno(vdrsim):
    done = vdrsim.run([VDRCTL, "instance", "delete", "edge-9"])
    assert done.returncode == 1
    assert "No such file or directory (ENOENT)" in done.stderr
    assert vdrsim.journal.commands == [("DelVdrInstance", {"name": "edge-9"}, "ENOENT")]


def test_each_run_has_a_datapath_and_a_journal_of_its_own(vdrsim):
    set_edge(vdrsim)
    assert vdrsim.run([VDRCTL, "instance", "show", "edge-1"]).returncode == 1
    assert vdrsim.journal.commands == [("GetInstance", {"name": "edge-1"}, "ENOENT")]


def test_areas_of_bytes_end_with_their_last_byte(vdrsim):
    vdrsim.run(["sh", "-c", '"$0" transport-node set one00 --bytes 01ab00 && '
                            '"$0" transport-node set 00', VDRCTL])
    assert vdrsim.journal.commands == [
        ("BridgeLocalTransportNodeSet", {"name1": "one00", "bytes": "01ab"}),
        ("BridgeLocalTransportNodeSet", {"name1": "00"})]


def test_commands_of_one_name_can_be_picked(vdrsim):
    vdrsim.run(["sh", "-c", '"$0" log-level get && "$0" instance set edge-1 --second 10 && '
                            '"$0" log-level set 3', VDRCTL])
    assert vdrsim.journal.of("SetVdrInstance") == [SET]
    assert [name for name, *_ in vdrsim.journal.of("GetLogLevel", "SetLogLevel")] == [
        "GetLogLevel", "SetLogLevel"]


def test_a_fault_hits_the_command_that_it_names(vdrsim):
    done = set_edge(vdrsim, faults=["SetVdrInstance:error=ENOMEM:when=1"])
    assert done.returncode == 1
    assert vdrsim.journal.commands == [(*SET, "ENOMEM")]


def test_a_fault_that_never_matched_fails_the_run(vdrsim):
    rule = ["DelVdrInstance:error=ENOMEM"]
    done = set_edge(vdrsim, faults=rule)
    assert done.returncode != 0
    assert "DelVdrInstance:error=ENOMEM" in done.stderr
    assert set_edge(vdrsim, faults=rule, strict_faults=False).returncode == 0


def test_a_seed_is_taken(vdrsim):
    outcomes = [set_edge(vdrsim, faults=["any:error=EIO:prob=50%"], strict_faults=False,
                         seed=7).returncode for _ in range(3)]
    assert len(set(outcomes)) == 1


def test_a_run_begins_with_the_state_of_another(vdrsim, tmp_path):
    set_edge(vdrsim)
    state = vdrsim.state
    assert state["instances"]["edge-1"]["second"] == 10
    done = vdrsim.run([VDRCTL, "instance", "list", "--no-header"], state=state)
    assert done.stdout.startswith("edge-1")
    path = tmp_path / "host.json"
    path.write_text(json.dumps({"format_version": 1, "instances": {"edge-5": {"second": 5}}}))
    for form in (path, str(path), json.loads(path.read_text())):
        assert vdrsim.run([VDRCTL, "instance", "delete", "edge-5"], state=form).returncode == 0
        assert vdrsim.state.get("instances", {}) == {}


def test_what_vdrsim_refuses_is_told(vdrsim):
    for options in ({"state": {"nonsense": 1}}, {"state": "/nowhere/state"},
                    {"faults": ["NoSuchCommand:error=EIO"]}):
        with pytest.raises(RuntimeError, match="there was no run: vdrsim: "):
            set_edge(vdrsim, **options)


def test_a_run_that_takes_too_long_is_ended(vdrsim, tmp_path):
    command = ["sh", "-c", f"echo $$ >{tmp_path}/pid; exec sleep 1000"]
    started = tmp_path / "pid"
    with pytest.raises(subprocess.TimeoutExpired):
        vdrsim.run(command, timeout=2)
    if started.exists():
        process = int(started.read_text())
        while os.path.exists(f"/proc/{process}"):
            time.sleep(0.01)


def test_environment_and_directory_are_those_that_are_given(vdrsim, tmp_path):
    done = vdrsim.run(["/bin/sh", "-c", "echo $WORD; pwd"], env={"WORD": "blue"}, cwd=tmp_path)
    assert done.stdout == f"blue\n{tmp_path}\n"


def names(prefix):
    return [instance.name for instance in vdrzax.Client().instances
            if instance.name.startswith(prefix)]


def delete(name):
    vdrzax.Client().instances.delete(name)


def leave():
    os._exit(3)


def test_a_function_is_called_in_a_run(vdrsim):
    set_edge(vdrsim)
    assert vdrsim.python(names, "edge", state=vdrsim.state) == ["edge-1"]
    assert vdrsim.python(names, "core", state=vdrsim.state) == []
    assert vdrsim.journal.commands == [("GetInstances", {})]


def test_what_a_function_raises_is_raised(vdrsim):
    with pytest.raises(vdrzax.NotFound) as caught:
        vdrsim.python(delete, "edge-9")
    assert caught.value.function == "VDRZAX_DelVdrInstance"
    with pytest.raises(RuntimeError, match="did not return"):
        vdrsim.python(leave)
    with pytest.raises(ValueError, match="does not stand at the top of its file"):
        vdrsim.python(lambda: None)


def test_outside_of_a_run_there_is_no_device():
    with pytest.raises(vdrzax.NoDevice):
        names("edge")


def test_lines_of_other_kinds_are_no_commands():
    journal = Journal(
        '{"format":"vdrsim-journal","version":1,"more":true}\n'
        '{"mark":"here","seq":1,"time":1.5}\n'
        '{"seq":2,"time":1.5,"pid":1,"tid":2,"node":"upgrade","code":250,"name":null,'
        '"request":null,"input":"0a","capacity":4,"errno":"ENOTTY","length":4,"produced":0,"new":1}\n'
        '{"seq":3,"time":1.5,"pid":1,"tid":2,"node":"normal","code":19,"name":"SetLif",'
        '"request":{"lifName":"up","a3":0,"extra":"00:00:00:00:00:00"},"input":"","capacity":0,'
        '"errno":0,"length":0,"produced":0}\n'
        '{"end":3,"time":2.5}\n')
    assert journal.marks == ["here"]
    assert journal.commands == [("250", {}, "ENOTTY"), ("SetLif", {"lifName": "up"})]
    assert journal.entries[0].input == b"\n"


AGENT_TEST = """
def test_agent(vdrsim):
    vdrsim.run([{vdrctl!r}, "instance", "set", "edge-1", "--second", "10"])
    assert vdrsim.journal.commands == [("SetVdrInstance", {{"name": "edge-1", "second": 11}})]
"""


# An agent that looks first, and tries twice.
AGENT = """#!/bin/sh
"$VDRCTL" instance show edge-1 || "$VDRCTL" instance set edge-1 --second 10 ||
  exec "$VDRCTL" instance set edge-1 --second 10
"""


def test_the_tests_of_the_page_pass(pytester):
    page = (pathlib.Path(__file__).resolve().parents[2] / "docs/python.md").read_text()
    programs = [program for program in re.findall(r"^```python\n(.*?)^```$", page, re.M | re.S)
                if "def test_" in program]
    pytester.makepyfile("import vdrzax\n\n" + "\n\n".join(programs))
    agent = pytester.path / "agent"
    agent.write_text(AGENT)
    agent.chmod(0o755)
    result = pytester.runpytest_subprocess("-p", "vdrzax.pytest_plugin", "-p", "no:cacheprovider")
    result.assert_outcomes(passed=sum(program.count("def test_") for program in programs))


def test_a_test_that_fails_shows_both_sides(pytester):
    pytester.makepyfile(AGENT_TEST.format(vdrctl=VDRCTL))
    result = pytester.runpytest_subprocess("-p", "vdrzax.pytest_plugin", "-p", "no:cacheprovider")
    result.assert_outcomes(failed=1)
    result.stdout.fnmatch_lines(["*('SetVdrInstance', {'name': 'edge-1', 'second': 10})*"
                                 "('SetVdrInstance', {'name': 'edge-1', 'second': 11})*"])


def test_the_program_is_found_where_it_is_named(pytester, monkeypatch):
    found = os.environ["VDRSIM"]
    pytester.makepyfile(AGENT_TEST.format(vdrctl=VDRCTL).replace("11", "10"))

    def outcome(*options):
        return pytester.runpytest_subprocess("-p", "vdrzax.pytest_plugin", "-p",
                                             "no:cacheprovider", *options)

    outcome().assert_outcomes(passed=1)
    outcome("--vdrsim", "/nowhere/vdrsim").assert_outcomes(errors=1)
    monkeypatch.delenv("VDRSIM")
    monkeypatch.setenv("PATH", "/usr/bin:/bin")
    result = outcome()
    result.assert_outcomes(errors=1)
    result.stdout.fnmatch_lines(["*vdrsim is not found: it is named by --vdrsim, VDRSIM in the "
                                 "environment*"])
    outcome("--vdrsim", found).assert_outcomes(passed=1)
    pytester.makeini(f"[pytest]\nvdrsim = {found}\n")
    outcome().assert_outcomes(passed=1)
    pytester.makeini("[pytest]\n")
    monkeypatch.setenv("PATH", f"{os.path.dirname(found)}:/usr/bin:/bin")
    outcome().assert_outcomes(passed=1)
