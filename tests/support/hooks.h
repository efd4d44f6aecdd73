#pragma once

namespace fake {
class Device;
}

// The system's calls, replaced for the whole test program.
namespace hooks {

// Makes `device` the one that answers; NULL hands everything to the system again.
void Install(fake::Device* device);

// True under a sanitizer and under memcheck, which keep records of each byte in use.
bool MemoryIsWatched();

}  // namespace hooks
