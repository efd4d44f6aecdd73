"""How an agent is tested without a hypervisor: pytest -p vdrzax.pytest_plugin examples/test_agent.py"""
import json
import pathlib
import sys

AGENT = pathlib.Path(__file__).with_name("agent.py")
ROUTE = {"10.0.0.0/8": "192.0.2.1"}


def run(vdrsim, tmp_path, wanted, **options):
    file = tmp_path / "wanted.json"
    file.write_text(json.dumps(wanted))
    return vdrsim.run([sys.executable, AGENT, file], **options)


def changes(vdrsim):
    return vdrsim.journal.of("SetVdrInstance", "DelVdrInstance", "SetRoute", "DelRoute")


def test_what_is_missing_is_made_once(vdrsim, tmp_path):
    wanted = {"edge-1": {"second": 10, "routes": ROUTE}}
    done = run(vdrsim, tmp_path, wanted)
    assert done.stdout == "set edge-1\nset edge-1 10.0.0.0/8\n"
    done = run(vdrsim, tmp_path, wanted, state=vdrsim.state)
    assert done.stdout == ""
    assert changes(vdrsim) == []


def test_what_is_not_wanted_is_deleted(vdrsim, tmp_path):
    run(vdrsim, tmp_path, {"edge-1": {"routes": ROUTE}, "edge-2": {}})
    run(vdrsim, tmp_path, {"edge-1": {}}, state=vdrsim.state)
    assert [name for name, *_ in changes(vdrsim)] == ["DelVdrInstance", "DelRoute"]


def test_a_command_without_memory_is_tried_again(vdrsim, tmp_path):
    done = run(vdrsim, tmp_path, {"edge-1": {"second": 10}},
               faults=["SetVdrInstance:error=ENOMEM:when=1..2"])
    assert done.returncode == 0
    assert changes(vdrsim) == [("SetVdrInstance", {"name": "edge-1", "second": 10}, "ENOMEM"),
                               ("SetVdrInstance", {"name": "edge-1", "second": 10}, "ENOMEM"),
                               ("SetVdrInstance", {"name": "edge-1", "second": 10})]


def test_any_other_failure_is_reported(vdrsim, tmp_path):
    done = run(vdrsim, tmp_path, {"edge-1": {}}, faults=["SetVdrInstance:error=EIO"])
    assert done.returncode == 1
    assert done.stderr.startswith("agent: VDRZAX_SetVdrInstance: Input/output error (EIO)")
