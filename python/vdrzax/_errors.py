"""What a command that failed raises."""
import errno
import os
import stat

from ._functions import NODE, UPGRADE_NODE


class Error(OSError):
    """A command failed.

    errno is what the library left: of the device, EBADMSG for a reply that is too short, ENOMEM,
    or 0 when nothing was said. function is the name of the function of the library.
    """

    function: str

    def __init__(self, function: str, code: int) -> None:
        reason = os.strerror(code) if code else "failed without giving a reason"
        super().__init__(code, reason)
        self.function = function

    def __str__(self) -> str:
        name = errno.errorcode.get(self.errno, str(self.errno)) if self.errno else ""
        return f"{self.function}: {self.strerror}" + (f" ({name})" if name else "")

    def __reduce__(self) -> "tuple[type[Error], tuple[str, int]]":
        return type(self), (self.function, self.errno)


class NotFound(Error, FileNotFoundError):
    """ENOENT from the device: the object, or what it would belong to, does not exist."""


class NoDevice(Error):
    """The device can't be opened, or what lies in its place is no device: nothing was done."""

    def __str__(self) -> str:
        return f"{super().__str__()}: {node()} cannot be opened, or is no device"


# With these the kernel refuses a file by its kind, its rights or its absence.
_REFUSALS = {errno.ENOENT, errno.ENXIO, errno.ENODEV, errno.EACCES, errno.EPERM, errno.EISDIR,
             errno.ENOTDIR, errno.ELOOP, errno.EROFS}
# With these a file of another kind answers a command.
_NO_COMMANDS = {errno.ENOTTY, errno.EINVAL, errno.EPERM, errno.EOPNOTSUPP}


def failure(function: str, code: int) -> Error:
    """The error that tells what happened. The kernel reports an unknown object as it reports an
    absent device, so the device is asked."""
    if code in _REFUSALS | _NO_COMMANDS and _has_no_device(code):
        return NoDevice(function, code)
    return NotFound(function, code) if code == errno.ENOENT else Error(function, code)


def node() -> str:
    """The path that commands go to, by the environment as it stands."""
    return UPGRADE_NODE if "USE_UPGRADE_DEV" in os.environ else NODE


def _has_no_device(code: int) -> bool:
    try:
        os.close(os.open(node(), os.O_RDWR | os.O_CLOEXEC))
    except OSError as refusal:
        return refusal.errno == code
    return code in _NO_COMMANDS and _is_of_another_kind()


def _is_of_another_kind() -> bool:
    """In a run of vdrsim the node is a device that can be opened and yet is not seen."""
    try:
        return not stat.S_ISCHR(os.stat(node()).st_mode)
    except OSError:
        return False
