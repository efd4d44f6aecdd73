"""A command that runs again and again, on a terminal and elsewhere.

usage: watch_test.py VDRCTL VDRSIM SIGNAL_BEFORE_WAIT
"""
import fcntl
import json
import os
import pty
import select
import signal
import struct
import subprocess
import sys
import termios
import time
import unittest

VDRCTL, VDRSIM, SIGNAL_BEFORE_WAIT = sys.argv[1:4]


def in_run(script):
    return subprocess.run([VDRSIM, "run", "--", "sh", "-c", script, VDRCTL], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True)


# Watches until there are so many lines of output, and ends it then.
UNTIL_LINES = r"""
set -e
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$0" instance set edge-1
"$0" lif set edge-1 uplink
watch() { # watch LINES ARGUMENTS...
  lines=$1
  shift
  : >"$work/out"
  "$0" "$@" >>"$work/out" &
  while [ "$(wc -l <"$work/out")" -lt "$lines" ]; do
    "$0" lif enable edge-1 uplink
  done
  kill -TERM $!
  wait $! || echo "ended by $?" >>"$work/out"
  cat "$work/out"
}
"""


class Elsewhere(unittest.TestCase):
    def test_json_is_a_line_a_turn(self):
        run = in_run(UNTIL_LINES + "watch 3 --json --watch 0.1 instance list --columns name")
        *documents, ending = run.stdout.splitlines()
        self.assertEqual(ending, "ended by 143", run.stderr)
        self.assertGreaterEqual(len(documents), 3)
        for document in documents:
            self.assertEqual(json.loads(document), [{"name": "edge-1"}])

    def test_tables_have_an_empty_line_between_them(self):
        run = in_run(UNTIL_LINES + "watch 4 --watch=0.1 instance list --columns name")
        self.assertTrue(run.stdout.startswith("name\nedge-1\n\nname\nedge-1\n"), run.stdout)

    def test_counters_have_differences_and_rates(self):
        begin = time.monotonic()
        run = in_run(UNTIL_LINES + "watch 3 --json --watch 0.1 lif stats show edge-1 uplink")
        seconds = time.monotonic() - begin
        first, second, *_ = [json.loads(line) for line in run.stdout.splitlines()[:-1]]
        self.assertEqual(first["seconds"], 0)
        self.assertEqual(set(first["differences"]["slots0"]), {0})
        grown = second["record"]["slots0"][0] - first["record"]["slots0"][0]
        self.assertGreater(grown, 0)
        self.assertLess(second["seconds"], seconds)
        self.assertEqual(second["differences"]["slots0"][0], grown)
        self.assertAlmostEqual(second["rates"]["slots0"][0], grown / second["seconds"], places=1)
        run = in_run(UNTIL_LINES + "watch 1 --watch 0.1 lif stats show edge-1 uplink")
        self.assertRegex(run.stdout, r"^counter +value +difference +per second\nslots\[0\] +\d+ +0 +0\.0\n")

    def test_turns_are_an_interval_apart_whatever_part_of_a_second_that_is(self):
        begin = time.monotonic()
        run = in_run(UNTIL_LINES + "watch 3 --json --watch 0.9 log-level get")
        self.assertGreaterEqual(time.monotonic() - begin, 1.8, run.stdout)

    def test_turns_are_a_day_apart_at_most(self):
        run = in_run(UNTIL_LINES + "watch 1 --watch 86400 log-level get")
        self.assertEqual(run.stdout, "0\nended by 143\n")

    def test_a_signal_just_before_it_waits_ends_it(self):
        folder, name = os.path.split(SIGNAL_BEFORE_WAIT)
        run = subprocess.run([VDRSIM, "run", "--", "env", f"LD_LIBRARY_PATH={folder}", f"LD_PRELOAD={name}",
                              "ASAN_OPTIONS=verify_asan_link_order=0", VDRCTL, "--watch", "86400",
                              "log-level", "get"], stdout=subprocess.PIPE, text=True)
        self.assertEqual(run.stdout, "0\n")
        self.assertEqual(run.returncode, -signal.SIGTERM)

    def test_a_signal_that_was_ignored_before_does_not_end_it(self):
        script = 'trap "" INT; echo $$; exec "$0" --watch 0.1 log-level get'
        with subprocess.Popen([VDRSIM, "run", "--", "sh", "-c", script, VDRCTL], stdout=subprocess.PIPE,
                              text=True) as run:
            watching = int(run.stdout.readline())
            self.assertEqual(run.stdout.readline(), "0\n")
            os.kill(watching, signal.SIGINT)
            # One turn may have been on its way.
            turns = [run.stdout.readline() for _ in range(4)]
            os.kill(watching, signal.SIGTERM)
        self.assertEqual(turns, ["\n", "0\n"] * 2)
        self.assertEqual(run.returncode, -signal.SIGTERM)

    def test_a_command_that_fails_ends_it(self):
        run = in_run('"$0" --watch 0.1 instance show edge-1')
        self.assertEqual(run.returncode, 1)
        self.assertEqual(run.stderr, "vdrctl: instance show edge-1: No such file or directory (ENOENT)\n")

    def test_the_interval_is_looked_at_first(self):
        for wrong in ("", "0", "0.05", "0.099", "x", "1s", "-1", "nan", "inf", "86400.1", "86401"):
            run = in_run(f'"$0" --watch={wrong} log-level get')
            self.assertEqual(run.returncode, 2, wrong)
            self.assertEqual(run.stdout, "")
            self.assertEqual(run.stderr, f"vdrctl: --watch: '{wrong}' is not a number of seconds "
                             "from 0.1 to 86400\nTry 'vdrctl --help'\n")


