#include "getters.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <utility>

#include "memory.h"
#include "require.h"

namespace {

constexpr uint8_t kFill = 0x5C;

// How far behind a reply the caller's buffer is looked at.
constexpr std::size_t kBehind = 64;

void RequireRecord(ExpectedRecord expected, const uint8_t* source, const void* record,
                   std::size_t size) {
  std::vector<uint8_t> wanted(size);
  expected(source, wanted.data());
  Require(AreSame(record, wanted.data(), size), "a record holds what its layout says");
}

using Buffer = std::unique_ptr<uint8_t[], decltype(&std::free)>;

device::Reply TrustedAnswer(const Case& input, uint32_t capacity, Trust trust) {
  device::Reply reply = input.Answer(capacity);
  if (trust) trust(reply);
  return reply;
}

// What becomes of a reply that was decoded into a list.
struct Decoded {
  uint32_t count = 0;
  bool refused = false;
};

Decoded DecodedCount(const ListShape& shape, int32_t length) {
  if (length <= 0) return {};
  const uint32_t whole = static_cast<uint32_t>(length) / shape.size;
  if (whole >= shape.cap) return {.count = shape.cap};
  const bool cut = static_cast<uint32_t>(length) % shape.size != 0;
  if (cut && shape.takesCutRecord) return {.count = whole + 1};
  return {.count = whole, .refused = cut};
}

void RequireList(const ListShape& shape, const device::Reply& reply, uint32_t count,
                 const RecordList& list) {
  Require(list.count == static_cast<int32_t>(count), "the count is that of the reply");
  const auto* entries = static_cast<const uint8_t*>(list.entries);
  for (uint32_t index = 0; index < count; ++index) {
    const std::size_t offset = std::size_t{index} * shape.size;
    const std::size_t written = reply.bytes.size() - std::min(offset, reply.bytes.size());
    if (written >= shape.size) {
      RequireRecord(shape.expected, reply.bytes.data() + offset, entries + offset, shape.size);
    } else {
      // A record that the reply cuts, of a list that takes it: its end is unspecified.
      Require(shape.takesCutRecord && index == count - 1, "only the last record may be cut");
      Require(AreSame(entries + offset, reply.bytes.data() + offset, written),
              "a cut record begins as the reply does");
    }
  }
  if (count == shape.cap) return;
  const uint8_t* behind = entries + std::size_t{count} * shape.size;
  Require(std::all_of(behind, behind + shape.size, [](uint8_t byte) { return byte == 0; }),
          "the entries behind the last record are zero");
}

}  // namespace

Subject AnyRecordGetter(RecordShape shape, const std::function<int(void** out)>& get,
                        const std::function<void(void* record)>& release) {
  return [=](const Case& input) {
    const device::Reply reply = TrustedAnswer(input, shape.size, shape.trust);
    void* record = Untouched();
    const Outcome outcome = Call(input, reply, [&] { return get(&record); });
    if (input.failingAllocation == 1) {
      RequireNothingSent();
      RequireFailure(outcome, ENOMEM);
      return Require(record == Untouched(), "the pointer is not touched without a reply buffer");
    }
    RequireSent(input, shape.code, shape.size);
    if (input.CommandFails()) {
      RequireFailure(outcome, input.CommandError());
      return Require(record == Untouched(), "the pointer is not touched by a failed command");
    }
    const bool isShort = SignedLength(reply) < static_cast<int32_t>(shape.size);
    if (input.failingAllocation == 2 || isShort) {
      RequireFailure(outcome, input.failingAllocation == 2 ? ENOMEM : EBADMSG);
      return Require(record == nullptr, "the pointer is NULL without a record");
    }
    RequireSuccess(outcome);
    RequireLive({shape.size});
    RequireRecord(shape.expected, reply.bytes.data(), record, shape.size);
    release(record);
  };
}

Subject ListGetter(ListShape shape, int (*get)(RecordList** out), ReleaseList release) {
  return [=](const Case& input) {
    const uint32_t capacity = shape.size * shape.cap;
    const device::Reply reply = TrustedAnswer(input, capacity, shape.trust);
    auto* list = static_cast<RecordList*>(Untouched());
    const Outcome outcome = Call(input, reply, [&] { return get(&list); });
    if (input.failingAllocation == 1 || input.failingAllocation == 2) {
      RequireNothingSent();
      RequireFailure(outcome, ENOMEM);
      return Require(list == nullptr, "the pointer is NULL after a failure");
    }
    RequireSent(input, shape.code, capacity);
    if (input.CommandFails()) {
      RequireFailure(outcome, input.CommandError());
      if (shape.dropsHeader) RequireLost({16});
      return Require(list == nullptr, "the pointer is NULL after a failure");
    }
    const Decoded decoded = DecodedCount(shape, SignedLength(reply));
    if (input.failingAllocation == 3 || decoded.refused) {
      const int error = input.failingAllocation == 3 ? ENOMEM : EBADMSG;
      if (!shape.hidesDecodeFailure) {
        RequireFailure(outcome, error);
        return Require(list == nullptr, "the pointer is NULL after a failure");
      }
      Require(outcome.result == 0, "the result is that of the command alone");
      return Require(outcome.error == error, "errno tells of the hidden failure");
    }
    RequireSuccess(outcome);
    RequireLive({16, capacity});
    RequireList(shape, reply, decoded.count, *list);
    release(list);
  };
}

