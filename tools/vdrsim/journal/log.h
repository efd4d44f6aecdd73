#pragma once

#include "journal/entry.h"

namespace vdrsim {

// Something that is written while the run goes on, an entry after another.
class Log {
 public:
  virtual ~Log() = default;

  // Takes an entry, whose bytes are the caller's. Entries come one at a time and in their order.
  virtual void Append(const Entry& entry) noexcept = 0;

  // Waits until all that was appended is written, where that can't depend on a program of the run.
  virtual void Sync() noexcept = 0;

  // Waits until all is written. Returns false when something is missing, and has said so.
  virtual bool Finish() noexcept = 0;
};

}  // namespace vdrsim