class OnATerminal(unittest.TestCase):
    def watch(self, *arguments, end, turn=b"\x1b[H", before=":", lines=24, columns=80):
        """What the terminal gets, and the status as wait() has it. It is ended by keys, typed in the
        second turn."""
        child, terminal = pty.fork()
        if child == 0:
            fcntl.ioctl(0, termios.TIOCSWINSZ, struct.pack("HHHH", lines, columns, 0, 0))
            os.execve(VDRSIM, [VDRSIM, "run", "--", "sh", "-c", f'{before}; exec "$0" "$@"', VDRCTL,
                               *arguments], {**os.environ, "LC_ALL": "C.UTF-8"})
        shown = b""
        typed = False
        while select.select([terminal], [], [], 60)[0]:
            try:
                part = os.read(terminal, 4096)
            except OSError:
                break
            shown += part
            if end and not typed and shown.count(turn) >= 2:
                os.write(terminal, end)
                typed = True
        os.close(terminal)
        return shown, os.waitpid(child, 0)[1]

    def test_each_turn_replaces_the_last_and_the_screen_comes_back(self):
        shown, status = self.watch("--watch", "0.1", "instance", "list", "--columns", "name", end=b"\x03")
        turn = b"\x1b[Hname\x1b[K\r\n\x1b[J"
        begin, end = b"\x1b[?1049h\x1b[?25l", b"\x1b[?25h\x1b[?1049l"
        turns = shown.replace(b"^C", b"").removeprefix(begin).removesuffix(end)
        # The key may come in the middle of a turn.
        self.assertEqual(turns, (turn * (shown.count(turn) + 1))[:len(turns)])
        self.assertGreater(shown.count(turn), 0)
        self.assertEqual(shown.replace(b"^C", b""), begin + turns + end)
        self.assertEqual(os.WTERMSIG(status), signal.SIGINT)

    def test_an_error_is_told_on_the_screen_that_stays(self):
        shown, status = self.watch("--watch", "0.1", "instance", "show", "x", end=b"")
        self.assertTrue(shown.endswith(b"\x1b[?25h\x1b[?1049lvdrctl: instance show x: "
                                       b"No such file or directory (ENOENT)\r\n"), shown)
        self.assertEqual(os.WEXITSTATUS(status), 1)

    def test_a_line_is_cut_between_characters_where_the_screen_is_narrow(self):
        before = r'"$0" instance set "$(printf "a\344\270\255\303\251\303\251")"'
        for columns, wanted in ((6, "a中éé"), (5, "a中éé"), (4, "a中é"), (3, "a中"), (2, "a"), (1, "a")):
            shown, _ = self.watch("--watch", "0.1", "instance", "list", "--columns", "name", "--no-header",
                                  end=b"\x03", before=before, columns=columns)
            self.assertIn(f"\x1b[H{wanted}\x1b[K\r\n\x1b[J".encode(), shown)

    def test_lines_without_room_are_counted(self):
        before = '"$0" instance set a; "$0" instance set b; "$0" instance set c'
        for lines, wanted in ((5, "name\x1b[K\r\na\x1b[K\r\nb\x1b[K\r\nc\x1b[K\r\n\x1b[J"),
                              (4, "name\x1b[K\r\na\x1b[K\r\nb\x1b[K\r\n\x1b[J1 more line"),
                              (3, "name\x1b[K\r\na\x1b[K\r\n\x1b[J2 more lines")):
            shown, _ = self.watch("--watch", "0.1", "instance", "list", "--columns", "name",
                                  end=b"\x03", before=before, lines=lines)
            self.assertIn(f"\x1b[H{wanted}\x1b".encode(), shown)

    def test_a_terminal_that_does_not_tell_its_size_has_the_usual_one(self):
        before = ('"$0" instance set "$(printf %063d 0)" --text 123456789012345678; '
                  'for n in $(seq 11 34); do "$0" instance set $n; done')
        shown, _ = self.watch("--watch", "0.1", "instance", "list", "--columns", "name,text73",
                              "--no-header", end=b"\x03", before=before, lines=0, columns=0)
        screen = shown.decode().split("\x1b[H")[1].split("\x1b[K\r\n")
        self.assertEqual(screen[0], "0" * 63 + "  " + "123456789012345")
        self.assertEqual([line.split() for line in screen[1:-1]], [[str(n), "-"] for n in range(11, 33)])
        self.assertTrue(screen[-1].startswith("\x1b[J2 more lines"), screen)

    def test_json_stays_lines_there_too(self):
        shown, status = self.watch("--json", "--watch", "0.1", "instance", "list", end=b"\x03", turn=b"\n")
        self.assertEqual(shown.replace(b"^C", b""), b"[]\r\n" * shown.count(b"\n"))
        self.assertEqual(os.WTERMSIG(status), signal.SIGINT)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
