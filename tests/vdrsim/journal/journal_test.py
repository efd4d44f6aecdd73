"""Journals of real runs.

usage: journal_test.py VDRSIM VDRCTL SOURCE_DIRECTORY
"""
import ctypes
import json
import os
import pathlib
import re
import signal
import struct
import subprocess
import sys
import tempfile
import threading
import time
import unittest

import jsonschema

VDRSIM, VDRCTL, SOURCE = sys.argv[1:4]
PAGE = pathlib.Path(SOURCE, "docs", "vdrsim-journal.md").read_text()
SCHEMA = json.loads(re.search(r"```json\n(.*?)```", PAGE, re.DOTALL).group(1))
THREADS = 64
ROUNDS = 20


def run(journal, *command, options=()):
    return subprocess.run([VDRSIM, "run", "--journal", str(journal), *options, "--", *command],
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)


def shell(journal, script, options=()):
    return run(journal, "sh", "-c", script, VDRCTL, options=options)


def commands_of(lines):
    return [line for line in lines if "code" in line]


class OnNode:
    """A device node, for commands with and without an input of 4 bytes."""

    def __init__(self):
        self.libc = ctypes.CDLL(None, use_errno=True)
        self.node = os.open("/qorv/devices/char/zaxdriver/ryn_vdr", os.O_RDWR)

    def command(self, code, value=b"", room=0):
        reply = ctypes.create_string_buffer(room or 1)
        given = ctypes.create_string_buffer(value, len(value) or 1)
        envelope = ctypes.create_string_buffer(
            struct.pack("<IQIQ", len(value), ctypes.addressof(given) if value else 0, room,
                        ctypes.addressof(reply) if room else 0), 24)
        if self.libc.ioctl(self.node, ctypes.c_ulong(code), envelope) != 0:
            raise OSError(ctypes.get_errno(), "ioctl")
        return reply.raw[:room]


