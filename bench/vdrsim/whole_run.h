#pragma once

#include <string>
#include <vector>

// What a program took from its start to its end.
struct WholeRun {
  double seconds;
  double megabytes;  // of memory at most, of its own or of one that it waited for
};

// Throws std::runtime_error unless it ends with status 0.
WholeRun RunToEnd(const std::vector<std::string>& arguments);
