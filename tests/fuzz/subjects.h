#pragma once

#include <functional>
#include <string>
#include <vector>

#include "case.h"
#include "support/getters/table.h"

// A function under test. The first byte of an input chooses one of the family that the program is
// about.
struct Subject {
  std::string name;  // of the function, and what is particular about the call

  // Calls the function as the case says and compares what it does with what it promises.
  std::function<void(const Case& input)> run;

  // What its replies are made of, for the inputs that a fuzzer starts from.
  std::string shape = "other";
  std::size_t size = 0;
  getters::Count count = {};
};

const std::vector<Subject>& Subjects();
