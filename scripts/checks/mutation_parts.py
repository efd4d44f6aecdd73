"""What is mutated, and which tests judge it."""
import collections
import json
import os
import re

# A check runs tests: a command, and for how long it may run, in seconds.
Check = collections.namedtuple("Check", "name command seconds passes environment")

CODES = "library/channel/command_code.h"
SECONDS_OF_UNIT_TESTS = 120
# Tests that start the tools for the sake of something else: what ships, pages, examples, faces.
OTHERS = ("Package.", "Docs.", "Examples.", "Cxx.", "Python.", "Memcheck.", "guard.")


class Library:
    """Judged by the unit tests: those of the changed source, then of its family, then all."""

    least_killed = 98.0
    folders = ("library",)
    targets = ("unit_tests",)
    programs = ("libvdrzax.so.1.0.0", "tests/unit_tests")
    # It does not matter for the tools how fast they are; the library is tested as it ships.
    is_precompiled = False
    flags = ()
    link_flags = ()

    def __init__(self, baseline):
        self.baseline = baseline
        self.suites = self.list_suites()
        # Under a sanitizer a mutant is tried by the tests of its own sources alone.
        baseline.passes(self.check(self.suites_of("library/") if baseline.is_sanitized else ()))

    def list_suites(self):
        """The suites of each test file."""
        listing = self.baseline.build / "suites.json"
        self.baseline.run(["tests/unit_tests", "--gtest_list_tests",
                           f"--gtest_output=json:{listing}"])
        suites = collections.defaultdict(set)
        for suite in json.loads(listing.read_text())["testsuites"]:
            for test in suite["testsuite"]:
                path = test["file"].removeprefix(f"{self.baseline.tree}/tests/")
                suites[path].add(suite["name"])
        return suites

    def suites_of(self, prefix):
        return set().union(*[suites for path, suites in self.suites.items()
                             if path.startswith(prefix)])

    def check(self, suites):
        wanted = ":".join(f"{suite}.*" for suite in sorted(suites)) or "*"
        return Check("unit_tests", ("tests/unit_tests", "--gtest_fail_fast", "--gtest_brief=1",
                                    f"--gtest_filter={wanted}"),
                     SECONDS_OF_UNIT_TESTS, (0,), {})

    def steps(self, mutant, text):
        """What is compiled and which tests are run one after the other, until one fails."""
        library, tests = self.objects(mutant, text)
        if not library + tests:
            return []
        found = [(tests, self.suites_of("library/channel/"))] if tests else []
        for name in library:
            own = name.split(".dir/")[1].removesuffix(".cpp.o") + "_test.cpp"
            found.append(([name], self.suites_of(own)))
        folder = os.path.dirname(mutant.path)
        if folder != "library/channel":
            found.append((library, self.suites_of(f"{folder}/")))
        found = [(names, suites) for names, suites in found if suites]
        if not self.baseline.is_sanitized:
            found.append((library + tests, ()))
        return [(names, self.check(suites)) for names, suites in found]

    def objects(self, mutant, text):
        """What is compiled of the mutant, of the library and of the tests."""
        objects = self.baseline.objects[mutant.path]
        library = sorted((name for name in objects if name.startswith("CMakeFiles/vdrzax.dir")),
                         key=lambda name: ("/instance/" not in name, name))
        if mutant.path == CODES:
            code = re.findall(r"^  (\w+) = ", text[:mutant.start], re.MULTILINE)[-1]
            library = [name for name in library if self.mentions(name, code)]
        return library, [name for name in objects if name.startswith("tests/CMakeFiles/unit_test")]

    def programs_of(self, check):
        return self.programs

    def mentions(self, name, code):
        """Codes are names: only the sources that use one depend on its value."""
        with open(self.baseline.compile[name][-1]) as source:
            return re.search(rf"\bCommandCode::{code}\b", source.read())


