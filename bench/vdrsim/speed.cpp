// vdrsim_speed VDRSIM FLOOR LOAD FOLDER: writes the tables of the page. FOLDER is for files.
#include <fmt/format.h>

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "subject.h"
#include "whole_run.h"

namespace {

using Words = std::vector<std::string>;

struct Programs {
  std::string vdrsim;
  std::string floor;
  std::string load;
};

Words Join(Words words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

void CompareCommands(const Programs& programs) {
  struct Row {
    const char* what;
    const char* code;
    const char* capacity;
    int count;
  };
  constexpr Row kRows[] = {{"a command with a reply of 4 bytes", "9", "4", 2000},
                           {"a command with a reply of 577 kB", "0", "577577", 20}};
  constexpr Row kLargest = {"a command with a reply of 112 MB", "96", "111820800", 1};
  const auto load = [&](const Words& supervisor, const Row& row) {
    return Join(supervisor, {programs.load, "command", row.code, row.capacity});
  };
  const Words run = {programs.vdrsim, "run", "--"};
  fmt::print("| Command | vdrsim | Floor | Ratio | Target | Met |\n|---|---|---|---|---|---|\n");
  const Words floor = {programs.floor};
  for (const Row& row : kRows) {
    Subject subject(load(run, row));
    Subject least(load(floor, row));
    PrintRow(row.what, Compare(subject, least, row.count, 51), 1.25);
  }
  PrintRow(kLargest.what,
           CompareAnew(load(run, kLargest), load(floor, kLargest), kLargest.count, 21), 1.25);
}

void CompareClients(const Programs& programs) {
  fmt::print("\n| Clients | Commands a second | Floor |\n|---|---|---|\n");
  for (const char* clients : {"1", "2", "4", "8"}) {
    const Words load = {programs.load, "clients", clients, "9", "4"};
    Subject subject(Join({programs.vdrsim, "run", "--"}, load));
    Subject floor(Join({programs.floor}, load));
    const Comparison result = Compare(subject, floor, 16000, 11);
    fmt::print("| {} | {:.0f} | {:.0f} |\n", clients, 1e9 / result.nanoseconds,
               1e9 / result.floorNanoseconds);
  }
}

// A journal is written to a file.
void CompareJournals(const Programs& programs, const std::string& folder) {
  struct Row {
    const char* what;
    const char* code;
    const char* capacity;
    int count;
  };
  constexpr Row kRows[] = {{"a command without input", "9", "4", 2000},
                           {"a command with an input of 968 bytes", "61", "0", 2000},
                           {"a command with a reply of 577 kB", "0", "577577", 20}};
  fmt::print(
      "\n| Command | With a journal | Without | Ratio | Target | Met "
      "|\n|---|---|---|---|---|---|\n");
  const std::string journal = folder + "/journal";
  for (const auto& [what, code, capacity, count] : kRows) {
    const Words load = {programs.load, "command", code, capacity};
    Subject with(Join({programs.vdrsim, "run", "--journal", journal, "--"}, load));
    Subject without(Join({programs.vdrsim, "run", "--"}, load));
    PrintRow(what, Compare(with, without, count, 51), 1.3);
  }
  std::filesystem::remove(journal);
}

void PrintWholeRun(const char* what, const WholeRun& run) {
  fmt::print("| {} | {:.1f} s | {:.0f} MB |\n", what, run.seconds, run.megabytes);
  std::cout.flush();
}

// A million commands, written down and then replayed.
void ReplayMillion(const Programs& programs, const std::string& folder) {
  const std::string journal = folder + "/journal";
  const Words load = {"--", programs.load, "row", "1000000"};
  const auto run = [&](const Words& options) {
    return RunToEnd(Join(Join({programs.vdrsim}, options), load));
  };
  fmt::print("\n| A million commands | Time | Memory |\n|---|---|---|\n");
  PrintWholeRun("simulated", run({"run"}));
  PrintWholeRun("with a journal", run({"run", "--journal", journal}));
  PrintWholeRun("replayed by match", run({"replay", journal}));
  PrintWholeRun("replayed strictly", run({"replay", "--strict", journal}));
  fmt::print("\nThe journal of these has {} MB.\n", std::filesystem::file_size(journal) >> 20);
  std::filesystem::remove(journal);
}

// Something to search, compile and keep versions of.
void MakeFiles(const std::filesystem::path& folder) {
  for (int directory = 0; directory < 100; ++directory) {
    const auto path = folder / "tree" / std::to_string(directory);
    std::filesystem::create_directories(path);
    for (int file = 0; file < 40; ++file) {
      std::ofstream(path / fmt::format("{}.c", file))
          << "#include <stdio.h>\n#include <stdlib.h>\nint f" << file << "(void) { return "
          << directory << "; }\n";
    }
  }
  const std::string tree = (folder / "tree").string();
  const std::string line = "cd " + tree +
                           " && git init -q && git add . && git -c user.name=bench "
                           "-c user.email=bench commit -qm files";
  if (std::system(line.c_str()) != 0) throw std::runtime_error("cannot make a repository");
}

void ComparePrograms(const Programs& programs, const std::string& folder) {
  struct Row {
    const char* what;
    const char* line;
    int count;
  };
  constexpr Row kRows[] = {
      {"`find`, 4,000 files", "find tree -type f -size +1 >/dev/null", 5},
      {"`git status`, 4,000 files", "git -C tree status --short >/dev/null", 3},
      {"`gcc`, 10 files",
       "for i in 0 1 2 3 4 5 6 7 8 9; do gcc -O1 -c tree/1/$i.c -o /dev/null; done", 1},
      {"Python, 20,000 opens", "python3 -c 'for i in range(20000): open(\"tree/1/1.c\").close()'",
       1},
      {"`grep -r`, 4,000 files", "grep -r nothing tree >/dev/null || true", 5},
      {"300 short processes", "i=0; while [ $i -lt 300 ]; do /bin/true; i=$((i+1)); done", 1}};
  fmt::print(
      "\n| Program | In a run | Outside | Ratio | Target | Met |\n|---|---|---|---|---|---|\n");
  std::filesystem::current_path(folder);
  for (const auto& [what, line, count] : kRows) {
    const Words load = {programs.load, "line", line};
    Subject subject(Join({programs.vdrsim, "run", "--"}, load));
    Subject outside(load);
    PrintRow(what, Compare(subject, outside, count, 21), 1.15);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) return 2;
  const Programs programs{argv[1], argv[2], argv[3]};
  try {
    CompareCommands(programs);
    CompareClients(programs);
    CompareJournals(programs, argv[4]);
    ReplayMillion(programs, argv[4]);
    MakeFiles(argv[4]);
    ComparePrograms(programs, argv[4]);
  } catch (const std::exception& failure) {
    std::cerr << "vdrsim_speed: " << failure.what() << '\n';
    return 1;
  }
}
