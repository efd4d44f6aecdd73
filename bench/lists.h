#pragma once

#include <vector>

#include "case.h"
#include "device.h"

// A list getter of each kind of record, with three records and with a full reply.
std::vector<Case> ListCases();

// Each with a full reply, once for each state in which the kernel may leave a text.
std::vector<Case> PolledListCases();

// One of them with as many records as wanted, without a target.
Case ListCase(const char* name, uint32_t records, device::Calls calls = device::Calls::Program);
