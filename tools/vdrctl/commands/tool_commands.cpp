#include <vdrzax/channel.h>

#include <cerrno>
#include <cstdlib>
#include <limits>
#include <optional>
#include <vector>

#include "commands.h"
#include "commands/reading.h"
#include "reference/command_list.h"
#include "reference/completion.h"
#include "reference/pages.h"
#include "reference/schema.h"

namespace vdrctl {

namespace {

constexpr uint32_t kLongestInput = sizeof(IoctlParams);
constexpr const char* kInputHint = "the input of a command has at most 968 bytes";

int Send(Output& out, int code, std::optional<uint32_t> value, const char* inputFile,
         uint32_t capacity, const char* outputFile) {
  IoctlEnvelope envelope{};
  std::vector<uint8_t> input;
  if (value) {
    envelope.inLength = sizeof *value;
    envelope.inBuffer = &*value;
  } else if (inputFile) {
    input = ReadFile(inputFile, kLongestInput, kInputHint);
    envelope.inLength = static_cast<uint32_t>(input.size());
    envelope.inBuffer = input.data();
  }
  OwnedBytes reply;
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
  ReplyFile output(outputFile);
  if (VDRZAXIoctl(code, &envelope) != 0) return -1;
  const uint32_t length = envelope.outLength;
  output.Put(out, length, {reply.get(), std::min(length, capacity)});
  return 0;
}

constexpr Command kCommands[] = {
    {"command",
     nullptr,
     "Send one command of the device by its number",
     {"VDRZAXIoctl"},
     {},
     {NumberOf<int>("CODE", "Number of the command"),
      U32("--value N", "Send this word as the input"),
      Excluding("--value",
                File("--input FILE", "Send the bytes of FILE, at most 968, as the input")),
      U32("--capacity N", "Room for the reply in bytes, 0 when not given"), kOutput},
     Run<Send>,
     BytesReply()},
    {"batch",
     nullptr,
     "Carry out the commands of a file, a line each, after all lines were checked",
     {},
     {},
     {File("FILE", "The file, or - for standard input"),
      Switch("--dry-run", "Check all lines and carry out none"),
      Switch("--keep-going", "Go on after a command that fails")},
     kByTheProgram<const char*, bool, bool>},
    {"commands",
     nullptr,
     "List all commands of this program",
     {},
     {},
     {},
     Run<ListCommands>,
     TextReply()},
    {"schema",
     nullptr,
     "Print the JSON Schema of what a command prints with --json, or of all commands",
     {},
     {},
     {Optional(Text("OBJECT", 63, "First word of the command")),
      Optional(Text("VERB", 63, "Second word")), Optional(Text("WORD", 63, "Third word"))},
     Run<PrintSchema>,
     TextReply()},
    {"completion",
     nullptr,
     "Print what completes command lines in a shell",
     {},
     {},
     {Choice("SHELL", "bash|zsh|fish", "The shell")},
     Run<PrintCompletion>,
     TextReply()},
    {"reference",
     nullptr,
     "Print the manual of this program",
     {},
     {},
     {Choice("FORM", "man|markdown", "The form")},
     Run<PrintReference>,
     TextReply()},
};

}  // namespace

constinit const Family kToolFamily{{}, kCommands};

}  // namespace vdrctl
