// vdrctl_speed start VDRCTL LOAD: writes the table of starts.
// vdrctl_speed batch VDRCTL LOAD SETS DUMP FOLDER: writes the rows of sets in a simulated datapath, within
// which it runs. FOLDER is for files.
// vdrctl_speed lists VDRCTL LOAD SETS DUMP FOLDER: writes the tables of lists there.
#include <fmt/format.h>
#include <sched.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "subject.h"

namespace {

// That this process may use.
int Processors() {
  cpu_set_t processors;
  return sched_getaffinity(0, sizeof processors, &processors) == 0 ? CPU_COUNT(&processors) : 0;
}

using Words = std::vector<std::string>;

constexpr int kLifs = 10000;
constexpr int kEndpoints = 28672;

void CompareStarts(const std::string& vdrctl, const std::string& load) {
  fmt::print("| Program | Time | `true` | Ratio | Target | Met |\n|---|---|---|---|---|---|\n");
  Subject least({load, "times", "true"});
  Subject version({load, "times", vdrctl, "--version"});
  PrintRow("`vdrctl --version`", Compare(version, least, 50, 51), 2.5);
  Subject dryRun({load, "times", vdrctl, "batch", "/dev/null", "--dry-run"});
  PrintRow("`vdrctl batch /dev/null --dry-run`", Compare(dryRun, least, 50, 51), 2.5);
}

class Work {
 public:
  explicit Work(char** paths)
      : vdrctl_(paths[0]), load_(paths[1]), sets_(paths[2]), dump_(paths[3]), folder_(paths[4]) {}

  void CompareBatch();
  void CompareLists();

 private:
  struct List {
    std::string what;
    Words command;
    std::size_t reply;  // in bytes
    std::string line() const { return fmt::format("{}", fmt::join(command, " ")); }
  };

  void Shell(const std::string& line) const;
  void WriteSets() const;
  void WriteEndpoints() const;
  void CompareList(const List& list) const;
  void PrintMemory(const List& list) const;
  std::string Path(const char* name) const { return folder_ + "/" + name; }

  std::string vdrctl_;
  std::string load_;
  std::string sets_;
  std::string dump_;
  std::string folder_;
  std::vector<List> lists_{
      {fmt::format("{} LIFs", kLifs), {"lif", "list", "edge-1"}, 961 * kLifs},
      {fmt::format("{} endpoints", kEndpoints), {"cluster", "endpoint", "list"}, 235 * kEndpoints}};
};

void Work::Shell(const std::string& line) const {
  if (std::system(line.c_str()) != 0) throw std::runtime_error(line);
}

// The sets are those of the loop in C.
void Work::WriteSets() const {
  std::ofstream lifs(Path("lifs"));
  for (int i = 0; i < kLifs; ++i) {
    lifs << fmt::format(
        "lif set edge-1 lif-{} --aux-name aux-{} --a3 {} --a4 4 --a5 {} --a6 6 --a7 7 --flags 8 "
        "--mac 02:00:00:00:{:02x}:{:02x}\n",
        i, i, i, i % 4096, i >> 8 & 255, i & 255);
  }
}

void Work::WriteEndpoints() const {
  std::ofstream endpoints(Path("endpoints"));
  endpoints << "bridge-lif set edge-1 uplink\n";
  for (int i = 0; i < kEndpoints; ++i) {
    endpoints << fmt::format(
        "bridge-endpoint add uplink endpoint-{} --second-name second-{} --value1 {} --value2 2 "
        "--tag {} --flag1 1 --flag2 2\n",
        i, i, i, i & 65535);
  }
}

void Work::CompareBatch() {
  WriteSets();
  Shell(fmt::format("'{}' instance set edge-1", vdrctl_));
  Subject batch({load_, "times", vdrctl_, "batch", Path("lifs")});
  Subject loop({load_, "times", sets_, std::to_string(kLifs)});
  const std::string where = Processors() == 1 ? ", all on one processor" : "";
  PrintRow(fmt::format("`vdrctl batch`, {} sets{}", kLifs, where), Compare(batch, loop, 1, 51),
           1.2);
  Subject working({load_, "times", sets_, std::to_string(kLifs), "500"});
  PrintRow(fmt::format("the loop with 0.5 us of work before each set{}", where),
           Compare(working, loop, 1, 51), std::nullopt);
}

void Work::CompareList(const List& list) const {
  Shell(fmt::format("'{}' --json {} >'{}'", vdrctl_, list.line(), Path("document")));
  Subject python({"/usr/bin/python3", dump_, Path("document")});
  for (const char* form : {"--no-header", "--json"}) {
    Words words{load_, "times", vdrctl_, form};
    words.insert(words.end(), list.command.begin(), list.command.end());
    Subject printed(words);
    const char* name = form == std::string("--json") ? "JSON" : "a table";
    PrintRow(fmt::format("{} as {}", list.what, name), Compare(printed, python, 1, 31), 0.2);
  }
}

void Work::PrintMemory(const List& list) const {
  for (const char* form : {"--no-header", "--json"}) {
    fmt::print("| `vdrctl {} {}` | {:.1f} MB | ", form, list.line(),
               static_cast<double>(list.reply) / 1e6);
    (void)std::fflush(stdout);
    Shell(fmt::format("'{}' memory '{}' {} {} | awk '{{ printf \"%.1f MB |\\n\", $1 / 1e3 }}'",
                      load_, vdrctl_, form, list.line()));
  }
}

void Work::CompareLists() {
  WriteSets();
  WriteEndpoints();
  Shell(fmt::format("'{}' instance set edge-1", vdrctl_));
  Shell(fmt::format("'{}' batch '{}' 2>/dev/null", vdrctl_, Path("lifs")));
  Shell(fmt::format("'{}' batch '{}' 2>/dev/null", vdrctl_, Path("endpoints")));
  fmt::print(
      "\n| List | vdrctl | `json.dump` | Ratio | Target | Met |\n|---|---|---|---|---|---|\n");
  for (const List& list : lists_) CompareList(list);
  fmt::print("\n| Command | Reply of the kernel | Resident at most |\n|---|---|---|\n");
  for (const List& list : lists_) PrintMemory(list);
}

}  // namespace

int main(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  try {
    if (what == "start" && argc == 4) {
      CompareStarts(argv[2], argv[3]);
    } else if (what == "batch" && argc == 7) {
      Work(argv + 2).CompareBatch();
    } else if (what == "lists" && argc == 7) {
      Work(argv + 2).CompareLists();
    } else {
      return 2;
    }
  } catch (const std::exception& failure) {
    std::cerr << "vdrctl_speed: " << failure.what() << '\n';
    return 1;
  }
}
