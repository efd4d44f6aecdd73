#pragma once

#include <sys/types.h>

#include <string>

#include "datapath/state.h"
#include "state/state_reader.h"

namespace vdrsim {

// The state that a file describes; "-" is standard input. Throws StateFailure.
State LoadState(const std::string& file);

// A file that a state is saved to when a run is over. Whoever reads it finds what was there before or
// all of the new state, whenever this process or the host ends.
class SavedState {
 public:
  // Judges what can be judged before there is anything to save. Throws StateFailure.
  explicit SavedState(const std::string& file);

  // Throws StateFailure, and leaves the file as it was then.
  void Save(const State& state) const;

 private:
  std::string name_;  // as it was given
  std::string file_;  // what it stands for, symbolic links followed
  mode_t mode_;
};

}  // namespace vdrsim