class Tool:
    """Judged by its unit tests and by all system tests that start it."""

    least_killed = 95.0
    is_precompiled = True
    flags = ("-O0", "-g0", "-U_FORTIFY_SOURCE")
    link_flags = ("-fuse-ld=lld",)

    def __init__(self, baseline):
        self.baseline = baseline
        self.checks = []
        self.started = {}
        programs = set()
        for name, test in self.tests():
            used = {word for word in test.command if self.is_own(word)}
            if used and not name.startswith(OTHERS):
                programs |= used
                self.checks.append(test._replace(seconds=baseline.passes(test) * 8 + 5))
        prefix = f"{baseline.build}/"
        self.programs = sorted(program.removeprefix(prefix) for program in programs)

    def is_own(self, word):
        return any(word.startswith(f"{self.baseline.build}/{folder}/") for folder in self.built)

    def tests(self):
        """All tests of the build, those of one suite together."""
        listing = json.loads(self.baseline.run(["ctest", "--show-only=json-v1"]))
        found = {}
        for test in listing["tests"]:
            command = test.get("command", [])
            properties = {entry["name"]: entry["value"] for entry in test["properties"]}
            name = test["name"]
            if "--gtest_also_run_disabled_tests" in command:
                suite = re.search("--gtest_filter=(.*?)\\.", " ".join(command))[1]
                name = f"{os.path.basename(command[0])}.{suite}"
                command = [command[0], "--gtest_fail_fast", "--gtest_brief=1",
                           f"--gtest_filter={suite}.*"]
            environment = dict(entry.split("=", 1) for entry in properties.get("ENVIRONMENT", []))
            passes = (0, properties.get("SKIP_RETURN_CODE", 0))
            found[name] = Check(name, tuple(command), None, passes, environment)
        return found.items()

    def steps(self, mutant, text):
        """The checks that most probably notice come first: those that are named like the source or
        its folder, then the fastest."""
        folder, name = os.path.split(mutant.path)
        known = (os.path.splitext(name)[0], os.path.basename(folder))

        def order(check):
            words = [word.lower() for word in re.sub(r"^vdr\w+?[._]", "", check.name).split(".")]
            alike = sum(max(len(os.path.commonprefix([each, word])) for each in known)
                        for word in words)
            return -alike, check.seconds

        objects = set(self.baseline.objects[mutant.path])
        found = []
        for check in sorted(self.checks, key=order):
            needed = objects.intersection(word for program in self.programs_of(check)
                                          for word in self.baseline.link_command(program))
            if needed:
                found.append((sorted(needed), check))
        return found

    def programs_of(self, check):
        """The programs that a check starts, and those that these know by their path."""
        if check.command not in self.started:
            named = self.among_programs(check.command)
            known = [word.split('"')[1] for program in named
                     for name in self.baseline.link_command(program)
                     for word in self.baseline.compile.get(name, ()) if '"' in word]
            self.started[check.command] = named | self.among_programs(known)
        return self.started[check.command]

    def among_programs(self, words):
        return {program for program in self.programs if f"{self.baseline.build}/{program}" in words}


class Vdrctl(Tool):
    folders = ("tools/vdrctl",)
    built = ("tools/vdrctl", "tests/vdrctl")
    targets = ("tools/vdrctl/all", "tools/vdrsim/all", "tests/guard/all", "tests/vdrctl/all",
               "vdrsim_refuse")


class Vdrsim(Tool):
    folders = ("tools/vdrsim",)
    built = ("tools/vdrsim", "tests/vdrsim")
    targets = ("tools/vdrctl/all", "tools/vdrsim/all", "tests/guard/all", "tests/vdrsim/all",
               "shared_datapath", "unit_tests")

    def tests(self):
        """Of the unit tests those that read the table of requests."""
        return [(name, test) for name, test in super().tests()
                if not name.startswith("unit_tests.") or name == "unit_tests.Requests"]

    def is_own(self, word):
        return super().is_own(word) or word == f"{self.baseline.build}/tests/unit_tests"


class Common(Tool):
    folders = ("tools/common",)
    built = ("tests/common",) + Vdrctl.built + Vdrsim.built
    targets = ("tests/common/all",) + Vdrctl.targets + Vdrsim.targets


PARTS = (Library, Common, Vdrctl, Vdrsim)


def sources(root):
    return [path.relative_to(root).as_posix()
            for part in PARTS for folder in part.folders
            for path in sorted((root / folder).rglob("*")) if path.suffix in (".h", ".cpp")]


def part_of(path):
    (part,) = [part for part in PARTS
               if any(path.startswith(f"{folder}/") for folder in part.folders)]
    return part
