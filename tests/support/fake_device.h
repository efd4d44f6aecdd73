#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

// A device and an allocator in place of the system's, for the built library as it ships: the test
// program defines open64, ioctl, close, malloc, calloc and free, and these ask the Device that is
// alive. What other code does with files and memory passes through untouched.
namespace fake {

using Bytes = std::vector<uint8_t>;

// One command as the device saw it.
struct Command {
  std::string node = {};
  int openFlags = 0;
  unsigned long request = 0;
  uint32_t inLength = 0;
  const void* inBuffer = nullptr;
  Bytes input = {};  // the bytes at inBuffer during the call
  uint32_t outLength = 0;
  void* outBuffer = nullptr;
};

// What the device does with a command. `bytes` are written to the output buffer, never beyond the
// capacity; `length` is what the envelope says afterwards, the number of bytes when not set.
struct Reply {
  Bytes bytes = {};
  std::optional<uint32_t> length = {};
  int result = 0;
  int error = 0;  // errno of a failing ioctl
  bool keepsLength = false;
};

Reply Failure(int error);

// Memory that the library gave back, as it looked at that moment.
struct Freed {
  std::size_t size;
  Bytes content;
};

class Device {
 public:
  Device();
  ~Device();
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  // Scripts. Without `answer` every command succeeds and produces nothing.
  std::function<Reply(const Command&)> answer;
  int openError = 0;
  int firstDescriptor = 1'000'000;
  int closeError = 0;
  int failingAllocation = 0;  // the Nth allocation of the library fails, counted from 1
  bool keepFreedContent = false;
  // Converts an address in place of inet_pton, when set.
  std::function<int(int family, const char* text, void* address)> convertAddress;
  // Scans a text for sixteen numbers in place of sscanf, when set.
  std::function<int(const char* text, const char* format, unsigned* const* numbers)> scan;

  void AnswerWith(Reply reply);

  // Records. Steps read "open64", "ioctl", "close", "malloc(577)", "calloc(1, 577)", "free(577)".
  std::vector<Command> commands;
  std::vector<std::string> steps;
  std::vector<Freed> freed;
  int allocations = 0;

  // Allocations of the library that nobody has freed, by size.
  std::vector<std::size_t> Live() const;

  // Frees them, where the library loses memory on purpose: a leak checker reports all others.
  void FreeLost();

  // What the hooks call.
  int Open(const char* node, int flags);
  int Ioctl(int descriptor, unsigned long request, void* argument);
  int Close(int descriptor);
  bool Allocate(std::string step);
  void Remember(void* memory, std::size_t size);
  void Forget(void* memory);

 private:
  mutable std::recursive_mutex mutex_;  // the records themselves allocate and free
  std::map<int, Command> open_;
  int opened_ = 0;
  std::map<void*, std::size_t> live_;
};

}  // namespace fake
