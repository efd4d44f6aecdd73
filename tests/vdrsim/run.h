#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

// Programs as a user starts them, and what the user sees of them.
namespace run {

// The paths of what was built.
extern const std::string kVdrsim;
extern const std::string kClient;        // of the dynamic linker
extern const std::string kStaticClient;  // of no linker at all
extern const std::string kRefuse;
extern const std::string kExecRace;
extern const std::string kOwnPages;
extern const std::string kCrowd;

struct Result {
  int exitStatus = -1;     // -1 when a signal ended it
  int signal = 0;          // the signal that ended it
  std::string output{};    // standard output and standard error
  bool leftNobody = true;  // no process that it started was there when it ended
};

// A program in a process group of its own. Its standard input is a pipe that stays open until
// CloseInput or Finish.
class Program {
 public:
  explicit Program(const std::vector<std::string>& arguments);
  Program(const Program&) = delete;

  void AwaitOutput(const std::string& text);
  void Type(const std::string& text) const;
  void Signal(int number) const;
  void SignalGroup(int number) const;
  void Queue(int number, int value) const;
  void AwaitSignalsTaken() const;  // by it and then by its children
  void AwaitEnd() const;           // with its input open
  void CloseInput();
  Result Finish();

 private:
  bool ReadSome();

  pid_t process_ = -1;
  int input_ = -1;
  int output_ = -1;
  std::string seen_{};
};

// Runs a program to its end.
Result Execute(const std::vector<std::string>& arguments);

// Runs a command, or a line of shell, under vdrsim, with options of its own where they are given. Lines of shell find vdrsim, and the client by the
// name $CLIENT.
Result Supervised(const std::vector<std::string>& command);
Result SupervisedWith(const std::vector<std::string>& options,
                      const std::vector<std::string>& command);
Result SupervisedLine(const std::string& line);

}  // namespace run
