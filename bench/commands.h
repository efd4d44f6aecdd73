#pragma once

#include <vector>

#include "case.h"

// Single commands against the bare calls of the system.
std::vector<Case> CommandCases();
