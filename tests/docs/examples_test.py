"""What the pages show as an example works: programs, sessions of a shell, lines with vdrsim, JSON.

usage: examples_test.py SOURCE_DIRECTORY BUILD_DIRECTORY AGENT

Blocks in Python are run by the tests of the module; the lines of the front page in sh and for CMake by
their own test.
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE, BUILD, AGENT = map(pathlib.Path, sys.argv[1:4])
del sys.argv[1:]
PAGES = [SOURCE / "README.md", *sorted((SOURCE / "docs").glob("*.md"))]
TESTED_ELSEWHERE = {"python", "sh", "cmake"}
COMPILERS = {"c": ["cc", "-xc", "-std=c11"], "cpp": ["c++", "-xc++", "-std=c++20"]}
DEVICE = "/qorv/devices/char/zaxdriver/ryn_vdr"


def fenced(language):
    for page in PAGES:
        for text in re.findall(rf"^```{language}\n(.*?)^```$", page.read_text(),
                               re.MULTILINE | re.DOTALL):
            yield page, text


def sessions():
    """Blocks of commands behind a `$` and what they print, without what sets them in."""
    for page in PAGES:
        text = re.sub(r"^```.*?^```$", "", page.read_text(), flags=re.MULTILINE | re.DOTALL)
        for block in re.findall(r"(?:^    .*\n)+", text, re.MULTILINE):
            if block.startswith("    $ "):
                yield page, re.sub(r"^    ", "", block, flags=re.MULTILINE)


class Examples(unittest.TestCase):
    def setUp(self):
        self.scratch = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.scratch)
        tools = f"{BUILD}/tools/vdrctl:{BUILD}/tools/vdrsim"
        self.environment = dict(os.environ, PATH=f"{tools}:{os.environ['PATH']}",
                                LD_LIBRARY_PATH=str(BUILD), XDG_CONFIG_HOME=str(self.scratch))

    def run_here(self, *command):
        return subprocess.run(command, cwd=self.scratch, env=self.environment, text=True, check=False,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT)

    def test_every_kind_of_block_is_known(self):
        kinds = {kind for page in PAGES
                 for kind in re.findall(r"^```(\w+)$", page.read_text(), re.MULTILINE)}
        self.assertLessEqual(kinds, {*COMPILERS, *TESTED_ELSEWHERE, "json"})

    def test_programs_run_and_parts_are_those_of_examples(self):
        whole = 0
        for language, compiler in COMPILERS.items():
            for page, text in fenced(language):
                if " main(" not in text:
                    shown = [path for path in (SOURCE / "examples").glob(f"*.{language}")
                             if text in path.read_text()]
                    self.assertTrue(shown, f"{page}: no example has these lines:\n{text}")
                    continue
                whole += 1
                program = self.scratch / "program"
                built = subprocess.run(
                    [*compiler, "-Wall", "-Wextra", "-pedantic", "-Werror", f"-I{SOURCE / 'include'}",
                     "-o", program, "-", "-xnone", BUILD / "libvdrzax.so"],
                    input=text, text=True, capture_output=True, check=False)
                self.assertEqual((built.returncode, built.stderr), (0, ""), page)
                ran = self.run_here("vdrsim", "run", "--", program)
                self.assertEqual(ran.returncode, 0, f"{page}: {ran.stdout}")
        self.assertGreater(whole, 0)

    def test_sessions_print_what_is_shown(self):
        found = list(sessions())
        self.assertGreater(len(found), 1)
        for page, shown in found:
            with self.subTest(page=page.name, begins=shown.splitlines()[0]):
                self.check_session(shown)

    def check_session(self, shown):
        """Carries out the commands as one shell would, echoed as they are shown."""
        lines = [line for line in shown.splitlines() if not line.startswith("$ PATH=")]
        inside = lines[0] == "$ vdrsim run -- bash"
        if inside:
            lines.pop(0)
        elif os.path.exists(DEVICE):
            self.skipTest("this host has a device")
        script = "".join(f"cat <<'SHOWN'\n{line}\nSHOWN\n{line[2:]}\n"
                         for line in lines if line.startswith("$ "))
        ran = self.run_here(*(("vdrsim", "run", "--") if inside else ()), "sh", "-c", script)
        self.assertEqual(ran.stdout.splitlines(), lines)

    def test_lines_with_vdrsim_are_understood(self):
        """Lines that start an agent: what becomes of it is the page's matter, but vdrsim starts it."""
        shutil.copy(AGENT, self.scratch / "my_agent")
        tried = 0
        for page, text in fenced(""):
            for line in re.findall(r"^vdrsim run .*", text, re.MULTILINE):
                tried += 1
                ran = self.run_here("sh", "-c", line)
                self.assertIn(ran.returncode, (0, 1, 3), f"{page}: {line}: {ran.stdout}")
        self.assertGreater(tried, 0)

    def test_json_is_json(self):
        for page, text in fenced("json"):
            try:
                json.loads(text)
            except ValueError:
                lines = text.splitlines()
                self.assertGreater(len(lines), 1, f"{page}: {text}")
                for line in lines:
                    json.loads(line)

    def test_the_names_of_the_page_on_names_are_taken(self):
        page, text = next(each for each in fenced("json") if each[0].name == "names.md")
        (self.scratch / "names.json").write_text(text)
        ran = self.run_here("vdrsim", "run", "--", "sh", "-c",
                            "vdrctl instance set e && vdrctl lif set e u --a3 7 &&"
                            " vdrctl --names names.json lif list e --columns vni,state")
        self.assertEqual((ran.returncode, ran.stdout.split()), (0, ["vni", "state", "7", "-"]), page)


if __name__ == "__main__":
    unittest.main()
