"""The unchanged tree with its tests, and mutants that are built beside it and tried."""
import collections
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import threading
import time

# A mutant may allocate, wait or loop without end.
MEMORY_KIB = 6 * 1024 * 1024
COMPILER_MEMORY_KIB = 2 * 1024 * 1024
COMPILER_SECONDS = 120

# Tests run where no signal of a mutant reaches anybody else, in a namespace of processes that ends
# with its first one, and with the mutant in the place of the programs that it was made from.
CONFINED = ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc"]
NOT_CONFINED = 113
CONFINED_SHELL = f"""
while [ "$1" != -- ]; do
  mount --bind "$1" "$2" || exit {NOT_CONFINED}
  shift 2
done
shift
ulimit -c 0
ulimit -v "$MUTATION_MEMORY"
"$@"
exit $?
"""


class Baseline:
    """The unchanged sources and their tests, built from a copy of the tree."""

    def __init__(self, preset, directory, jobs, parts):
        print(f"mutation: building what is unchanged, and its tests: {preset}", flush=True)
        self.tree = directory / "tree"
        self.build = directory / preset
        self.is_sanitized = preset != "release"
        self.run(["cmake", "--preset", preset, "-B", self.build, "-DVDRZAX_TESTS=ON"],
                 cwd=self.tree)
        targets = {target for part in parts for target in part.targets}
        self.run(["ninja", "-j", str(jobs), *sorted(targets)])

        self.compile = {}
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            words = shlex.split(entry["command"])
            if os.path.basename(words[0]) == "ccache":
                del words[0]  # No mutant is compiled twice.
            self.compile[words[words.index("-o") + 1]] = words
        self.objects = collections.defaultdict(list)  # by source or header: what is compiled of it
        for found in re.finditer(r"^(\S+): #deps.*\n((?: .*\n)*)", self.run(["ninja", "-t", "deps"]),
                                 re.MULTILINE):
            for path in map(str.strip, found[2].splitlines()):
                # A compiler cache may have written it relative to the build.
                path = os.path.normpath(self.build / path)
                if path.startswith(f"{self.tree}/") and found[1] in self.compile:
                    self.objects[path.removeprefix(f"{self.tree}/")].append(found[1])
        self.links = {}
        self.headers = set()
        self.alike = collections.defaultdict(list)  # by how they are compiled
        for name in sorted(self.compile):
            self.alike[tuple(self.flags_of(name))].append(name)
        self.lock = threading.Lock()
        self.judges = {part: part(self) for part in parts}

    def run(self, command, cwd=None):
        done = subprocess.run(command, cwd=cwd or self.build, text=True, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT)
        if done.returncode != 0:
            sys.exit(f"{done.stdout}\nmutation: the unchanged tree does not build or pass its tests")
        return done.stdout

    def passes(self, check):
        """Runs a check as a mutant's is, and returns how long it took."""
        begin = time.monotonic()
        if self.try_out(check, [], self.build) not in check.passes:
            sys.exit(f"mutation: the unchanged tree does not pass {check.name}")
        return time.monotonic() - begin

    def try_out(self, check, replacements, room):
        """The exit status of a check with programs replaced, None when it did not end."""
        confined = CONFINED if os.geteuid() == 0 else [*CONFINED, "--map-root-user"]
        # A sanitizer reserves all addresses.
        memory = "unlimited" if self.is_sanitized else str(MEMORY_KIB)
        command = [*confined, "sh", "-c", CONFINED_SHELL, "sh", *map(str, replacements), "--",
                   *check.command]
        try:
            status = subprocess.run(command, cwd=self.build, stdin=subprocess.DEVNULL,
                                    stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                    timeout=check.seconds,
                                    env={**os.environ, **check.environment, "TMPDIR": str(room),
                                         "MUTATION_MEMORY": memory}).returncode
        except subprocess.TimeoutExpired:
            return None
        if status == NOT_CONFINED:
            sys.exit("mutation: tests can't be confined: it takes namespaces for processes and mounts")
        return status

    def link_command(self, program):
        """How a program is linked, of objects alone."""
        if program not in self.links:
            last = self.run(["ninja", "-t", "commands", program]).splitlines()[-1]
            words = []
            # Within quotes a shell takes the backslash away from a dollar as well.
            for word in shlex.split(last.replace(r"\$", "$")):
                is_own_archive = word.endswith(".a") and not word.startswith("/")
                # An archive may be named more than once.
                words += [member for member in self.members(word) if member not in words] \
                    if is_own_archive else [word]
            self.links[program] = [word for word in words if word not in (":", "&&")]
        return self.links[program]

    def members(self, archive):
        last = self.run(["ninja", "-t", "commands", archive]).splitlines()[-1]
        return [word for word in shlex.split(last) if word.endswith(".o")]

    def precompiled(self, name, flags, path):
        """A header, compiled beforehand with the flags of mutants, of what an object includes that
        does not depend on the file at `path`."""
        source = pathlib.Path(self.compile[name][-1])
        if str(source) == f"{self.tree}/{path}":
            header, sources, kind = name, [source], '["<]'
        else:
            alike = self.siblings(name)
            sources = [self.tree / one for one, names in self.objects.items()
                       if not set(names).isdisjoint(alike)]
            header, kind = f"{alike[0]}.system", "<(?!vdrzax)"
        header = self.build / "precompiled" / f"{header}.h"
        with self.lock:
            if header not in self.headers:
                self.headers.add(header)
                self.precompile(header, self.included(sources, kind),
                                [*self.flags_of(name), *flags, "-iquote", source.parent])
        return header

    def siblings(self, name):
        """The objects that are compiled as this one is; they share what they need of others."""
        return self.alike[tuple(self.flags_of(name))]

    def flags_of(self, name):
        command = self.compile[name]
        return command[:command.index("-o")]

    def included(self, paths, kind):
        return sorted({line for path in paths
                       for line in re.findall(f"^#include {kind}.*", path.read_text(), re.MULTILINE)})

    def precompile(self, header, included, command):
        header.parent.mkdir(parents=True, exist_ok=True)
        header.write_text("\n".join(included) + "\n")
        self.run([*command, "-w", "-x", "c++-header", header, "-o", f"{header}.gch"])


