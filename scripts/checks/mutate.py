"""Changes the library in one place at a time and has the unit tests find each change.

usage: mutate.py [--list] [--sample N] [--jobs N] [FILE...]    see scripts/checks/mutation
"""
import argparse
import collections
import concurrent.futures
import json
import os
import pathlib
import random
import re
import shlex
import shutil
import subprocess
import sys

import mutation_operators

ROOT = pathlib.Path(__file__).resolve().parents[2]
CODES = "library/channel/command_code.h"
# Where a source of the library has its tests.
OWN_TESTS = "library/"
EXPLAINED = ROOT / "scripts/checks/mutation-survivors.txt"
LEAST_KILLED = 98.0

# A mutant may allocate, wait or loop without end.
MEMORY_KIB = 6 * 1024 * 1024
SECONDS_OF_TESTS = 120


def sources():
    return [path.relative_to(ROOT).as_posix()
            for pattern in ("*.h", "*.cpp")
            for path in sorted((ROOT / "library").glob(f"*/{pattern}"))]


def read_codes():
    header = (ROOT / CODES).read_text()
    return re.findall(r"^  (\w+) = \d+,$", header, re.MULTILINE)


class Baseline:
    """The unchanged library and its tests, built from a copy of the tree."""

    def __init__(self, preset, directory, jobs):
        print(f"mutation: building the unchanged library and its tests: {preset}", flush=True)
        self.tree = directory / "tree"
        self.build = directory / preset
        self.is_sanitized = preset != "release"
        # A sanitizer reserves all addresses.
        self.memory = "unlimited" if self.is_sanitized else MEMORY_KIB
        self.run(["cmake", "--preset", preset, "-B", self.build, "-DVDRZAX_TESTS=ON"],
                 cwd=self.tree)
        self.run(["ninja", "-j", str(jobs), "unit_tests"])

        entries = json.loads((self.build / "compile_commands.json").read_text())
        commands = {}
        for entry in entries:
            words = shlex.split(entry["command"])
            commands[words[words.index("-o") + 1]] = words
        self.objects = collections.defaultdict(list)  # by source or header: what is compiled of it
        for found in re.finditer(r"^(\S+): #deps.*\n((?: .*\n)*)", self.run(["ninja", "-t", "deps"]),
                                 re.MULTILINE):
            for path in map(str.strip, found[2].splitlines()):
                if path.startswith(f"{self.tree}/") and found[1] in commands:
                    self.objects[path[len(f"{self.tree}/"):]].append(found[1])
        self.compile = commands
        self.links = {target: self.link_command(target) for target in
                      ("libvdrzax.so.1.0.0", "tests/unit_tests")}
        self.suites = self.list_suites()
        # Under a sanitizer a mutant is tried by the tests of its own sources alone.
        used = self.suites_of(OWN_TESTS if self.is_sanitized else "")
        self.run(["tests/unit_tests", filter_of(used)])

    def run(self, command, cwd=None):
        done = subprocess.run(command, cwd=cwd or self.build, text=True, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT)
        if done.returncode != 0:
            sys.exit(f"{done.stdout}\nmutation: the unchanged tree does not build or pass its tests")
        return done.stdout

    def link_command(self, target):
        last = self.run(["ninja", "-t", "commands", target]).splitlines()[-1]
        return [word for word in shlex.split(last) if word not in (":", "&&")]

    def list_suites(self):
        """The suites of each test file."""
        listing = self.build / "suites.json"
        self.run(["tests/unit_tests", "--gtest_list_tests", f"--gtest_output=json:{listing}"])
        suites = collections.defaultdict(set)
        for suite in json.loads(listing.read_text())["testsuites"]:
            for test in suite["testsuite"]:
                suites[test["file"][len(f"{self.tree}/tests/"):]].add(suite["name"])
        return suites

    def suites_of(self, prefix):
        return set().union(*[suites for path, suites in self.suites.items()
                             if path.startswith(prefix)])


def filter_of(suites):
    return "--gtest_filter=" + ":".join(f"{suite}.*" for suite in sorted(suites) or "*")