def be_client():
    """Many threads that set one number and read it, and print what each has read."""
    node = OnNode()
    seen = {}

    def use(thread):
        values = []
        for turn in range(ROUNDS):
            node.command(10, struct.pack("<I", 1 + thread * ROUNDS + turn))
            values.append(struct.unpack("<I", node.command(9, room=4))[0])
        seen[threading.get_native_id()] = values

    threads = [threading.Thread(target=use, args=(thread,)) for thread in range(THREADS)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    print(json.dumps(seen))


class JournalTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.journal = self.folder / "journal"

    def lines(self, path=None):
        """All lines of a whole journal, each held against the schema."""
        lines = [json.loads(line) for line in (path or self.journal).read_text().splitlines()]
        validator = jsonschema.Draft202012Validator(SCHEMA)
        for line in lines:
            validator.validate(line)
        self.assertEqual(lines[0]["format"], "vdrsim-journal")
        self.assertEqual([line["seq"] for line in lines[1:-1]], list(range(1, len(lines) - 1)))
        self.assertEqual(lines[-1]["end"], len(lines) - 2)
        return lines

    def fifo(self):
        path = self.folder / "fifo"
        os.mkfifo(path)
        return path


class Content(JournalTest):
    def test_the_schema_is_one(self):
        jsonschema.Draft202012Validator.check_schema(SCHEMA)

    def test_each_command_is_a_line(self):
        done = shell(self.journal, r"""
            "$0" instance set edge-1 --second 10 --text 'a\xff' && "$0" instance list >/dev/null
            "$0" lif set edge-1 up --mac 2:0:0:0:0:1; USE_UPGRADE_DEV= "$0" instance show edge-2
            "$0" cluster local-node set a b c --bytes 01 2>/dev/null; "$0" log-level set 3""")
        self.assertEqual(done.returncode, 0, done.stderr)
        commands = commands_of(self.lines())
        self.assertEqual([line["name"] for line in commands][:4],
                         ["SetVdrInstance", "GetInstances", "SetLif", "GetInstance"])
        first, listing, _, missing = commands[:4]
        self.assertEqual(first["request"], {"name": "edge-1", "second": 10, "text": r"a\xff",
                                            "textEscaped": True, "fourth": 0, "flag": 0})
        self.assertEqual(bytes.fromhex(first["input"])[:7], b"edge-1\0")
        self.assertEqual(len(first["input"]), 2 * 968)
        self.assertEqual((listing["produced"], listing["length"], listing["capacity"]),
                         (577, 577, 577577))
        self.assertEqual((missing["errno"], missing["node"]), ("ENOENT", "upgrade"))
        self.assertEqual(commands[-1]["request"], {"value": 3})
        self.assertEqual(len({line["pid"] for line in commands}), len(commands))

    def test_a_run_without_commands_has_a_beginning_and_an_end(self):
        self.assertEqual(run(self.journal, "true").returncode, 0)
        self.assertEqual(len(self.lines()), 2)

    def test_the_trace_is_on_standard_error(self):
        done = shell(self.journal, '"$0" log-level set 3; "$0" log-level get', ["--trace"])
        self.assertEqual(done.stdout, "3\n")
        first, second = done.stderr.splitlines()
        self.assertRegex(first, r"^\[\d+\] SetLogLevel\(value=3\) = 0$")
        self.assertRegex(second, r"^\[\d+\] GetLogLevel\(\) = 0 <4>$")
        self.assertEqual(len(commands_of(self.lines())), 2)

    def test_the_order_is_that_of_the_effects(self):
        done = run(self.journal, sys.executable, "-B", __file__, *sys.argv[1:4], "client")
        self.assertEqual(done.returncode, 0, done.stderr)
        seen = {int(thread): iter(values) for thread, values in json.loads(done.stdout).items()}
        commands = commands_of(self.lines())
        self.assertEqual(len(commands), 2 * THREADS * ROUNDS)
        last = 0
        for line in commands:
            if line["code"] == 10:
                last = line["request"]["value"]
            else:
                self.assertEqual(next(seen[line["tid"]]), last, line)


class Endings(JournalTest):
    def test_a_command_that_is_killed_takes_nothing_with_it(self):
        done = shell(self.journal, """
            i=0; while [ $i -lt 30 ]; do "$0" log-level set $i; i=$((i+1)); done
            echo $i; kill -9 $$""")
        self.assertEqual(done.returncode, -signal.SIGKILL)
        values = [line["request"]["value"] for line in commands_of(self.lines())]
        self.assertEqual(values, list(range(30)))

    def test_what_was_answered_is_there_whenever_the_caller_is_killed(self):
        client = ("import sys; sys.argv = sys.argv[1:]; "
                  f"exec(open({__file__!r}).read().split('class JournalTest')[0])\n"
                  "node = OnNode()\n"
                  "for value in range(10**9):\n"
                  "  node.command(10, struct.pack('<I', value)); print(value, flush=True)\n")
        process = subprocess.Popen(
            [VDRSIM, "run", "--journal", self.journal, "--", "sh", "-c",
             '"$@" & read line; kill -9 $!', "sh", sys.executable, "-B", "-c", client, "x",
             *sys.argv[1:4]],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        while process.stdout.readline() != b"300\n":
            pass
        process.stdin.write(b"\n")
        process.stdin.flush()
        rest = process.communicate()[0].splitlines()
        answered = int(rest[-1]) if rest else 300
        values = [line["request"]["value"] for line in commands_of(self.lines())]
        self.assertEqual(values, list(range(len(values))))
        self.assertGreaterEqual(len(values), answered + 1)

    def test_a_full_disk_is_told_and_the_run_goes_on(self):
        done = shell("/dev/full", '"$0" log-level set 3; "$0" log-level get; exit 7')
        self.assertEqual(done.returncode, 2)
        self.assertEqual(done.stdout, "3\n")
        self.assertEqual(done.stderr, "vdrsim: /dev/full: No space left on device; "
                                      "the rest of the run is missing there\n")

    def test_a_file_that_cannot_be_created_starts_nothing(self):
        for journal, reason in ((self.folder / "no" / "file", "No such file or directory"),
                                (self.folder, "Is a directory"),
                                ("", "No such file or directory")):
            done = run(journal, "echo", "started")
            self.assertEqual((done.returncode, done.stdout), (2, ""))
            self.assertEqual(done.stderr, f"vdrsim: {journal}: {reason}\n")

    def test_standard_output_is_the_commands(self):
        done = run("-", "echo", "started")
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertEqual(done.stderr, "vdrsim: --journal -: standard output is the command's; name a "
                                      "file, a FIFO or /dev/fd/N\n")

    def test_the_command_has_no_descriptor_of_it(self):
        look = ("ls", "/proc/self/fd")
        without = subprocess.run(look, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.assertEqual(run(self.journal, *look, options=["--trace"]).stdout, without.stdout)

    def test_closed_descriptors_are_nobodys_journal(self):
        done = subprocess.run(["sh", "-c", 'exec "$@" <&- >&- 2>&-', "sh", VDRSIM, "run", "--trace",
                               "--journal", self.journal, "--", VDRCTL, "log-level", "set", "3"])
        self.assertEqual(done.returncode, 0)
        self.assertEqual(len(commands_of(self.lines())), 1)


class Readers(JournalTest):
    def test_a_program_of_the_run_may_read(self):
        done = shell(self.fifo(), f"""
            head -n 41 {self.folder}/fifo >{self.folder}/copy &
            i=0; while [ $i -lt 40 ]; do "$0" log-level set $i; i=$((i+1)); done; wait""")
        copied = (self.folder / "copy").read_text().splitlines()
        self.assertEqual([json.loads(line)["request"]["value"] for line in copied[1:]],
                         list(range(40)))
        # Its end is for nobody.
        self.assertEqual((done.returncode, done.stderr.count("\n")), (2, 1))
        self.assertIn("Broken pipe", done.stderr)

    def test_a_reader_that_never_reads_holds_no_command_up(self):
        fifo = self.fifo()
        reader = os.open(fifo, os.O_RDONLY | os.O_NONBLOCK)
        self.addCleanup(os.close, reader)
        with open(self.folder / "output", "wb") as output:
            process = subprocess.Popen(
                [VDRSIM, "run", "--journal", fifo, "--", sys.executable, "-B", __file__,
                 *sys.argv[1:4], "client"], stdout=output)
        os.set_blocking(reader, True)
        # All commands are over before the first line is read.
        while not (self.folder / "output").read_bytes().endswith(b"}\n"):
            self.assertIsNone(process.poll())
        copy = self.folder / "copy"
        with open(copy, "wb") as to:
            while part := os.read(reader, 65536):
                to.write(part)
        self.assertEqual(process.wait(), 0)
        self.assertEqual(len(commands_of(self.lines(copy))), 2 * THREADS * ROUNDS)

    def test_who_waits_for_a_reader_can_be_interrupted(self):
        process = subprocess.Popen([VDRSIM, "run", "--journal", self.fifo(), "--", "true"],
                                   stderr=subprocess.PIPE, text=True)
        self.assertEqual(process.stderr.readline(),
                         f"vdrsim: {self.folder}/fifo: waiting for its reader (Ctrl-C gives up)\n")
        time.sleep(0.1)  # in which it could say so again
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.stderr.read(),
                         f"vdrsim: {self.folder}/fifo: nobody reads it; the rest of the run is "
                         "missing there\n")
        self.assertEqual(process.wait(), 2)
        process.stderr.close()


if __name__ == "__main__":
    if sys.argv[4:] == ["client"]:
        be_client()
    else:
        unittest.main(argv=sys.argv[:1])
