#pragma once

#include <vector>

#include "case.h"

// One command by one to eight threads at once: what they wait for each other.
std::vector<Case> ThreadCases();