class Trial:
    """One mutant: what it changes is built beside the baseline, and the tests are run on it."""

    def __init__(self, baseline, judge, mutant, text, directory):
        self.baseline = baseline
        self.judge_of_part = judge
        self.mutant = mutant
        self.text = text
        self.directory = directory
        self.compiled = {}
        self.linked = {}
        # The compiler looks for a header beside the file that includes it, so all are here.
        self.tree = directory / "tree"
        shutil.copytree(baseline.tree, self.tree, copy_function=os.symlink)
        path = self.tree / mutant.path
        path.unlink()
        path.write_text(text[:mutant.start] + mutant.replacement + text[mutant.end:])

    def judge(self):
        """How the mutant ends: "compiler", "tests", "sanitizers", "time" or "survived"."""
        for names, check in self.judge_of_part.steps(self.mutant, self.text):
            if not all(self.compile(name) for name in names):
                return "compiler"
            status = self.baseline.try_out(check, self.link(check), self.directory)
            if status is None:
                return "time"
            if status not in check.passes:
                return "sanitizers" if self.baseline.is_sanitized else "tests"
        return "survived"

    def compile(self, name):
        if name in self.compiled:
            return True
        output = self.directory / name.replace("/", "_")
        part = self.judge_of_part
        command = [word.replace(f"{self.baseline.tree}/", f"{self.tree}/")
                   for word in self.baseline.compile[name]]
        # A warning is no test.
        where = command.index("-o")
        command[where:where + 2] = ["-w", *part.flags, "-o", output]
        if part.is_precompiled:
            command[1:1] = ["-include", self.baseline.precompiled(name, part.flags,
                                                                  self.mutant.path)]
        self.compiled[name] = output
        # A program that was linked without it is linked again.
        self.linked = {program: linked for program, linked in self.linked.items()
                       if name not in self.baseline.link_command(program)}
        return self.execute(command)

    def link(self, check):
        """Links what has changed of the programs of a check. Returns each with the one that it
        stands for."""
        replacements = []
        for program in self.judge_of_part.programs_of(check):
            if self.compiled.keys() & set(self.baseline.link_command(program)):
                if program not in self.linked:
                    self.linked[program] = self.link_program(program)
                replacements += [self.linked[program], self.baseline.build / program]
        return replacements

    def link_program(self, program):
        output = self.directory / os.path.basename(program)
        command = [str(self.compiled.get(word, word))
                   for word in self.baseline.link_command(program)]
        command[command.index("-o") + 1] = str(output)
        if not self.execute([*command, *self.judge_of_part.link_flags]):
            sys.exit(f"mutation: {self.mutant.path}: a mutant does not link")
        return output

    def execute(self, command):
        """Whether a compiler or linker succeeds; what it evaluates may loop without end, too."""
        limit = f"--as={COMPILER_MEMORY_KIB * 1024}"
        try:
            return subprocess.run(["prlimit", limit, *map(str, command)], cwd=self.baseline.build,
                                  stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL,
                                  timeout=COMPILER_SECONDS).returncode == 0
        except subprocess.TimeoutExpired:
            return False
