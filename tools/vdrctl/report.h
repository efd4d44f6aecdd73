#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vdrctl {

// The exit status of the program.
enum ExitStatus : int { kDone = 0, kFailed = 1, kWrongUsage = 2, kNoDevice = 3 };

// Tells on standard error what went wrong, in lines for people or as a JSON object, and gives the
// exit status for it. A standard error that can't be written changes nothing.
class Report {
 public:
  void SetJson(bool json) { json_ = json; }

  // What is told from here on is about a file of commands, and about a line of it unless that is 0.
  // Both are shown as they stand.
  void SetFile(std::string file) { file_ = std::move(file); }
  void SetLine(std::size_t line) { line_ = line; }

  // Keeps what is told until it is released.
  void Hold() { held_.emplace(); }
  void Release();

  // A command, or a file, failed. `error` is 0 for a reply that contradicts itself.
  int Failure(std::string_view what, int error, std::string_view hint = {}) const;

  // The same for a command of the device, which is told apart from a device that isn't there.
  int CommandFailure(std::string_view what, int error) const;

  // The complaint can be shown as it stands.
  int WrongUsage(std::string_view complaint, std::string_view understood) const;

 private:
  struct Line {
    ExitStatus status;
    std::string_view what;
    std::string_view message;
    std::string_view errorName;
    std::string_view hint;
  };
  int Tell(const Line& line) const;

  bool json_ = false;
  std::string file_{};
  std::size_t line_ = 0;
  mutable std::optional<std::string> held_{};
};

}  // namespace vdrctl
