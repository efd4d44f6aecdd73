#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "datapath/datapath.h"
#include "reader.h"
#include "requests/requests.h"
#include "require.h"
#include "state/state_reader.h"
#include "state/state_writer.h"
#include "support/any_memory.h"

// An input is a row of commands for the datapath, given to it in process.

namespace {

using Bytes = std::vector<std::byte>;
using vdrsim::requests::Field;
using vdrsim::requests::Request;

// A few names, so that commands meet the objects of others; one has no terminator in its field.
std::string Named(uint8_t number, size_t width) {
  const std::string names[] = {"", "a", "b", "edge-1", std::string(width, 'n')};
  return names[number % std::size(names)];
}

// An input for a code: names where the request has them, and anything elsewhere. A code without
// request, and every eighth other, gets any bytes of any length.
Bytes MakeInput(Reader& reader, const Request* request) {
  const auto how = reader.Take<uint8_t>();
  if (!request || how % 8 == 0) {
    const auto any = std::as_bytes(std::span(reader.Bytes(reader.Take<uint16_t>())));
    Bytes bytes(any.begin(), any.end());
    if (how % 16 == 0) bytes.resize(968);
    return bytes;
  }
  Bytes bytes(InputLength(request->form));
  for (const Field& field : request->fields()) {
    const auto place = std::span(bytes).subspan(field.offset, field.width);
    if (field.kind == Field::Kind::Text || field.kind == Field::Kind::OpenText) {
      const std::string name = Named(reader.Take<uint8_t>(), field.width);
      std::ranges::copy(std::as_bytes(std::span(name)), place.begin());
    } else if (field.isOne) {
      place[0] = std::byte{1};
    } else {
      // Small numbers, so that they meet again.
      const auto number = reader.Take<uint8_t>();
      place[0] = std::byte(number % 16);
      if (number >= 240) std::ranges::fill(place, std::byte{0xff});
    }
  }
  return bytes;
}

uint32_t Deliver(vdrsim::Reply& reply) {
  uint32_t total = 0;
  for (auto piece = reply.Next(); !piece.empty(); piece = reply.Next()) {
    total += static_cast<uint32_t>(piece.size());
  }
  Require(reply.Next().empty(), "a reply ends once");
  return total;
}

const Request* Find(uint32_t code, const Bytes& input) {
  const size_t index = vdrsim::requests::Identify(code, input);
  return index == vdrsim::requests::Meanings::kNone ? nullptr : vdrsim::requests::kRequests[index];
}

void Check(vdrsim::Datapath& datapath, uint32_t code, const Bytes& input, uint32_t capacity,
           bool takes) {
  AnyMemory memory(takes);
  const vdrsim::State before = datapath.state();
  vdrsim::Answer answer = datapath.Execute({.process = 1,
                                            .thread = 1,
                                            .node = vdrsim::Node::Normal,
                                            .code = code,
                                            .input = input,
                                            .capacity = capacity,
                                            .destination = memory});
  const Request* request = Find(code, input);
  const uint32_t size = answer.reply.size();
  Require(size <= capacity, "a reply fits its room");
  Require(answer.error == 0 || size == 0, "an error has no reply");
  Require(Deliver(answer.reply) == size, "the total of the pieces is known before");
  Require(answer.error >= 0 && !answer.claimed, "the datapath tells the truth");
  if (!request) return Require(answer.error == ENOTTY, "an unknown code is no command");
  if (answer.error != 0 || request->effect == vdrsim::requests::Reads) {
    Require(datapath.state() == before, "what fails or only reads changes nothing");
  }
  if (answer.error != 0) return;
  Require(input.size() == InputLength(request->form), "an input has one length");
  Require(size <= request->room.bytes, "no reply is longer than callers have room for");
  if (request->effect == vdrsim::requests::Reads) return;
  Require(takes, "what can't be delivered is not done");
  Require(size == request->room.bytes || (request->room.isOptional && capacity == 0),
          "the reply of a change has one length");
}

// Whatever commands made can be saved and loaded.
void CheckThatItCanBeKept(const vdrsim::State& state) try {
  std::string saved;
  vdrsim::StateWriter writer(state);
  for (auto piece = writer.Next(); !piece.empty(); piece = writer.Next()) saved += piece;
  Require(vdrsim::ReadState(saved, "saved") == state, "what is saved is what is loaded");
} catch (const vdrsim::StateFailure& failure) {
  Require(false, failure.what());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, std::size_t size) {
  Reader reader({input, size});
  vdrsim::Datapath datapath;
  while (!reader.Ended()) {
    const auto what = reader.Take<uint8_t>();
    const uint32_t code = what == 255 ? reader.Take<uint32_t>() : what;
    const auto isVariant = std::byte(reader.Take<uint8_t>() % 2);
    const Bytes shape(968, isVariant);
    const Bytes block = MakeInput(reader, Find(code, shape));
    const auto room = reader.Take<uint8_t>();
    const uint32_t capacity = room < 128 ? 0x7fffffff : reader.Take<uint32_t>() % 2048;
    Check(datapath, code, block, capacity, room % 8 != 7);
  }
  CheckThatItCanBeKept(datapath.state());
  return 0;
}
