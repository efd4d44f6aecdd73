"""The fake device, seen from Python. Numbers are literal: what the module thinks is not asked."""
import ctypes
import os
import struct

HANDLER = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_ulong, ctypes.c_void_p, ctypes.c_uint32,
                           ctypes.c_void_p, ctypes.c_uint32, ctypes.POINTER(ctypes.c_uint32))
LISTS = {0: 577, 21: 961, 36: 668, 59: 961, 61: 393, 63: 133, 64: 146, 65: 20, 89: 183, 92: 71,
         95: 235, 96: 39, 119: 28, 128: 88, 135: 12, 140: 668, 143: 72, 172: 961, 173: 148, 174: 668}


class Device:
    """Keeps what was sent. Replies with `reply` when a test has set it, which may be a reply a code,
    else with zeros."""

    def __init__(self):
        self._fake = ctypes.CDLL(os.environ["VDRZAX_FAKE_DEVICE"])
        self._handler = HANDLER(self._answer)
        self._fake.fake_device_answers_by(self._handler)
        self.reset()

    def reset(self):
        self.sent = []
        self.reply = None
        self.claimed = None
        self.error = 0
        self.refuse(0)

    def refuse(self, error):
        """The node can't be opened."""
        self._fake.fake_device_refuses_with(error)

    def _answer(self, code, input, length, reply, capacity, claimed):
        self.sent.append((code, ctypes.string_at(input, length) if input else b"", capacity))
        if self.error:
            return self.error
        wanted = self.reply.get(code) if isinstance(self.reply, dict) else self.reply
        if wanted is None:
            wanted = usual_reply(code, capacity)
        if reply:
            ctypes.memmove(reply, wanted, min(len(wanted), capacity))
        claimed[0] = len(wanted) if self.claimed is None else self.claimed
        return 0


def usual_reply(code, capacity):
    """A record is there, and a list is empty; a table that begins with its count has one entry."""
    if code == 129:
        return u32(1) + bytes(68)
    if code == 164:
        return u32(1) + bytes(26)
    if code == 171:
        return u32(1) + bytes(18)
    return b"" if code in LISTS or capacity > 100000 else bytes(capacity)


def u8(number):
    return struct.pack("<B", number)


def u16(number):
    return struct.pack("<H", number)


def u32(number):
    return struct.pack("<I", number)


def u64(number):
    return struct.pack("<Q", number)
