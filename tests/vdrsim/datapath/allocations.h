#pragma once

// The memory of the program, which can run out.
namespace allocations {

// So many allocations of this thread succeed; all do when it is negative.
extern thread_local long allowed;

}  // namespace allocations
