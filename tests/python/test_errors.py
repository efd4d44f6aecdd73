"""What a command that failed raises, and when nothing is sent."""
import errno
import pickle
import socket

import pytest

import vdrzax
from vdrzax import _errors


def test_an_object_that_is_not_there(vdr, device):
    device.error = errno.ENOENT
    with pytest.raises(vdrzax.NotFound) as caught:
        vdr.instances.delete("edge-9")
    error = caught.value
    assert (error.function, error.errno) == ("VDRZAX_DelVdrInstance", errno.ENOENT)
    assert isinstance(error, FileNotFoundError)
    assert isinstance(error, vdrzax.Error)
    assert str(error) == "VDRZAX_DelVdrInstance: No such file or directory (ENOENT)"


@pytest.mark.parametrize("code", [errno.ENOMEM, errno.EINTR, errno.ENOTTY, errno.EACCES,
                                  errno.EPERM, errno.EINVAL, errno.ENXIO])
def test_any_other_failure_of_a_device_that_is_there(vdr, device, code):
    device.error = code
    for call in (lambda: vdr.log_level.set(3), lambda: vdr.log_level.get(),
                 lambda: vdr.lifs("edge-1"), lambda: vdr.instances.show("edge-1"),
                 lambda: vdr.connections()):
        with pytest.raises(vdrzax.Error) as caught:
            call()
        assert type(caught.value) is vdrzax.Error
        assert caught.value.errno == code
        assert isinstance(caught.value, OSError)


@pytest.mark.parametrize("code", [errno.ENOENT, errno.ENXIO, errno.ENODEV, errno.EACCES,
                                  errno.EPERM, errno.EISDIR])
def test_a_device_that_cannot_be_opened(vdr, device, code):
    device.refuse(code)
    with pytest.raises(vdrzax.NoDevice) as caught:
        vdr.instances()
    assert not isinstance(caught.value, vdrzax.NotFound)
    assert (caught.value.function, caught.value.errno) == ("VDRZAX_GetInstances", code)
    assert "/qorv/devices/char/zaxdriver/ryn_vdr cannot be opened" in str(caught.value)
    assert device.sent == []


def test_what_keeps_any_file_from_being_opened_is_no_absence(vdr, device):
    device.refuse(errno.EMFILE)
    with pytest.raises(vdrzax.Error) as caught:
        vdr.instances()
    assert type(caught.value) is vdrzax.Error


def test_a_file_of_another_kind_is_no_device(monkeypatch, tmp_path):
    monkeypatch.setattr(_errors, "node", lambda: str(tmp_path / "node"))
    (tmp_path / "node").write_bytes(b"")
    assert type(_errors.failure("f", errno.ENOTTY)) is vdrzax.NoDevice
    assert type(_errors.failure("f", errno.EBADMSG)) is vdrzax.Error
    (tmp_path / "node").unlink()
    (tmp_path / "node").mkdir()
    assert type(_errors.failure("f", errno.EISDIR)) is vdrzax.NoDevice
    (tmp_path / "node").rmdir()
    with socket.socket(socket.AF_UNIX) as listener:
        listener.bind(str(tmp_path / "node"))
        assert type(_errors.failure("f", errno.ENXIO)) is vdrzax.NoDevice


def test_a_device_that_is_there_is_no_missing_device(monkeypatch):
    monkeypatch.setattr(_errors, "node", lambda: "/dev/null")
    assert type(_errors.failure("f", errno.ENOTTY)) is vdrzax.Error
    assert type(_errors.failure("f", errno.ENOENT)) is vdrzax.NotFound


def test_the_environment_chooses_the_node(monkeypatch):
    assert _errors.node() == "/qorv/devices/char/zaxdriver/ryn_vdr"
    monkeypatch.setenv("USE_UPGRADE_DEV", "")
    assert _errors.node() == "/qorv/devices/char/zaxdriver/ryn_vdr_ugrade"


def test_a_reply_that_is_too_short(vdr, device):
    for call in (lambda: vdr.instances.show("a"), lambda: vdr.instances(), lambda: vdr.lifs("a"),
                 lambda: vdr.routes("a"), lambda: vdr.policies.count(1)):
        device.reply = b"abc"
        with pytest.raises(vdrzax.Error) as caught:
            call()
        assert caught.value.errno == errno.EBADMSG


def test_a_failure_that_gives_no_reason(vdr, device):
    device.reply = b"\1\0\0"
    with pytest.raises(vdrzax.Error) as caught:
        vdr.public_ips()
    assert caught.value.errno == 0
    assert str(caught.value) == "VDRZAX_GetVMPublicIPTable: failed without giving a reason"


def test_the_errno_of_an_earlier_command_is_not_told(vdr, device):
    device.error = errno.ENOMEM
    with pytest.raises(vdrzax.Error):
        vdr.lifs("edge-1")
    device.error = 0
    assert len(vdr.lifs("edge-1")) == 0


def test_a_policy_of_type_4_needs_its_lif(vdr, device):
    with pytest.raises(vdrzax.Error) as caught:
        vdr.lif_policies.set("edge-1", 4, "10.0.0.0/8")
    assert (caught.value.errno, device.sent) == (errno.EINVAL, [])


def test_errors_can_be_sent_between_processes():
    for kind in (vdrzax.Error, vdrzax.NotFound, vdrzax.NoDevice):
        copy = pickle.loads(pickle.dumps(kind("VDRZAX_DelLif", errno.ENOENT)))
        assert type(copy) is kind
        assert (copy.function, copy.errno) == ("VDRZAX_DelLif", errno.ENOENT)


def test_a_library_that_cannot_be_loaded_is_named(monkeypatch):
    with pytest.raises(ImportError, match="/nowhere/libvdrzax.so.1.*VDRZAX_LIBRARY"):
        vdrzax.Client("/nowhere/libvdrzax.so.1")
    monkeypatch.setenv("VDRZAX_LIBRARY", "/elsewhere/lib.so")
    with pytest.raises(ImportError, match="/elsewhere/lib.so"):
        vdrzax.Client()
