"""A state that is saved at the end of a run, whatever happens.

usage: save_test.py VDRSIM VDRCTL
"""
import json
import os
import pathlib
import random
import signal
import subprocess
import sys
import tempfile
import time
import unittest

VDRSIM, VDRCTL = sys.argv[1:3]
ROUNDS = 60


class Saving(unittest.TestCase):
    def setUp(self):
        room = tempfile.TemporaryDirectory()
        self.addCleanup(room.cleanup)
        self.room = pathlib.Path(room.name)
        self.file = self.room / "host.json"

    def run_with(self, *words, **more):
        return subprocess.run([VDRSIM, "run", *words], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True, **more)

    def save(self, *command, to=None):
        return self.run_with("--save", str(to or self.file), "--", *command)

    def level(self):
        return json.loads(self.file.read_text()).get("logLevel")

    def files(self):
        return sorted(path.name for path in self.room.iterdir())

    def assert_refused(self, done, complaint):
        self.assertEqual((done.returncode, done.stderr), (2, f"vdrsim: {complaint}\n"))

    def test_is_done_however_the_command_ends(self):
        for number, (script, status) in enumerate(
                [("exit 0", 0), ("exit 3", 3), ("kill -TERM $$", -signal.SIGTERM),
                 ("kill -KILL $$", -signal.SIGKILL)], 1):
            done = self.save("sh", "-c", f'"$0" log-level set {number}; {script}', VDRCTL)
            self.assertEqual((done.returncode, self.level()), (status, number), done.stderr)
        self.assertEqual(self.files(), ["host.json"])

    def test_is_done_when_vdrsim_is_told_to_end(self):
        run = subprocess.Popen([VDRSIM, "run", "--save", str(self.file), "--", "sh", "-c",
                                '"$0" log-level set 5; echo ready; exec sleep 1000', VDRCTL],
                               stdout=subprocess.PIPE)
        run.stdout.readline()
        run.send_signal(signal.SIGTERM)
        run.communicate()
        self.assertEqual((run.returncode, self.level()), (-signal.SIGTERM, 5))

    def test_is_done_when_the_command_is_not_found(self):
        self.assertEqual(self.save("/no/such/program").returncode, 127)
        self.assertEqual(json.loads(self.file.read_text()), {"format_version": 1})

    def test_keeps_the_mode_of_the_file(self):
        self.save("true")
        self.assertEqual(self.file.stat().st_mode & 0o7777, 0o666 & ~current_umask())
        self.file.chmod(0o640)
        self.assertEqual(self.save("true").returncode, 0)
        self.assertEqual(self.file.stat().st_mode & 0o7777, 0o640)

    def test_follows_a_symbolic_link(self):
        self.save("true")
        link = self.room / "link.json"
        link.symlink_to("host.json")
        self.assertEqual(self.save(VDRCTL, "log-level", "set", "7", to=link).returncode, 0)
        self.assertTrue(link.is_symlink())
        self.assertEqual(self.level(), 7)

    def test_goes_to_the_working_directory_without_a_path(self):
        done = subprocess.run([VDRSIM, "run", "--save", "host.json", "true"], cwd=self.room)
        self.assertEqual((done.returncode, self.files()), (0, ["host.json"]))

    def test_can_take_the_place_of_what_was_loaded(self):
        self.save(VDRCTL, "log-level", "set", "1")
        done = self.run_with("--state", str(self.file), "--save", str(self.file), "--", VDRCTL,
                             "stats-level", "set", "2")
        self.assertEqual((done.returncode, self.level()), (0, 1), done.stderr)

    def test_is_refused_before_the_run_where_it_can_be_told(self):
        ran = self.room / "ran"
        pipe = self.room / "pipe"
        os.mkfifo(pipe)
        ring = self.room / "ring"
        ring.symlink_to("ring")
        for place, complaint in [
                (self.room, f"{self.room}: Is a directory"),
                (self.room / "no" / "file", f"{self.room}/no/file: No such file or directory"),
                (pipe / "file", f"{pipe}/file: Not a directory"),
                (ring, f"{ring}: Too many levels of symbolic links"),
                (pipe, f"{pipe}: a state is saved to a plain file alone"),
                (pathlib.Path("/proc/host.json"), "/proc/host.json: No such file or directory")]:
            self.assert_refused(self.save("touch", str(ran), to=place), complaint)
        self.assertFalse(ran.exists())

    @unittest.skipIf(os.geteuid() == 0 and subprocess.run(["which", "setpriv"],
                     stdout=subprocess.DEVNULL).returncode, "root may write everywhere")
    def test_is_refused_in_a_directory_that_may_not_be_written(self):
        locked = self.room / "locked"
        locked.mkdir(mode=0o555)
        words = ["setpriv", "--bounding-set=-all", "--inh-caps=-all", "--"]
        done = subprocess.run([*(words if os.geteuid() == 0 else []), VDRSIM, "run", "--save",
                               f"{locked}/a", "true"], stderr=subprocess.PIPE, text=True)
        self.assert_refused(done, f"{locked}/a: Permission denied")

    def test_that_fails_at_the_end_is_told_and_leaves_what_was_there(self):
        self.save(VDRCTL, "log-level", "set", "1")
        before = self.file.read_bytes()
        # No file may grow beyond this, as on a full disk.
        script = 'ulimit -f 8; trap "" XFSZ; "$1" scenario --lifs 1000 | "$1" run --state - --save "$0" true'
        done = subprocess.run(["sh", "-c", script, str(self.file), VDRSIM], stderr=subprocess.PIPE,
                              text=True)
        self.assert_refused(done, f"{self.file}: File too large")
        self.assertEqual((self.file.read_bytes(), self.files()), (before, ["host.json"]))

    def test_that_can_no_longer_be_done_is_told(self):
        gone = self.room / "gone"
        gone.mkdir()
        done = self.save("rmdir", str(gone), to=gone / "a")
        self.assert_refused(done, f"{gone}/a: No such file or directory")

    def test_cannot_take_the_place_of_a_directory(self):
        done = self.save("mkdir", str(self.file))
        self.assert_refused(done, f"{self.file}: Is a directory")
        self.assertEqual(self.files(), ["host.json"])

    def test_leaves_the_umask_of_the_command_alone(self):
        script = 'umask 027; exec "$0" run --save "$1" -- sh -c umask'
        done = subprocess.run(["sh", "-c", script, VDRSIM, str(self.file)],
                              stdout=subprocess.PIPE, text=True)
        self.assertEqual((done.returncode, int(done.stdout, 8)), (0, 0o027))
        self.assertEqual(self.file.stat().st_mode & 0o7777, 0o640)

    def test_killed_at_any_moment_leaves_the_old_file_or_the_new_one(self):
        new = subprocess.run([VDRSIM, "scenario", "--lifs", "3000", "--routes", "3000"],
                             stdout=subprocess.PIPE, check=True).stdout
        old = b'{\n  "format_version": 1,\n  "logLevel": 1\n}\n'
        loaded = self.room / "loaded"
        loaded.write_bytes(new)
        command = [VDRSIM, "run", "--state", str(loaded), "--save", str(self.file), "true"]
        self.file.write_bytes(old)
        start = time.monotonic()
        subprocess.run(command, check=True)
        whole = time.monotonic() - start
        self.assertEqual(self.file.read_bytes(), new)
        seed = random.randrange(2**32)
        moments = random.Random(seed)
        for round_ in range(ROUNDS):
            self.file.write_bytes(old)
            run = subprocess.Popen(command)
            time.sleep(moments.uniform(0, 1.2 * whole))
            run.kill()
            run.wait()
            self.assertIn(self.file.read_bytes(), (old, new), f"round {round_}, seed {seed}")


