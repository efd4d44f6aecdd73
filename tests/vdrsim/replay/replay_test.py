"""Recordings of real runs, and runs that are answered from them.

usage: replay_test.py VDRSIM VDRCTL SOURCE_DIRECTORY
"""
import ctypes
import json
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest

import jsonschema

VDRSIM, VDRCTL, SOURCE = sys.argv[1:4]
PAGE = pathlib.Path(SOURCE, "docs", "vdrsim-journal.md").read_text()
SCHEMA = json.loads(re.search(r"```json\n(.*?)```", PAGE, re.DOTALL).group(1))
NODE = "/qorv/devices/char/zaxdriver/ryn_vdr"
BEGINNING = '{"format":"vdrsim-journal","version":1}\n'

# What is asked of a host.
SCRIPT = r"""
"$0" instance set edge-1 --second 10; "$0" lif set edge-1 up; "$0" --json instance list
"$0" log-level set 3; "$0" --json log-level get; "$0" log-level set 4; "$0" --json log-level get
"$0" instance show nobody; "$0" --json lif list edge-1
"""


def vdrsim(*arguments):
    return subprocess.run([VDRSIM, *map(str, arguments)], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True)


def be_client():
    """One command with a room of 4 bytes, and all that it leaves behind."""
    node = os.open(NODE, os.O_RDWR)
    reply = ctypes.create_string_buffer(b"....", 4)
    envelope = ctypes.create_string_buffer(
        struct.pack("<IQIQ", 0, 0, 4, ctypes.addressof(reply)), 24)
    libc = ctypes.CDLL(None, use_errno=True)
    result = libc.ioctl(node, ctypes.c_ulong(9), envelope)
    error = ctypes.get_errno() if result != 0 else 0
    print(error, struct.unpack_from("<I", envelope.raw, 12)[0], reply.raw.hex())


