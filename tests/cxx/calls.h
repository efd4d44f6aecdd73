#pragma once

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <ostream>
#include <span>
#include <vdrzax.hpp>
#include <vector>

#include "getter_families.h"

// Every call of the C++ face beside the same call in C, with values that no two arguments share.
namespace cxx {

using vdrzax::Client;

struct Row {
  const char* function;  // the one that the face says
  std::function<int()> inC;
  std::function<void(const Client& vdr)> throws;
  std::function<vdrzax::Failure(const Client& vdr)> tries;
  std::size_t reply;  // bytes, all zero, with which the command succeeds
};

// For what a test says.
inline void PrintTo(const Row& row, std::ostream* stream) { *stream << row.function; }

using Rows = std::vector<Row>;

// One file a family, and one for the channel.
#define DECLARE_CALLS(family) Rows family##Calls();
FOR_EACH_FAMILY(DECLARE_CALLS)
#undef DECLARE_CALLS
Rows ChannelCalls();

// Both forms of a call.
#define FACE(call, ...)                                                \
  [](const Client& vdr) { static_cast<void>(vdr.call(__VA_ARGS__)); }, \
      [](const Client& vdr) { return vdr.try_##call(__VA_ARGS__).failure(); }

inline constexpr MacValue kMac{{0x02, 0x13, 0x24, 0x35, 0x46, 0x57}};
inline constexpr vdrzax::Mac kMacBytes{0x02, 0x13, 0x24, 0x35, 0x46, 0x57};

// Memory for what the kernel writes straight to the caller, as much as any call needs.
inline std::uint8_t* Scratch() {
  static std::vector<std::uint8_t> bytes(8U << 20U);
  return bytes.data();
}

// Gives back what a C call that succeeded stored, which is known only once it has returned.
template <typename Memory, typename Release>
int Done(int status, Memory* const& memory, Release release) {
  if (status == 0) release(memory);
  return status;
}

}  // namespace cxx
