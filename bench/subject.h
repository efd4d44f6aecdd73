#pragma once

#include <sys/types.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

// A program that does a piece of work as often as it is told, in a run or outside.
class Subject {
 public:
  explicit Subject(const std::vector<std::string>& arguments);
  Subject(const Subject&) = delete;
  ~Subject();

  // The nanoseconds of one out of `count`.
  double Measure(int count);

 private:
  std::optional<double> ReadTime();

  pid_t process_ = -1;
  std::FILE* orders_ = nullptr;
  std::FILE* times_ = nullptr;
};

// How long two subjects take, in turn; the ratio is the median of the ratios of the rounds.
struct Comparison {
  double nanoseconds;       // of the first, its median
  double floorNanoseconds;  // of the second
  double ratio;
  double lowerQuartile;
  double upperQuartile;
};
Comparison Compare(Subject& subject, Subject& floor, int count, int rounds);

// The same with both started anew for each round, where the memory that a program gets makes it fast
// or slow as long as it runs.
Comparison CompareAnew(const std::vector<std::string>& subject,
                       const std::vector<std::string>& floor, int count, int rounds);

// A time as people read it: "6.1 us".
std::string Time(double nanoseconds);

// A row of a table: what, both times, the ratio, and whether it meets its target, if there is one.
void PrintRow(const std::string& what, const Comparison& result, std::optional<double> target);
