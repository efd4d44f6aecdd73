"""Changes the library or a tool in one place at a time and has the tests find each change.

usage: mutate.py [--list] [--sample N] [--resume] [--jobs N] [FILE...]    see scripts/checks/mutation
"""
import argparse
import collections
import concurrent.futures
import os
import pathlib
import random
import re
import shutil
import sys

import mutation_operators
import mutation_parts
import mutation_text
import mutation_trials

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXPLAINED = ROOT / "scripts/checks/mutation-survivors.txt"


def read_codes():
    header = (ROOT / mutation_parts.CODES).read_text()
    return re.findall(r"^  (\w+) = \d+,$", header, re.MULTILINE)


def read_explained():
    """Explained survivors by file, text of the line and change; `*` stands for every change."""
    explained = {}
    for line in EXPLAINED.read_text().splitlines():
        if line and not line.startswith("#"):
            path, rest = line.split(" | ", 1)
            text, change, reason = rest.rsplit(" | ", 2)
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


class Campaign:
    """The mutants of some sources, how each ended, and what that says."""

    def __init__(self, files, sample):
        self.whole = not files and sample is None
        self.texts = {path: (ROOT / path).read_text()
                      for path in files or mutation_parts.sources(ROOT)}
        codes = read_codes()
        self.mutants = [mutant for path, text in self.texts.items()
                        for mutant in mutation_operators.collect(path, text, codes)]
        self.keys = describe(self.mutants, self.texts)
        self.chosen = range(len(self.mutants))
        if sample is not None and sample < len(self.mutants):
            self.chosen = sorted(random.Random(1).sample(self.chosen, sample))
        self.explained = read_explained()
        self.endings = {}

    def part(self, index):
        return mutation_parts.part_of(self.mutants[index].path)

    def parts(self):
        used = {self.part(index) for index in self.chosen}
        return [part for part in mutation_parts.PARTS if part in used]

    def where(self, index):
        mutant = self.mutants[index]
        line = self.texts[mutant.path].count("\n", 0, mutant.start) + 1
        return f"{mutant.path}:{line}: {self.keys[index][2]}"

    def reasons(self, index):
        path, line, change = self.keys[index]
        return [key for key in ((path, line, change), (path, line, "*")) if key in self.explained]

    def record(self, index):
        """The line of the results, behind the ending: where a mutant is, and what the line says."""
        return f"{self.where(index)}\t{self.keys[index][1]}"

    def resume(self, results):
        """Takes over what earlier campaigns killed, as long as its line stands as it was."""
        known = {}
        for line in results.read_text().splitlines():
            ending, where, text = line.split("\t", 2)
            path, _, change = where.split(":", 2)
            known[path, text, change.lstrip()] = ending
        found = {index: known.get(self.keys[index]) for index in self.chosen}
        self.endings = {index: ending for index, ending in found.items()
                        if ending not in (None, "survived")}
        print(f"mutation: {len(self.endings)} are known to be killed")

    def try_all(self, jobs, resumes):
        directory = ROOT / "build/mutation"
        results = directory / "results.txt"
        if resumes and results.exists():
            self.resume(results)
        trials = directory / "trials"
        shutil.rmtree(trials, ignore_errors=True)
        shutil.rmtree(directory / "tree", ignore_errors=True)
        shutil.copytree(ROOT, directory / "tree", ignore=shutil.ignore_patterns("build", ".git"))
        baselines = [mutation_trials.Baseline(preset, directory, jobs, self.parts())
                     for preset in ("release", "asan")]
        self.try_nothing(baselines, trials)
        left = [index for index in self.chosen if index not in self.endings]
        print(f"mutation: {len(left)} mutants", flush=True)
        with concurrent.futures.ThreadPoolExecutor(jobs) as pool, \
                open(results, "a" if resumes else "w") as log:
            def judge(index):
                ending = self.judge(index, baselines, trials / str(index))
                log.write(f"{ending}\t{self.record(index)}\n")
                log.flush()
                return ending

            self.endings.update(zip(left, pool.map(judge, left)))

    def try_nothing(self, baselines, directory):
        """A source that is written anew without a change has to survive."""
        first = {self.part(index): self.mutants[index].path for index in reversed(self.chosen)}
        for part, path in first.items():
            same = mutation_text.Mutant(path, 0, 0, "", "nothing")
            for baseline in baselines:
                ending = mutation_trials.Trial(baseline, baseline.judges[part], same,
                                               self.texts[path], directory / "same").judge()
                shutil.rmtree(directory / "same")
                if ending != "survived":
                    sys.exit(f"mutation: {path}: without a change it ends by: {ending}")

    def judge(self, index, baselines, directory):
        """How a mutant ends. Under the sanitizers only what has no explanation is tried."""
        mutant = self.mutants[index]
        for baseline in baselines:
            judge = baseline.judges[self.part(index)]
            here = directory / baseline.build.name
            ending = mutation_trials.Trial(baseline, judge, mutant, self.texts[mutant.path],
                                           here).judge()
            shutil.rmtree(here)
            if ending != "survived" or self.reasons(index):
                break
        return ending

    def report(self):
        """Prints what survived and the counts of each part. Returns whether all is well."""
        survivors = [index for index, ending in self.endings.items() if ending == "survived"]
        unexplained = [index for index in survivors if not self.reasons(index)]
        for index in survivors:
            found = self.reasons(index)
            print(f"{self.where(index)}: "
                  f"{self.explained[found[0]] if found else 'NOT EXPLAINED'}")
        enough = all([self.report_part(part) for part in self.parts()])
        unused = []
        if self.whole:
            used = {key for index in survivors for key in self.reasons(index)}
            unused = sorted(set(self.explained) - used)
            for path, line, change in unused:
                print(f"mutation: {EXPLAINED.name}: no such survivor: {path} | {line} | {change}")
        return enough and not unexplained and not unused

    def report_part(self, part):
        count = collections.Counter(ending for index, ending in self.endings.items()
                                    if self.part(index) is part)
        compiled = count.total() - count["compiler"]
        killed = compiled - count["survived"]
        percentage = 100 * killed / compiled if compiled else 100.0
        print(f"mutation: {part.folders[0]}: {count.total()} mutants, {count['compiler']} do not "
              f"compile; of {compiled} that do, {killed} are killed ({percentage:.2f} %): "
              f"{count['tests']} by a test, {count['sanitizers']} by one under the sanitizers, "
              f"{count['time']} by not ending; {count['survived']} survive")
        return not self.whole or percentage >= part.least_killed


def main():
    parser = argparse.ArgumentParser(add_help=False)
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--sample", type=int)
    parser.add_argument("--resume", action="store_true")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("files", nargs="*")
    options = parser.parse_args()

    campaign = Campaign(options.files, options.sample)
    if options.list:
        for index in campaign.chosen:
            print(campaign.where(index))
        return 0
    campaign.try_all(options.jobs, options.resume)
    return 0 if campaign.report() else 1


if __name__ == "__main__":
    sys.exit(main())
