#pragma once

#include <cstddef>

// Ends the program with a report when a promise is broken, which the fuzzer takes for a finding.
void Require(bool holds, const char* promise);

// memcmp, for no bytes at no address too.
bool AreSame(const void* left, const void* right, std::size_t size);