Subject ListFetch(ListShape shape, int (*fetch)(RecordList* list), ReleaseList release) {
  return [=](const Case& input) {
    const uint32_t capacity = shape.size * shape.cap;
    const device::Reply reply = TrustedAnswer(input, capacity, shape.trust);
    RecordList* list = nullptr;
    const RecordList before{.count = -1, .entries = Untouched()};
    const Outcome outcome = Call(input, reply, [&] {
      list = static_cast<RecordList*>(memory::Give(sizeof before));
      *list = before;
      return fetch(list);
    });
    if (input.failingAllocation == 1) {
      RequireNothingSent();
      return RequireFailure(outcome, ENOMEM);
    }
    RequireSent(input, shape.code, capacity);
    if (input.CommandFails()) {
      RequireFailure(outcome, input.CommandError());
      if (!shape.dropsHeader) return;
      Require(list->count == before.count && list->entries == before.entries,
              "a failed command leaves the caller's header as it was");
      return RequireLost({16});
    }
    const Decoded decoded = DecodedCount(shape, SignedLength(reply));
    if (input.failingAllocation == 2) return RequireFailure(outcome, ENOMEM);
    if (decoded.refused) return RequireFailure(outcome, EBADMSG);
    RequireSuccess(outcome);
    RequireLive({16, capacity});
    RequireList(shape, reply, decoded.count, *list);
    release(list);
  };
}

Subject RawGetter(uint32_t code, uint32_t capacity, int (*get)(void* buffer), bool cleared) {
  return [=](const Case& input) {
    const device::Reply reply = input.Answer(capacity);
    const Buffer buffer(static_cast<uint8_t*>(memory::Give(capacity)), std::free);
    const std::size_t looked = std::min<std::size_t>(capacity, reply.bytes.size() + kBehind);
    std::memset(buffer.get(), kFill, looked);
    const Outcome outcome = Call(input, reply, [&] { return get(buffer.get()); });
    Require(memory::Allocations() == 0, "nothing is allocated");
    RequireSent(input, code, capacity);
    Require(input.openError != 0 || device::Commands()[0].output == buffer.get(),
            "the kernel gets the caller's buffer");
    if (input.CommandFails()) {
      RequireFailure(outcome, input.CommandError());
    } else {
      RequireSuccess(outcome);
    }
    const std::size_t written = input.openError == 0 ? reply.bytes.size() : 0;
    Require(AreSame(buffer.get(), reply.bytes.data(), written),
            "the buffer holds what the kernel wrote");
    Require(std::all_of(buffer.get() + written, buffer.get() + looked,
                        [&](uint8_t byte) { return byte == (cleared ? 0 : kFill); }),
            "nothing else is written");
  };
}

Subject ScalarGetter(uint32_t code, int (*get)(uint32_t* out)) {
  return [=](const Case& input) {
    constexpr uint32_t kBefore = 0x5C5C5C5C;
    const device::Reply reply = input.Answer(4);
    uint32_t value = kBefore;
    const Outcome outcome = Call(input, reply, [&] { return get(&value); });
    Require(memory::Allocations() == 0, "nothing is allocated");
    RequireSent(input, code, 4);
    if (input.CommandFails()) {
      RequireFailure(outcome, input.CommandError());
      return Require(value == kBefore, "a failed command leaves the variable");
    }
    RequireSuccess(outcome);
    RequireWritten(&value, sizeof value, reply);
  };
}

void* Untouched() {
  static uint64_t place;
  return &place;
}

void RequireSent(const Case& input, uint32_t code, uint32_t capacity) {
  if (input.openError != 0) return RequireNothingSent();
  Require(device::Commands().size() == 1, "one command is sent");
  const device::Command& command = device::Commands()[0];
  Require(command.code == code, "the command has its code");
  Require(command.capacity == capacity, "the kernel is told the room that there is");
  Require(command.input.empty() || command.input.size() == 968, "the input is a block or nothing");
}

void RequireNothingSent() { Require(device::Commands().empty(), "no command is sent"); }

void RequireLive(const std::vector<std::size_t>& sizes) {
  Require(memory::Live() == sizes, "the library holds what it hands out and nothing else");
}

void RequireLost(const std::vector<std::size_t>& sizes) {
  Require(memory::Live() == sizes, "the library loses what it says and nothing else");
  memory::FreeLost();
}

void RequireWritten(const void* memory, std::size_t size, const device::Reply& reply) {
  Require(AreSame(memory, reply.bytes.data(), std::min(size, reply.bytes.size())),
          "the caller gets what the kernel wrote");
}