class Trial:
    """One mutant: what it changes is built beside the baseline, and the tests are run on it."""

    def __init__(self, baseline, mutant, text, directory):
        self.baseline = baseline
        self.mutant = mutant
        self.directory = directory
        self.compiled = {}
        self.code = None
        if mutant.path == CODES:
            self.code = re.findall(r"^  (\w+) = ", text[:mutant.start], re.MULTILINE)[-1]
        path = directory / mutant.path
        path.parent.mkdir(parents=True)
        path.write_text(text[:mutant.start] + mutant.replacement + text[mutant.end:])

    def judge(self):
        """How the mutant ends: "compiler", "tests", "sanitizers", "time" or "survived"."""
        for names, suites in self.steps(*self.objects()):
            if not self.build(names):
                return "compiler"
            found = self.run_tests(suites)
            if found:
                return "sanitizers" if self.baseline.is_sanitized else found
        return "survived"

    def objects(self):
        """What is compiled of the mutant, of the library and of the tests."""
        objects = self.baseline.objects[self.mutant.path]
        library = sorted((name for name in objects if name.startswith("CMakeFiles/vdrzax.dir")),
                         key=lambda name: ("/instance/" not in name, name))
        if self.code:
            library = [name for name in library if self.mentions(name, self.code)]
        tests = [name for name in objects if name.startswith("tests/CMakeFiles/unit_test")]
        return library, tests

    def mentions(self, name, code):
        """Codes are names: only the sources that use one depend on its value."""
        source = self.baseline.compile[name][-1]
        return re.search(rf"\bCommandCode::{code}\b", pathlib.Path(source).read_text())

    def steps(self, library, tests):
        """What is compiled and which suites are run one after the other, until one fails: each
        source with the tests of its own, then the family, at last all but under a sanitizer."""
        if not library + tests:
            return []
        found = [(tests, self.baseline.suites_of("library/channel/"))] if tests else []
        for name in library:
            own = name.split(".dir/")[1].removesuffix(".cpp.o") + "_test.cpp"
            found.append(([name], self.baseline.suites_of(own)))
        folder = os.path.dirname(self.mutant.path)
        if folder != "library/channel":
            found.append((library, self.baseline.suites_of(f"{folder}/")))
        found = [(names, suites) for names, suites in found if suites]
        return found if self.baseline.is_sanitized else found + [(library + tests, set())]

    def build(self, names):
        for name in names:
            if name in self.compiled:
                continue
            output = self.directory / name.replace("/", "_")
            command = list(self.baseline.compile[name])
            command[command.index("-o") + 1] = output
            source = command[-1]
            if source == f"{self.baseline.tree}/{self.mutant.path}":
                command[-1] = self.directory / self.mutant.path
            # A warning is no test.
            command[1:1] = ["-w", f"-I{self.directory}"]
            if self.execute(command) != 0:
                return False
            self.compiled[name] = output
        return True

    def link(self, target, output):
        command = list(self.baseline.links[target])
        used = [word for word in command if word in self.compiled]
        if not used:
            return None
        command = [self.compiled.get(word, word) for word in command]
        command[command.index("-o") + 1] = output
        if self.execute(command) != 0:
            sys.exit(f"mutation: {self.mutant.path}: a mutant does not link")
        return output

    def run_tests(self, suites):
        """How the named suites, or all, end it; None when they pass."""
        self.link("libvdrzax.so.1.0.0", self.directory / "libvdrzax.so.1")
        program = self.link("tests/unit_tests", self.directory / "unit_tests")
        status = self.execute([program or "tests/unit_tests", "--gtest_fail_fast",
                               "--gtest_brief=1", filter_of(suites)], SECONDS_OF_TESTS)
        return {0: None, 124: "time"}.get(status, "tests")

    def execute(self, command, seconds=600):
        limits = f"ulimit -c 0; ulimit -v {self.baseline.memory}; exec timeout -k 5 {seconds} \"$@\""
        return subprocess.run(["sh", "-c", limits, "sh", *map(str, command)],
                              cwd=self.baseline.build, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              env={**os.environ, "LD_LIBRARY_PATH": str(self.directory)}
                              ).returncode


