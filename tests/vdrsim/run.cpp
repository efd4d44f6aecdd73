#include "run.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace run {

const std::string kVdrsim = VDRSIM;
const std::string kClient = CLIENT;
const std::string kStaticClient = STATIC_CLIENT;
const std::string kRefuse = REFUSE;
const std::string kExecRace = EXEC_RACE;
const std::string kOwnPages = OWN_PAGES;
const std::string kCrowd = CROWD;

namespace {

// A line of shell needs no quotes where the paths have spaces.
void SetEnvironment() {
  std::string path;
  for (const std::filesystem::path program : {kVdrsim, kClient}) {
    path += program.parent_path().string() + ":";
  }
  setenv("PATH", (path + std::getenv("PATH")).c_str(), 1);
  setenv("CLIENT", std::filesystem::path(kClient).filename().c_str(), 1);
}

bool HasPendingSignals(const std::string& process) {
  std::ifstream status("/proc/" + process + "/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with("ShdPnd:"))
      return line.find_first_not_of("ShdPn:\t0") != std::string::npos;
  }
  return false;
}

}  // namespace

Program::Program(const std::vector<std::string>& arguments) {
  int input[2];
  int output[2];
  if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe2");
  }
  process_ = fork();
  if (process_ == 0) {
    setpgid(0, 0);
    // What was started in the background, or under nohup, ignores some.
    for (const int number : {SIGINT, SIGQUIT, SIGTERM, SIGHUP}) (void)signal(number, SIG_DFL);
    dup2(input[0], STDIN_FILENO);
    dup2(output[1], STDOUT_FILENO);
    dup2(output[1], STDERR_FILENO);
    SetEnvironment();
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments) {
      argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    execvp(argv[0], argv.data());
    _exit(125);
  }
  setpgid(process_, process_);
  close(input[0]);
  close(output[1]);
  input_ = input[1];
  output_ = output[0];
}

void Program::AwaitOutput(const std::string& text) {
  while (seen_.find(text) == std::string::npos && ReadSome()) {
  }
}

void Program::Type(const std::string& text) const {
  if (write(input_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
    throw std::system_error(errno, std::generic_category(), "write");
  }
}

void Program::Signal(int number) const { kill(process_, number); }

void Program::SignalGroup(int number) const { kill(-process_, number); }

void Program::Queue(int number, int value) const {
  sigqueue(process_, number, {.sival_int = value});
}

void Program::AwaitSignalsTaken() const {
  const std::string number = std::to_string(process_);
  std::ifstream children("/proc/" + number + "/task/" + number + "/children");
  std::vector<std::string> all = {number};
  all.insert(all.end(), std::istream_iterator<std::string>(children), {});
  for (const std::string& process : all) {
    while (HasPendingSignals(process)) {
    }
  }
}

void Program::AwaitEnd() const {
  siginfo_t end{};
  waitid(P_PID, static_cast<id_t>(process_), &end, WEXITED | WNOWAIT);
}

void Program::CloseInput() {
  if (input_ >= 0) close(input_);
  input_ = -1;
}

// Whoever is left still holds the output open, so it is not at its end.
Result Program::Finish() {
  CloseInput();
  Result result;
  pollfd output{output_, POLLIN, 0};
  int status = 0;
  // The output is drained meanwhile, so that a talkative program can't get stuck.
  while (waitpid(process_, &status, WNOHANG) == 0) {
    if (poll(&output, 1, 10) > 0 && !ReadSome()) output.fd = -1;
  }
  bool open = true;
  while (open && poll(&output, 1, 0) > 0) open = ReadSome();
  result.leftNobody = !open || output.fd < 0;
  close(output_);
  if (WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
  result.output = std::move(seen_);
  return result;
}

bool Program::ReadSome() {
  char buffer[4096];
  const ssize_t length = read(output_, buffer, sizeof buffer);
  if (length <= 0) return false;
  seen_.append(buffer, static_cast<size_t>(length));
  return true;
}

Result Execute(const std::vector<std::string>& arguments) { return Program(arguments).Finish(); }

Result Supervised(const std::vector<std::string>& command) { return SupervisedWith({}, command); }

Result SupervisedWith(const std::vector<std::string>& options,
                      const std::vector<std::string>& command) {
  std::vector<std::string> arguments = {kVdrsim, "run"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  arguments.emplace_back("--");
  arguments.insert(arguments.end(), command.begin(), command.end());
  return Execute(arguments);
}

Result SupervisedLine(const std::string& line) { return Supervised({"sh", "-c", line}); }

}  // namespace run