class Replay(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.file = pathlib.Path(folder.name, "recording")

    def record(self, script=SCRIPT, *options):
        return vdrsim("record", "--simulated", *options, self.file, "--", "sh", "-c", script, VDRCTL,
                      VDRSIM)

    def replay(self, script=SCRIPT, *options):
        return vdrsim("replay", *options, self.file, "--", "sh", "-c", script, VDRCTL)

    def beside(self, name):
        return self.file.with_name(name)

    def lines_of(self, file):
        return [json.loads(line) for line in file.read_text().splitlines()]

    def test_a_recording_holds_what_faults_made_of_the_answers(self):
        done = self.record('"$0" log-level get; "$0" log-level get; "$1" ctl journal mark x',
                           "--fault", "GetLogLevel:error=EIO:when=2", "--trace",
                           "--journal", self.beside("journal"))
        self.assertRegex(done.stderr, r"GetLogLevel\(\) = 0 <4>\n(.*\n)?.*GetLogLevel\(\) = -1 EIO "
                                      r"\(Input/output error\)\n(.*\n)?\[mark\] \"x\"\n")
        recorded, written = self.lines_of(self.file), self.lines_of(self.beside("journal"))
        self.assertEqual([line.get("errno") for line in recorded[1:4]], [0, "EIO", None])
        self.assertEqual([line.pop("output", "") for line in recorded], ["", "00000000", "", "", ""])
        self.assertEqual(recorded, written)
        replayed = self.replay('"$0" log-level get; "$0" log-level get', "--strict")
        self.assertEqual((replayed.returncode, replayed.stderr),
                         (1, "vdrctl: log-level get: Input/output error (EIO)\n"))

    def test_a_replay_has_faults_a_journal_and_a_trace(self):
        self.record('"$0" log-level set 3; "$0" log-level get')
        done = self.replay('"$0" log-level set 3; "$0" log-level set 3; "$0" log-level get',
                           "--strict", "--trace", "--journal", self.beside("journal"),
                           "--fault", "SetLogLevel:error=EAGAIN:when=1")
        self.assertEqual((done.returncode, done.stdout), (0, "3\n"))
        self.assertIn("SetLogLevel(value=3) = -1 EAGAIN", done.stderr)
        self.assertEqual([line.get("errno") for line in self.lines_of(self.beside("journal"))[1:-1]],
                         ["EAGAIN", 0, 0])
        done = self.replay('"$0" log-level get', "--fault", "SetLif:error=EIO", "--strict-faults")
        self.assertEqual((done.returncode, done.stderr),
                         (125, "vdrsim: this fault never matched: SetLif:error=EIO\n"))
        # The recording says more than the faults.
        done = self.replay("true", "--strict", "--fault", "SetLif:error=EIO", "--strict-faults")
        self.assertEqual(done.returncode, 3)

    def test_a_simulation_is_recorded_from_a_state_to_a_state(self):
        self.beside("state").write_text('{"format_version": 1, "instances": {"edge-1": {}}}')
        done = self.record('"$0" instance show edge-1 >/dev/null && "$0" instance delete edge-1 && '
                           '"$1" ctl state show',
                           "--state", self.beside("state"), "--save", self.beside("saved"))
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertNotIn("instances", json.loads(done.stdout))
        self.assertEqual(self.beside("saved").read_text(), done.stdout)
        done = vdrsim("record", "--state", self.beside("state"), self.file, "--", "echo", "started")
        self.assertEqual((done.returncode, done.stdout, done.stderr.splitlines()[0]),
                         (2, "", "vdrsim: --state requires --simulated"))

    def test_no_journal_is_written_over_a_recording(self):
        self.record('"$0" log-level set 3')
        whole = self.file.read_text()
        twin = self.beside("twin")
        os.link(self.file, twin)
        message = f"vdrsim: {twin}: the journal would be written over the recording\n"
        done = self.replay("echo started", "--journal", twin)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (2, "", message))
        self.assertEqual(self.file.read_text(), whole)
        done = self.record("echo started", "--journal", twin)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (2, "", message))

    def test_a_rule_that_is_none_costs_no_recording(self):
        self.file.write_text("kept")
        done = self.record("echo started", "--fault", "nope")
        self.assertEqual((done.returncode, done.stdout, self.file.read_text()), (2, "", "kept"))

    def test_what_was_recorded_is_replayed(self):
        recorded = self.record()
        for options in ((), ("--strict",)):
            replayed = self.replay(SCRIPT, *options)
            self.assertEqual((replayed.returncode, replayed.stdout, replayed.stderr),
                             (recorded.returncode, recorded.stdout, recorded.stderr))
        self.assertIn('"level":3', recorded.stdout)
        self.assertIn('"level":4', recorded.stdout)

    def test_a_recording_is_a_journal_with_outputs(self):
        self.record()
        lines = self.lines_of(self.file)
        validator = jsonschema.Draft202012Validator(SCHEMA)
        for line in lines:
            validator.validate(line)
        for line in lines[1:-1]:
            self.assertEqual(len(line.get("output", "")), 2 * line["produced"])
        self.assertEqual(lines[-1]["end"], len(lines) - 2)

    def test_what_was_answered_is_in_the_file_when_vdrsim_is_killed(self):
        with subprocess.Popen(
                [VDRSIM, "record", "--simulated", self.file, "--", "sh", "-c",
                 'i=0; while "$0" log-level set $i 2>&-; do echo $i; i=$((i+1)); done', VDRCTL],
                stdout=subprocess.PIPE, text=True) as process:
            while process.stdout.readline() != "20\n":
                pass
            process.kill()
            answered = int((["20"] + process.stdout.read().splitlines())[-1])
        lines = self.file.read_text().splitlines()[1:]
        values = [json.loads(line)["request"]["value"] for line in lines]
        self.assertEqual(values, list(range(len(values))))
        self.assertGreater(len(values), answered)

    def test_a_file_that_can_grow_no_more_is_told_and_the_run_goes_on(self):
        done = subprocess.run(
            ["sh", "-c", 'ulimit -f 4; exec "$@"', "sh", VDRSIM, "record", "--simulated", self.file,
             "--", "sh", "-c", SCRIPT + "exit 7", VDRCTL],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.assertEqual(done.returncode, 2)
        self.assertIn('{"level":4}', done.stdout)
        self.assertEqual(done.stderr.count(f"vdrsim: {self.file}: File too large; the recording is "
                                           "incomplete\n"), 1)
        self.assertEqual(self.replay("echo started").returncode, 2)

    def test_the_whole_run_need_not_be_the_same(self):
        self.record()
        replayed = self.replay('"$0" --json log-level get; "$0" --json log-level get; '
                               '"$0" --json log-level get; "$0" log-level set 5')
        self.assertEqual(replayed.stdout, '{"level":3}\n{"level":4}\n{"level":4}\n')
        self.assertEqual(replayed.returncode, 1)
        self.assertEqual(replayed.stderr, "vdrctl: log-level set 5: Inappropriate ioctl for device "
                                          f"(ENOTTY)\nvdrsim: not in {self.file}, and answered with "
                                          "ENOTTY:\n  SetLogLevel(value=5)\n")

    def test_a_departure_has_a_status_of_its_own(self):
        self.record('"$0" log-level set 3')
        replayed = self.replay('"$0" log-level set 4', "--strict")
        self.assertEqual(replayed.returncode, 3)
        self.assertEqual(replayed.stderr, "vdrctl: log-level set 4: Protocol error (EPROTO)\n"
                                          f"vdrsim: the run departs from {self.file}:2\n"
                                          "  recorded: SetLogLevel(value=3)\n"
                                          "  asked:    SetLogLevel(value=4)\n"
                                          "    value: 3 recorded, 4 asked\n")
        self.assertEqual(self.replay("true", "--strict").returncode, 3)
        self.assertEqual(self.replay("true").returncode, 0)

    def test_what_was_written_before_a_failure_is_delivered(self):
        rows = (('"errno":"EIO","length":2,"produced":4,"output":"01020304"', "5 2 01020304"),
                ('"errno":"EIO","length":4,"produced":2,"output":"0102"', "5 4 01022e2e"),
                ('"errno":"EIO","length":3,"produced":0', "5 3 2e2e2e2e"),
                ('"errno":"EIO","length":4,"produced":0', "5 4 2e2e2e2e"),
                ('"errno":0,"length":9,"produced":2,"output":"0102"', "0 9 01022e2e"))
        for result, expected in rows:
            self.file.write_text(BEGINNING + '{"seq":1,"node":"normal","code":9,"input":"",'
                                 f'"capacity":4,{result}}}\n{{"end":1}}\n')
            done = vdrsim("replay", "--strict", self.file, "--", sys.executable, "-B", __file__,
                          *sys.argv[1:4], "client")
            self.assertEqual((done.stdout, done.stderr), (expected + "\n", ""), result)

    def test_a_journal_is_replayed_but_for_its_replies(self):
        vdrsim("run", "--journal", self.file, "--", "sh", "-c", SCRIPT, VDRCTL)
        replayed = self.replay('"$0" log-level set 3; "$0" instance show nobody; "$0" log-level get')
        self.assertEqual(replayed.stderr.splitlines()[:2],
                         ["vdrctl: instance show nobody: No such file or directory (ENOENT)",
                          "vdrctl: log-level get: No data available (ENODATA)"])
        self.assertIn(f"vdrsim: in {self.file} without the reply, and answered with ENODATA:\n"
                      "  GetLogLevel()\n", replayed.stderr)

    def test_a_long_reply_is_replayed(self):
        script = r"""
            i=0; while [ $i -lt 300 ]; do echo "instance set edge-$i"; i=$((i+1)); done |
              "$0" batch - && "$0" --json instance list"""
        recorded = self.record(script)
        self.assertEqual(len(json.loads(recorded.stdout)), 300)
        replayed = self.replay(script, "--strict")
        self.assertEqual((replayed.returncode, replayed.stdout), (0, recorded.stdout))

    def test_a_recording_that_cannot_be_used_starts_nothing(self):
        self.record('"$0" log-level set 3')
        whole = self.file.read_text()
        for cut in range(0, len(whole), 7):
            self.file.write_text(whole[:cut])
            done = self.replay("echo started")
            line = whole[:cut].count("\n") + 1
            self.assertEqual((done.returncode, done.stdout), (2, ""))
            self.assertRegex(done.stderr, rf"^vdrsim: {re.escape(str(self.file))}:{line}: .*\n$")

    def test_wrong_usage_is_told(self):
        rows = (("record", f"{NODE}: No such file or directory: this host has no device to record, "
                           "or it can't be used (record --simulated needs none)\n"),
                ("replay", "missing: No such file or directory\n"))
        for verb, message in rows:
            done = vdrsim(verb, "missing", "--", "echo", "started")
            self.assertEqual((done.returncode, done.stdout, done.stderr),
                             (2, "", "vdrsim: " + message))
        for arguments in (("record",), ("replay",), ("record", "file"), ("replay", "file", "--")):
            done = vdrsim(*arguments)
            self.assertEqual(done.returncode, 2)
            self.assertRegex(done.stderr, r"^vdrsim: (FILE|COMMAND) is required\n")
        for verb in ("record", "replay"):
            done = vdrsim(verb, "file", "--trace", "--", "echo", "started")
            self.assertEqual((done.returncode, done.stdout, done.stderr.splitlines()[0]),
                             (2, "", "vdrsim: options stand before FILE: --trace"))
        done = vdrsim("record", "--simulated", "", "--", "echo", "started")
        self.assertEqual((done.returncode, done.stdout, done.stderr),
                         (2, "", "vdrsim: : No such file or directory\n"))
        done = vdrsim("record", "--simulated", "/dev/full", "--", "echo", "started")
        self.assertEqual((done.returncode, done.stdout, done.stderr),
                         (2, "", "vdrsim: /dev/full: a recording must be a plain file\n"))

    def test_the_separator_may_be_left_out(self):
        done = vdrsim("record", "--simulated", self.file, "echo", "--", "--strict")
        self.assertEqual((done.returncode, done.stdout), (0, "-- --strict\n"))


if __name__ == "__main__":
    if sys.argv[4:] == ["client"]:
        be_client()
    else:
        unittest.main(argv=sys.argv[:1])