def read_explained():
    """Explained survivors by file, text of the line and change; `*` stands for every change."""
    explained = {}
    for line in EXPLAINED.read_text().splitlines():
        if line and not line.startswith("#"):
            path, text, change, reason = line.split(" | ", 3)
            explained[path, text, change] = reason
    return explained


def describe(mutants, texts):
    """File, text of the line and change of each; a change that stands twice in a line is counted."""
    seen = collections.Counter()
    keys = []
    for mutant in mutants:
        text = texts[mutant.path]
        begin = text.rfind("\n", 0, mutant.start) + 1
        line = text[begin:text.find("\n", begin)].strip()
        place = (mutant.path, begin, mutant.change)
        seen[place] += 1
        suffix = f" ({seen[place]})" if seen[place] > 1 else ""
        keys.append((mutant.path, line, mutant.change + suffix))
    return keys


def main():
    parser = argparse.ArgumentParser(add_help=False)
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--sample", type=int)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("files", nargs="*")
    options = parser.parse_args()

    codes = read_codes()
    texts = {path: (ROOT / path).read_text() for path in options.files or sources()}
    mutants = [mutant for path, text in texts.items()
               for mutant in mutation_operators.collect(path, text, codes)]
    keys = describe(mutants, texts)
    chosen = range(len(mutants))
    if options.sample is not None and options.sample < len(mutants):
        chosen = sorted(random.Random(1).sample(chosen, options.sample))
    where = [f"{path}:{texts[path].count(chr(10), 0, mutant.start) + 1}"
             for mutant, (path, _, _) in zip(mutants, keys)]
    if options.list:
        for index in chosen:
            print(f"{where[index]}: {keys[index][2]}")
        return 0

    directory = ROOT / "build/mutation"
    trials = directory / "trials"
    shutil.rmtree(trials, ignore_errors=True)
    shutil.rmtree(directory / "tree", ignore_errors=True)
    shutil.copytree(ROOT, directory / "tree", ignore=shutil.ignore_patterns("build", ".git"))
    release, asan = [Baseline(preset, directory, options.jobs) for preset in ("release", "asan")]

    explained = read_explained()

    def reasons(key):
        return [known for known in (key, (*key[:2], "*")) if known in explained]

    print(f"mutation: {len(chosen)} mutants", flush=True)
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool, \
            open(directory / "results.txt", "w") as results:
        def judge(index):
            mutant = mutants[index]
            here = trials / str(index)
            ending = Trial(release, mutant, texts[mutant.path], here / "release").judge()
            if ending == "survived" and not reasons(keys[index]):
                ending = Trial(asan, mutant, texts[mutant.path], here / "asan").judge()
            shutil.rmtree(here)
            results.write(f"{ending}\t{where[index]}\t{keys[index][2]}\n")
            results.flush()
            return ending

        endings = dict(zip(chosen, pool.map(judge, chosen)))

    unused = set(explained)
    unexplained = 0
    for index, ending in endings.items():
        if ending != "survived":
            continue
        found = reasons(keys[index])
        unused.difference_update(found)
        unexplained += not found
        reason = explained[found[0]] if found else "NOT EXPLAINED"
        print(f"{where[index]}: {keys[index][2]}: {reason}")

    count = collections.Counter(endings.values())
    compiled = len(endings) - count["compiler"]
    killed = compiled - count["survived"]
    percentage = 100 * killed / compiled if compiled else 100.0
    print(f"mutation: {len(endings)} mutants, {count['compiler']} do not compile; of {compiled} that "
          f"do, {killed} are killed ({percentage:.2f} %): {count['tests']} by a unit test, "
          f"{count['sanitizers']} by one under the sanitizers, {count['time']} by not ending; "
          f"{count['survived']} survive, {unexplained} of them unexplained")
    failed = unexplained > 0
    if not options.files:
        failed = failed or percentage < LEAST_KILLED
        if options.sample is None:
            for path, line, change in sorted(unused):
                print(f"mutation: {EXPLAINED.name}: no such survivor: {path} | {line} | {change}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
