#include "watch.h"

#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <string>

#include "common/standard_streams.h"
#include "output/history.h"
#include "output/text.h"
#include "run.h"

namespace vdrctl {

namespace {

using Clock = std::chrono::steady_clock;

volatile sig_atomic_t endingSignal = 0;

void TakeSignal(int number) { endingSignal = number; }

constexpr int kEndingSignals[] = {SIGINT, SIGTERM, SIGHUP};

double Interval(const std::string& text) {
  double seconds = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, seconds);
  if (error != std::errc{} || stop != end || !(seconds >= 0.1 && seconds <= 86400)) {
    throw WrongUsage(
        "--watch: '" + Escaped(text) + "' is not a number of seconds from 0.1 to 86400", "vdrctl");
  }
  return seconds;
}

// The screen of the terminal, which comes back as it was.
class Screen {
 public:
  Screen() { Put("\x1b[?1049h\x1b[?25l"); }
  ~Screen() { Put("\x1b[?25h\x1b[?1049l"); }
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  // As much as there is room for; the rest is cut, and counted in the last line.
  void Show(std::string_view text);

 private:
  static void Put(std::string_view text) {
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stdout));
    static_cast<void>(std::fflush(stdout));
  }
};

void Screen::Show(std::string_view text) {
  winsize size{};
  const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_row > 0;
  std::size_t room = known ? size.ws_row - 1U : 23;
  std::string screen = "\x1b[H";
  std::size_t hidden = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    if (room > 0) {
      const std::size_t columns = known ? size.ws_col : 80;
      screen += FirstColumns(text.substr(0, end), columns);
      screen += "\x1b[K\n";
      --room;
    } else {
      ++hidden;
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  screen += "\x1b[J";
  if (hidden > 0) screen += std::to_string(hidden) + (hidden == 1 ? " more line" : " more lines");
  Put(screen);
}

void HoldSignals() {
  struct sigaction action {};
  action.sa_handler = TakeSignal;
  for (const int number : kEndingSignals) {
    struct sigaction before {};
    sigaction(number, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(number, &action, nullptr);
  }
}

// Waits until the next turn is due, however long this one took; a signal ends it early. None comes
// unseen between the look and the wait, or it would be noticed a turn later.
void AwaitNextTurn(Clock::time_point& due, double interval) {
  due += std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(interval));
  sigset_t ending;
  sigset_t before;
  sigemptyset(&ending);
  for (const int number : kEndingSignals) sigaddset(&ending, number);
  sigprocmask(SIG_BLOCK, &ending, &before);
  const auto rest = std::max(due - Clock::now(), Clock::duration::zero());
  const auto seconds = std::chrono::floor<std::chrono::seconds>(rest);
  const timespec end{seconds.count(), (rest - seconds).count()};
  if (endingSignal == 0) ppoll(nullptr, 0, &end, &before);
  sigprocmask(SIG_SETMASK, &before, nullptr);
}

// Whoever started this program must see how it ended.
int EndBySignal(int number) {
  (void)::signal(number, SIG_DFL);
  (void)raise(number);
  return kFailed;
}

int Turn(const Invocation& invocation, const Presentation& presentation, const Report& report,
         Screen* screen) {
  Writer writer(screen ? nullptr : stdout);
  const int status = Execute(invocation, presentation, writer, report);
  if (status != kDone) return status;
  if (screen) {
    screen->Show(writer.text());
  } else {
    writer.Finish();
  }
  return kDone;
}

int RunTurns(const Invocation& invocation, Presentation& presentation, const Report& report,
             double interval, Screen* screen) {
  History history;
  presentation.history = &history;
  Clock::time_point due = Clock::now();
  for (bool first = true; endingSignal == 0; first = false) {
    const bool needsGap = !first && !screen && presentation.form == Presentation::Form::Tables;
    if (needsGap) tools::Print("\n");
    const int status = Turn(invocation, presentation, report, screen);
    if (status != kDone) return status;
    AwaitNextTurn(due, interval);
  }
  return kDone;
}

}  // namespace

int Watch(const Invocation& invocation, Presentation presentation, const Report& report) {
  const double interval = Interval(*invocation.globals.watch);
  HoldSignals();
  int status = kDone;
  if (isatty(STDOUT_FILENO) != 0 && presentation.form == Presentation::Form::Tables) {
    // What is reported must reach the screen that stays.
    Report silent = report;
    silent.Hold();
    {
      Screen screen;
      status = RunTurns(invocation, presentation, silent, interval, &screen);
    }
    silent.Release();
  } else {
    status = RunTurns(invocation, presentation, report, interval, nullptr);
  }
  return endingSignal != 0 ? EndBySignal(endingSignal) : status;
}

}  // namespace vdrctl
