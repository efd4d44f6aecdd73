#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "journal/entry.h"
#include "journal/form.h"
#include "journal/log.h"
#include "wire.h"

namespace journal_test {

// The entry of a command that succeeded, of process 7, at 1.5 seconds.
inline vdrsim::Entry Command(uint64_t seq, uint32_t code, std::span<const std::byte> input) {
  return {
      .seq = seq, .time = 1'500'000'000, .process = 7, .thread = 7, .code = code, .input = input};
}

inline vdrsim::Entry Mark(uint64_t seq, std::string_view text) {
  return {.kind = vdrsim::Entry::Kind::Mark,
          .seq = seq,
          .time = 2'000'000'003,
          .input = std::as_bytes(std::span(text))};
}

inline std::string Line(const vdrsim::Form& form, const vdrsim::Entry& entry) {
  std::string line;
  form.Put(entry, line);
  return line;
}

}  // namespace journal_test
