#include "subject.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <system_error>

Subject::Subject(const std::vector<std::string>& arguments) {
  int orders[2];
  int times[2];
  if (pipe2(orders, O_CLOEXEC) != 0 || pipe2(times, O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe2");
  }
  std::vector<char*> pointers;
  for (const std::string& text : arguments) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  process_ = fork();
  if (process_ == 0) {
    dup2(orders[0], STDIN_FILENO);
    dup2(times[1], STDOUT_FILENO);
    execvp(pointers[0], pointers.data());
    _exit(127);
  }
  close(orders[0]);
  close(times[1]);
  orders_ = fdopen(orders[1], "w");
  times_ = fdopen(times[0], "r");
  if (!ReadTime()) throw std::runtime_error(arguments[0] + " does not begin");
}

Subject::~Subject() {
  (void)std::fclose(orders_);
  (void)std::fclose(times_);
  waitpid(process_, nullptr, 0);
}

double Subject::Measure(int count) {
  (void)std::fprintf(orders_, "%d\n", count);
  (void)std::fflush(orders_);
  const auto time = ReadTime();
  if (!time) throw std::runtime_error("what was measured has ended");
  return *time / count;
}

std::optional<double> Subject::ReadTime() {
  double time = 0;
  if (std::fscanf(times_, "%lf", &time) != 1) return std::nullopt;
  return time;
}

namespace {

// Of each round.
struct Times {
  std::vector<double> own{};
  std::vector<double> floor{};
};

double Quantile(std::vector<double> values, double part) {
  std::ranges::sort(values);
  return values[static_cast<size_t>(part * static_cast<double>(values.size() - 1))];
}

Comparison Summarize(const Times& times) {
  std::vector<double> ratios;
  std::ranges::transform(times.own, times.floor, std::back_inserter(ratios), std::divides());
  return {Quantile(times.own, 0.5), Quantile(times.floor, 0.5), Quantile(ratios, 0.5),
          Quantile(ratios, 0.25), Quantile(ratios, 0.75)};
}

}  // namespace

Comparison Compare(Subject& subject, Subject& floor, int count, int rounds) {
  Times times;
  subject.Measure(count);
  floor.Measure(count);
  for (int round = 0; round < rounds; ++round) {
    if (round % 2 == 0) times.own.push_back(subject.Measure(count));
    times.floor.push_back(floor.Measure(count));
    if (round % 2 != 0) times.own.push_back(subject.Measure(count));
  }
  return Summarize(times);
}

Comparison CompareAnew(const std::vector<std::string>& subject,
                       const std::vector<std::string>& floor, int count, int rounds) {
  Times times;
  for (int round = 0; round < rounds; ++round) {
    // What one of them leaves the next one gets, so neither is always the first.
    std::optional<Subject> own;
    if (round % 2 == 0) own.emplace(subject);
    Subject least(floor);
    if (!own) own.emplace(subject);
    const Comparison both = Compare(*own, least, count, 3);
    times.own.push_back(both.nanoseconds);
    times.floor.push_back(both.floorNanoseconds);
  }
  return Summarize(times);
}

std::string Time(double nanoseconds) {
  if (nanoseconds < 1e5) return fmt::format("{:.1f} us", nanoseconds / 1e3);
  if (nanoseconds < 1e8) return fmt::format("{:.2f} ms", nanoseconds / 1e6);
  return fmt::format("{:.2f} s", nanoseconds / 1e9);
}

void PrintRow(const std::string& what, const Comparison& result, std::optional<double> target) {
  fmt::print("| {} | {} | {} | {:.2f} ({:.2f} to {:.2f}) | ", what, Time(result.nanoseconds),
             Time(result.floorNanoseconds), result.ratio, result.lowerQuartile,
             result.upperQuartile);
  if (target) {
    fmt::print("{} | {} |\n", *target, result.ratio <= *target ? "yes" : "no");
  } else {
    fmt::print("| |\n");
  }
  (void)std::fflush(stdout);
}
