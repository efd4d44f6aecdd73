#pragma once

#include <vector>

#include "case.h"

// A list getter of each kind of record, with three records and with a full reply.
std::vector<Case> ListCases();

// One of them with as many records as wanted.
Case ListCase(const char* name, uint32_t records);
