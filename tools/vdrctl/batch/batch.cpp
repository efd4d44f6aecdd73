#include "batch/batch.h"

#include <fmt/format.h>

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "batch/line.h"
#include "batch/progress.h"
#include "command_words.h"
#include "common/standard_streams.h"
#include "files.h"
#include "output/output.h"
#include "output/text.h"
#include "run.h"

namespace vdrctl {

namespace {

constexpr std::size_t kLongestFile = 256 << 20;
constexpr std::size_t kMostComplaints = 20;

// What is kept of a line that was found good: there may be millions.
struct Line {
  std::size_t number;
  const Command* command;
  Given given;
};

// The rows of the command itself: FILE, --dry-run, --keep-going.
struct Options {
  std::string file;
  bool dryRun;
  bool keepGoing;
};

Options OptionsOf(const Invocation& batch) {
  Given::Room room;
  const Values values = batch.given.In(room);
  return {values[0], values[1] != nullptr, values[2] != nullptr};
}

// Columns are for the commands that print something.
const Presentation& PresentationOf(const Command& command, const Presentation& presentation) {
  static const Presentation plain;
  return command.reply.form == Reply::Form::None ? plain : presentation;
}

class Batch {
 public:
  Batch(const Invocation& invocation, const Report& report)
      : options_(OptionsOf(invocation)), globals_(invocation.globals), report_(report) {
    report_.SetFile(Source());
  }

  int Run();

 private:
  void CheckLines();
  std::optional<Line> CheckLine(std::size_t number, std::string_view text);
  void CheckColumns(const Presentation& presentation);
  void Complain(std::size_t number, const std::string& complaint, const std::string& understood);
  int CarryOutAll(const Presentation& presentation);
  void Summarise(std::size_t done, std::size_t failed) const;
  std::string Source() const {
    return options_.file == "-" ? "standard input" : Escaped(options_.file);
  }

  Options options_;
  const GlobalValues& globals_;
  Report report_;
  std::vector<Line> lines_{};
  std::size_t wrong_ = 0;
  bool printsRecords_ = false;
};

int Batch::Run() {
  if (globals_.watch) throw WrongUsage("a file of commands can't be watched", "vdrctl batch");
  CheckLines();
  View view(globals_, printsRecords_);
  if (wrong_ == 0) CheckColumns(view.presentation());
  if (wrong_ > kMostComplaints) {
    report_.SetLine(0);
    const std::size_t more = wrong_ - kMostComplaints;
    report_.WrongUsage(fmt::format("{} more {} wrong", more, more == 1 ? "line is" : "lines are"),
                       "");
  }
  if (wrong_ > 0) return kWrongUsage;
  return options_.dryRun ? kDone : CarryOutAll(view.presentation());
}

void Batch::CheckLines() {
  const auto bytes =
      ReadFile(options_.file, kLongestFile, "a file of commands has at most 256 MiB");
  std::string_view rest(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  for (std::size_t number = 1; !rest.empty(); ++number) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    if (auto line = CheckLine(number, rest.substr(0, end))) lines_.push_back(std::move(*line));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
}

// Nothing for a line that is empty, and for one that is wrong.
std::optional<Line> Batch::CheckLine(std::size_t number, std::string_view text) {
  std::string complaint;
  std::string understood;
  try {
    const auto words = SplitLine(text);
    if (words.empty()) return std::nullopt;
    auto parsed = Parse(words, lines_.empty() ? nullptr : lines_.back().command);
    auto* invocation = std::get_if<Invocation>(&parsed);
    if (!invocation) {
      complaint = "help and version are not for a file of commands";
    } else if (!invocation->command->handler.call) {
      complaint = "a file of commands can't run another one";
    } else if (invocation->globals.IsGiven()) {
      complaint = "options that hold for all commands stand behind 'vdrctl batch'";
    } else {
      printsRecords_ = printsRecords_ || !invocation->command->reply.layouts.empty();
      return Line{number, invocation->command, std::move(invocation->given)};
    }
  } catch (const WrongLine& line) {
    complaint = line.what();
  } catch (const WrongUsage& wrong) {
    complaint = wrong.what();
    understood = wrong.words();
  }
  Complain(number, complaint, understood);
  return std::nullopt;
}

// Whether the commands have the columns that were asked for is known before the first is carried out.
void Batch::CheckColumns(const Presentation& presentation) {
  if (!globals_.columns && !globals_.sort) return;
  Writer unused;
  for (const Line& line : lines_) {
    try {
      const Output out(PresentationOf(*line.command, presentation), line.command->reply, unused);
    } catch (const NoSuchColumn& none) {
      Complain(line.number, none.what(), "vdrctl " + FullName(*line.command));
    }
  }
}

void Batch::Complain(std::size_t number, const std::string& complaint,
                     const std::string& understood) {
  if (++wrong_ > kMostComplaints) return;
  report_.SetLine(number);
  report_.WrongUsage(complaint, understood);
}

int Batch::CarryOutAll(const Presentation& presentation) {
  Writer writer(stdout);
  Progress progress(lines_.size());
  std::size_t done = 0;
  std::size_t failed = 0;
  int status = kDone;
  // Whoever comes at once finds the device still awake: little is done between two commands, and
  // nothing is freed.
  Invocation invocation;
  for (Line& line : lines_) {
    progress.Show(done + failed);
    invocation.command = line.command;
    std::swap(invocation.given, line.given);
    report_.SetLine(line.number);
    if (&line != &lines_.back()) (&line)[1].given.Fetch();
    const int ending =
        Execute(invocation, PresentationOf(*line.command, presentation), writer, report_);
    ending == kDone ? ++done : ++failed;
    if (status == kDone) status = ending;
    if (ending != kDone && !options_.keepGoing) break;
    writer.Part();
  }
  progress.Clear();
  writer.Finish();
  Summarise(done, failed);
  return status;
}

void Batch::Summarise(std::size_t done, std::size_t failed) const {
  const std::size_t notTried = lines_.size() - done - failed;
  if (globals_.json) {
    tools::Tell(
        fmt::format("{{\"done\":{},\"failed\":{},\"notTried\":{}}}\n", done, failed, notTried));
  } else {
    tools::Complain("vdrctl", fmt::format("{}: {} done, {} failed, {} not tried", Source(), done,
                                          failed, notTried));
  }
}

}  // namespace

int RunBatch(const Invocation& batch, const Report& report) { return Batch(batch, report).Run(); }

}  // namespace vdrctl