class Loading(unittest.TestCase):
    def refused(self, *words, **more):
        done = subprocess.run([VDRSIM, "run", *words, "--", "echo", "ran"], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, text=True, **more)
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        return done.stderr

    def test_what_can_t_be_read_is_told_before_the_run(self):
        self.assertEqual(self.refused("--state", "/no/such/file"),
                         "vdrsim: /no/such/file: No such file or directory\n")
        self.assertEqual(self.refused("--state", "/"), "vdrsim: /: Is a directory\n")
        self.assertEqual(
            self.refused("--state", "-", input='{"format_version": 1, "instances": {"a": {"flag": 300}}}'),
            "vdrsim: standard input: /instances/a/flag: 300 is not a whole number of 0 to 255\n")
        self.assertEqual(
            self.refused("--state", "/dev/null"),
            "vdrsim: /dev/null: parse error at line 1, column 1: syntax error while parsing value - "
            "unexpected end of input; expected '[', '{', or a literal\n")

    def test_a_wrong_state_leaves_the_saved_file_alone(self):
        with tempfile.TemporaryDirectory() as room:
            self.refused("--state", "-", "--save", f"{room}/a", input="{}")
            self.assertEqual(os.listdir(room), [])

    def test_standard_input_is_at_its_end_for_the_command(self):
        done = subprocess.run([VDRSIM, "run", "--state", "-", "cat"], input=b'{"format_version": 1}',
                              stdout=subprocess.PIPE)
        self.assertEqual((done.returncode, done.stdout), (0, b""))


def current_umask():
    withheld = os.umask(0)
    os.umask(withheld)
    return withheld


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
