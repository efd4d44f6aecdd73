#pragma once

#include <vdrzax.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "support/contract.h"
#include "support/fake_device.h"
#include "support/getters/table.h"

// Every exported function as a row of one table, and the few shapes that rows have.
namespace sweep {

using Sizes = std::vector<std::size_t>;

// The errno that a reply leaves for which the kernel claims `length` bytes: 0 when it is taken,
// contract::kUntouched when it is refused without a word.
using ErrorOf = std::function<int(uint32_t length)>;

// A number that the replies of a row hold in each record.
struct Number {
  std::size_t offset;
  std::size_t width;
  uint32_t value;
};

// A call with valid arguments, and what is expected of it.
struct Row {
  std::string name;
  std::function<int(fake::Device& device)> call;
  std::function<void()> release;  // gives back what a successful call stored; may be empty
  std::size_t record = 0;         // bytes of one record of the reply
  int allocations = 0;            // of a successful call
  int commands = 1;               // of a successful call
  ErrorOf errorOf = [](uint32_t) { return 0; };
  std::vector<Number> numbers = {};

  // The device fills the whole buffer, whatever length it claims: the function reads what it needs
  // without looking at the length.
  bool isFilled = false;

  // Memory that is lost on purpose, or stays with the caller, by what happened.
  Sizes keptByFailedCommand = {};
  Sizes keptByRefusedReply = {};
  Sizes keptByRelease = {};

  // A reply that cannot be decoded is answered with 0.
  bool hidesDecodeFailure = false;

  // The code of a first command that only asks for a size, and what the device tells.
  struct SizeQuery {
    unsigned long code;
    fake::Bytes reply;
  };
  std::optional<SizeQuery> sizeQuery = {};

  Row Holding(std::size_t offset, std::size_t width, uint32_t value) &&;
  Row Filled() &&;
  Row Refusing(ErrorOf refuse) &&;
  Row KeepingOnFailedCommand(std::size_t size) &&;
  Row KeepingOnRefusedReply(std::size_t size) &&;
  Row KeepingOnRelease(std::size_t size) &&;
};

using Rows = std::vector<Row>;

// One file a family, and one for the channel. What the table of getters holds is not repeated there.
#define DECLARE_ROWS(family) Rows family##Rows();
FOR_EACH_FAMILY(DECLARE_ROWS)
#undef DECLARE_ROWS
Rows ChannelRows();

// All of them.
const Rows& AllRows();

// Refuses a reply below `size` bytes. Lengths are signed.
ErrorOf ShorterThan(std::size_t size, int error = EBADMSG);

// A command without output.
Row Command(std::string name, std::function<int()> call);

// A function that never comes to the device, and the errno with which it refuses.
Row Quiet(std::string name, std::function<int()> call, int error = 0);

// The kernel writes into a buffer of the caller's, and any length is taken.
Row Raw(std::string name, std::function<int(void* buffer)> call, std::size_t capacity);
Row Raw(const getters::OtherGetter& getter, std::function<int(void* buffer)> call);

// A getter of the table, and the fetch of a list: its header counts as allocated, and after a failure
// it has been freed by the fetch, but for the lists that drop it.
Row Getter(const getters::ListGetter& getter);
Row Fetch(const getters::ListGetter& getter);
Row Getter(const getters::RecordGetter& getter);
Row Getter(const getters::RawGetter& getter);

// An object that the library allocates after a reply buffer, here without a rule for the length.
template <typename Object>
Row Allocated(std::string name, std::function<int(Object** out)> call,
              std::function<void(Object*)> release, std::size_t record, int allocations) {
  auto out = std::make_shared<Object*>();
  return {.name = std::move(name),
          .call = [out, call = std::move(call)](fake::Device&) { return call(out.get()); },
          .release = [out, release] { release(*out); },
          .record = record,
          .allocations = allocations};
}

// NULL is ignored, and an empty object of `size` bytes is given back.
template <typename Object>
Row Release(std::string name, void (*release)(Object*), std::size_t size) {
  return {.name = std::move(name),
          .call =
              [release, size](fake::Device& device) {
                release(nullptr);
                void* object = std::calloc(1, size);
                device.Remember(object, size);
                release(static_cast<Object*>(object));
                return 0;
              },
          .release = {},
          .commands = 0};
}

}  // namespace sweep
