#include "every_command.h"

#include <algorithm>
#include <string_view>

#include "requests/requests.h"

namespace replay_test {

namespace {

using vdrsim::requests::Effect;
using vdrsim::requests::Field;
using vdrsim::requests::kRequests;
using vdrsim::requests::Request;
using wire::Bytes;

void PutText(std::span<std::byte> field, std::string_view text) {
  std::ranges::copy(std::as_bytes(std::span(text)), field.begin());
}

// All names are the same, so that every command finds what others have made.
Bytes InputOf(const Request& request, std::string_view name) {
  Bytes input(InputLength(request.form));
  for (const Field& field : request.fields()) {
    const auto place = std::span(input).subspan(field.offset, field.width);
    const bool isText = field.kind == Field::Kind::Text || field.kind == Field::Kind::OpenText;
    if (isText) {
      PutText(place, field.name == "macText" ? "02:00:00:00:00:01" : name);
    } else {
      place[0] = std::byte{1};
    }
  }
  return input;
}

uint32_t RoomOf(const Request& request) {
  constexpr uint32_t kMost = 1 << 20;
  const bool takesAny = request.room.bytes == vdrsim::requests::kAnyRoom.bytes;
  return takesAny ? kMost : request.room.bytes;
}

void AddAll(std::vector<Command>& commands, Effect effect, std::string_view name) {
  for (const Request* request : kRequests) {
    if (request->effect != effect) continue;
    commands.push_back({request->code, InputOf(*request, name), RoomOf(*request)});
  }
}

}  // namespace

std::vector<Command> EveryCommand() {
  std::vector<Command> commands;
  // The second time what the first had need of is there.
  AddAll(commands, Effect::Sets, "a");
  AddAll(commands, Effect::Sets, "a");
  AddAll(commands, Effect::Reads, "a");
  AddAll(commands, Effect::Reads, "b");
  for (int number = 0; number < 300; ++number) {
    commands.push_back({2, wire::Wire(968).Text(0, "edge-" + std::to_string(number)).bytes(), 0});
  }
  commands.push_back({0, Bytes(968), 577577});
  commands.push_back({0, Bytes(968), 577});
  commands.push_back({1, Bytes(5), 577});
  commands.push_back({254, Bytes(968), 0});
  AddAll(commands, Effect::Deletes, "b");
  AddAll(commands, Effect::Deletes, "a");
  return commands;
}

}  // namespace replay_test
