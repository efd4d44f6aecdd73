#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string_view>

#include "unique_fd.h"

namespace vdrsim {

// The longest path that IsNodePath knows, with its terminator.
inline constexpr size_t kNodePathRoom = 64;

// Tells whether `path` is one of the datapath's two device nodes, spelt exactly so.
bool IsNodePath(std::string_view path);

// The file that stands for both device nodes in the callers: empty, sealed, and in no directory, so
// that nothing of it stays when the run is over.
class SimulatedNode {
 public:
  // Throws StartFailure.
  SimulatedNode();

  // Opens the file anew with the access mode and the blocking mode of `flags`, so that callers
  // share no file status. The result holds no descriptor, and errno says why, when that fails.
  UniqueFd Open(int flags) const;

  // Tells whether a descriptor of another thread refers to this file, however it came there: by
  // open, dup, fork or from another process.
  bool IsBehind(pid_t thread, uint32_t descriptor) const;

 private:
  UniqueFd file_;
  uint32_t deviceMajor_ = 0;
  uint32_t deviceMinor_ = 0;
  uint64_t inode_ = 0;
};

}  // namespace vdrsim
