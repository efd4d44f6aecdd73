#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "require.h"
#include "state/state_reader.h"
#include "state/state_writer.h"

// An input is a document that may be a state.

namespace {

std::string Save(const vdrsim::State& state) {
  std::string document;
  vdrsim::StateWriter writer(state);
  for (auto piece = writer.Next(); !piece.empty(); piece = writer.Next()) document += piece;
  return document;
}

bool IsPrintable(std::string_view text) {
  for (const char character : text) {
    if (character < ' ' || character > '~') return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, std::size_t size) {
  const std::string_view document(reinterpret_cast<const char*>(input), size);
  try {
    const vdrsim::State state = vdrsim::ReadState(document, "input");
    const std::string saved = Save(state);
    const vdrsim::State loaded = vdrsim::ReadState(saved, "saved");
    Require(loaded == state, "what is saved is what was loaded");
    Require(Save(loaded) == saved, "what is saved again is the same document");
  } catch (const vdrsim::StateFailure& failure) {
    Require(std::string_view(failure.what()).starts_with("input: "), "what was saved is a state");
    Require(IsPrintable(failure.what()), "a complaint about a document is printable");
  }
  return 0;
}
