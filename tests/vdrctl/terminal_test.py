"""What vdrctl does on a terminal, and for who types what it showed.

usage: terminal_test.py VDRCTL VDRSIM
"""
import json
import os
import pty
import random
import subprocess
import sys
import tempfile
import threading
import time
import unittest

VDRCTL, VDRSIM = sys.argv[1:3]


def on_terminal(script, **environment):
    """What a script shows on a terminal of its own, and its exit status. $0 is vdrctl."""
    child, terminal = pty.fork()
    if child == 0:
        os.execve(VDRSIM, [VDRSIM, "run", "--", "sh", "-c", script, VDRCTL], {**os.environ, **environment})
    shown = b""
    while True:
        try:
            shown += os.read(terminal, 4096)
        except OSError:
            break
    os.close(terminal)
    return shown.replace(b"\r\n", b"\n"), os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])


def elsewhere(script, **options):
    return subprocess.run([VDRSIM, "run", "--", "sh", "-c", script, VDRCTL], capture_output=True,
                          check=False, **options)


class Colours(unittest.TestCase):
    SCRIPT = '"$0" instance set edge-1; "$0" instance list --columns name; "$0" --help >/dev/null; "$0" x'

    def test_are_on_no_terminal(self):
        for environment in ({}, {"NO_COLOR": "1"}, {"TERM": "xterm-256color", "COLORTERM": "truecolor"}):
            shown, status = on_terminal(self.SCRIPT, **environment)
            self.assertEqual(shown, b"name\nedge-1\nvdrctl: 'vdrctl' has no 'x'\nTry 'vdrctl --help'\n")
            self.assertEqual(status, 2)


class Utf8(unittest.TestCase):
    SCRIPT = '"$0" instance set "$(printf "\\303\\251")"; "$0" instance list --columns name --no-header'

    def test_is_shown_where_the_terminal_takes_it(self):
        self.assertEqual(on_terminal(self.SCRIPT, LC_ALL="C.UTF-8")[0], b"\xc3\xa9\n")
        self.assertEqual(on_terminal(self.SCRIPT, LC_ALL="C")[0], b"\\xc3\\xa9\n")
        self.assertEqual(on_terminal(self.SCRIPT, LC_ALL="no_such")[0], b"\\xc3\\xa9\n")


class Progress(unittest.TestCase):
    """A file of commands whose first fails and whose second waits until somebody reads its answer."""

    def run_batch(self, runner):
        with tempfile.TemporaryDirectory() as folder:
            os.mkfifo(f"{folder}/answer")
            with open(f"{folder}/commands", "w", encoding="ascii") as file:
                file.write(f"instance delete x\npolicy set 1 --answer {folder}/answer\nlog-level set 1\n")

            def read_late():
                time.sleep(1.2)
                with open(f"{folder}/answer", "rb") as answer:
                    answer.read()
            reader = threading.Thread(target=read_late)
            reader.start()
            result = runner(f'"$0" batch --keep-going {folder}/commands')
            reader.join()
            said = f"vdrctl: {folder}/commands"
            return (result, f"{said}:1: instance delete x: No such file or directory (ENOENT)\n".encode(),
                    f"{said}: 2 done, 1 failed, 0 not tried\n".encode())

    def test_is_shown_on_a_terminal_after_a_second_and_taken_away(self):
        (shown, status), failure, summary = self.run_batch(on_terminal)
        self.assertEqual(shown, failure + b"\r\x1b[K[" + b"=" * 26 + b" " * 14 + b"] 2/3\r\x1b[K" + summary)
        self.assertEqual(status, 1)

    def test_is_not_shown_elsewhere(self):
        run, failure, summary = self.run_batch(elsewhere)
        self.assertEqual((run.returncode, run.stdout, run.stderr), (1, b"", failure + summary))


class Pipes(unittest.TestCase):
    # More than a pipe holds, so that the reader is gone before the end.
    FILL = 'i=0; while [ $i -lt 900 ]; do i=$((i+1)); echo "instance set edge-$i"; done | ' \
           '"$0" batch - 2>/dev/null\n'

    def test_that_nobody_reads_end_it_without_a_word(self):
        run = elsewhere(self.FILL + '{ "$0" --json instance list; echo "status $?" >&2; } | head -c 1')
        self.assertEqual((run.stdout, run.stderr), (b"[", b"status 141\n"))

    def test_are_an_error_where_the_signal_is_ignored(self):
        run = elsewhere(self.FILL + 'trap "" PIPE\n'
                        '{ "$0" --json instance list; echo "status $?" >&2; } | head -c 1')
        self.assertEqual(run.stdout, b"[")
        complaint, status = run.stderr.splitlines()
        self.assertEqual(json.loads(complaint),
                         {"status": 1, "error": {"command": "standard output", "message": "Broken pipe",
                                                 "errno": "EPIPE"}})
        self.assertEqual(status, b"status 1")


# Makes instances of the names of a file, shows them all, and types back what was shown.
TYPE_BACK = r'''
import json, subprocess, sys
vdrctl, names = sys.argv[1], [bytes.fromhex(name) for name in sys.argv[2].split(",")]
def run(*words):
    return subprocess.run([vdrctl, *words], stdout=subprocess.PIPE, check=True).stdout
for name in names:
    run("instance", "set", "--", name.replace(b"\\", b"\\\\"))
documents = json.loads(run("--json", "instance", "list", "--columns", "name"))
shown = run("instance", "list", "--columns", "name", "--no-header").splitlines()
assert len(shown) == len(documents) == len(set(names)), (len(shown), len(names))
for name, text, document in zip(sorted(set(names)), shown, documents):
    # A column of texts has no other blanks: the last one of a line is not filled up.
    again = json.loads(run("--json", "instance", "show", "--columns", "name", "--", text))
    assert again == document, (name, text)
    if "nameEscaped" in document:
        assert document["nameEscaped"] is True
        assert json.loads(run("--json", "instance", "list", "--columns", "name", "--",
                              document["name"])) == [document], document
        try:
            name.decode()
        except UnicodeDecodeError:
            continue
        raise AssertionError(name)
    assert document["name"].encode() == name, (name, document)
'''


class TypedBack(unittest.TestCase):
    def type_back(self, names, locale):
        run = subprocess.run([VDRSIM, "run", "--", sys.executable, "-B", "-c", TYPE_BACK, VDRCTL,
                              ",".join(name.hex() for name in names)],
                             stderr=subprocess.PIPE, text=True, env={**os.environ, "LC_ALL": locale},
                             check=False)
        self.assertEqual((run.returncode, run.stderr), (0, ""))

    def test_is_every_byte(self):
        self.type_back([bytes([byte]) for byte in range(1, 256)], "C")

    def test_are_names_of_any_bytes_and_length(self):
        source = random.Random(13)
        names = [bytes(source.randrange(1, 256) for _ in range(source.randrange(1, 64)))
                 for _ in range(50)]
        names += ["".join(chr(source.choice([0x41, 0x5c, 0xe9, 0x300, 0x4e2d, 0x202e, 0x1f600, 0xa0]))
                          for _ in range(source.randrange(1, 16))).encode() for _ in range(50)]
        self.type_back(names, "C.UTF-8")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
