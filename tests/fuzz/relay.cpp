#include <vdrzax/lif.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <span>
#include <string>

#include "case.h"
#include "memory.h"
#include "require.h"

namespace {

// A name of 64 bytes with its terminator, as the kernel gets it.
void RequireName(const std::vector<uint8_t>& block, std::size_t offset, const std::string& name) {
  char field[64] = {};
  name.copy(field, 63);
  Require(AreSame(block.data() + offset, field, 64), "a name is sent as it is");
}

}  // namespace

// The payload of a case is three texts, each ended by a zero: the two names and the list of servers.
// Without the third there is no list.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, std::size_t size) {
  const Case one({input, size});
  std::span<const uint8_t> rest = one.payload;
  const auto take = [&] {
    const auto end = std::find(rest.begin(), rest.end(), 0);
    std::string text(rest.begin(), end);
    rest = rest.subspan(std::min(rest.size(), text.size() + 1));
    return text;
  };
  const std::string instance = take();
  const std::string lif = take();
  const bool hasServers = !rest.empty();
  const std::string before = take();
  // In memory that ends with its terminator.
  const std::unique_ptr<char[]> servers(new char[before.size() + 1]());
  before.copy(servers.get(), before.size());

  const Outcome outcome = Call(one, one.Answer(0), [&] {
    return VDRZAX_ConfigureLifDhcpRelay(instance.c_str(), lif.c_str(),
                                        hasServers ? servers.get() : nullptr);
  });
  Require(memory::Allocations() == 0, "nothing is allocated");
  memory::Unwatch();

  if (hasServers) {
    RequireFailure(outcome, EINVAL);
    Require(device::Commands().empty(), "no command is sent");
    std::string after = before;
    const std::size_t comma = after.find(',');
    if (comma != std::string::npos) after[comma] = '\0';
    Require(AreSame(servers.get(), after.c_str(), after.size() + 1),
            "the first comma alone is overwritten");
    return 0;
  }
  if (one.openError == 0) {
    Require(device::Commands().size() == 1, "one command is sent");
    const device::Command& command = device::Commands()[0];
    Require(command.code == 33 && command.capacity == 0, "the command has its code");
    Require(command.input.size() == 968, "the input is a block");
    RequireName(command.input, 0, instance);
    RequireName(command.input, 384, lif);
    Require(std::all_of(command.input.begin() + 556, command.input.end(),
                        [](uint8_t byte) { return byte == 0; }),
            "no servers are sent");
  }
  if (one.CommandFails()) {
    RequireFailure(outcome, one.CommandError());
  } else {
    RequireSuccess(outcome);
  }
  return 0;
}
