#include <vdrzax/channel.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

#include "commands.h"
#include "files.h"

namespace vdrctl {

namespace {

int Send(Output& out, int code, std::optional<uint32_t> value, const char* inputFile,
         uint32_t capacity, const char* outputFile);

constexpr Command kCommands[] = {
    {"command",
     nullptr,
     "Send one command by its number",
     {NumberOf<int>("CODE", "Number of the command"),
      U32("--value N", "Send this word as the input"),
      Excluding("--value", File("--input FILE", "Send the bytes of FILE as the input")),
      U32("--capacity N", "Room for the reply in bytes, 0 when not given"),
      File("--output FILE", "Write the bytes of the reply to FILE instead of showing them")},
     Run<Send>},
};

struct Free {
  void operator()(uint8_t* bytes) const { std::free(bytes); }
};

int Send(Output& out, int code, std::optional<uint32_t> value, const char* inputFile,
         uint32_t capacity, const char* outputFile) {
  IoctlEnvelope envelope{};
  std::vector<uint8_t> input;
  if (value) {
    envelope.inLength = sizeof *value;
    envelope.inBuffer = &*value;
  } else if (inputFile) {
    input = ReadInput(inputFile);
    envelope.inLength = static_cast<uint32_t>(input.size());
    envelope.inBuffer = input.data();
  }
  std::unique_ptr<uint8_t, Free> reply;
  if (capacity != 0) {
    // Zero pages from calloc: a large capacity costs only what the kernel writes.
    reply.reset(static_cast<uint8_t*>(std::calloc(capacity, 1)));
    if (!reply) {
      errno = ENOMEM;
      return -1;
    }
    envelope.outLength = capacity;
    envelope.outBuffer = reply.get();
  }
  if (VDRZAXIoctl(code, &envelope) != 0) return -1;
  const uint32_t length = envelope.outLength;
  PutReply(out, outputFile, length, {reply.get(), std::min(length, capacity)});
  return 0;
}

}  // namespace

constinit const Family kRawFamily{{}, kCommands};

}  // namespace vdrctl
