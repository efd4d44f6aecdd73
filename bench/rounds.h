#pragma once

#include "case.h"

// Two ways to do the same work, timed side by side.
namespace rounds {

inline constexpr int kRounds = 201;

// Registers a benchmark of kRounds rounds. A round is `calls` calls of each side, or as many as fill
// half a millisecond when `calls` is 0.
void Register(const Case& subject, int calls = 0);

}  // namespace rounds
