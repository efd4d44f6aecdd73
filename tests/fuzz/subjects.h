#pragma once

#include <functional>
#include <span>

#include "case.h"

// A function under test: calls it as the case says and compares what it does with what it promises.
using Subject = std::function<void(const Case& input)>;

// The functions of the family that the program is about, chosen by the first byte of an input.
std::span<const Subject> Subjects();
