#include "whole_run.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>

WholeRun RunToEnd(const std::vector<std::string>& arguments) {
  std::vector<char*> pointers;
  for (const std::string& text : arguments) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  const auto start = std::chrono::steady_clock::now();
  const pid_t process = fork();
  if (process == 0) {
    execvp(pointers[0], pointers.data());
    _exit(127);
  }
  int status = 0;
  rusage usage{};
  wait4(process, &status, 0, &usage);
  if (status != 0) throw std::runtime_error(arguments.front() + " did not end well");
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  return {time.count(), static_cast<double>(usage.ru_maxrss) / 1024};
}
