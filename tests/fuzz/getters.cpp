#include "getters.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <utility>

#include "memory.h"
#include "require.h"

namespace {

using Runner = std::function<void(const Case& input)>;

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

uint32_t Capacity(const getters::ListGetter& getter) {
  return static_cast<uint32_t>(getter.size * getter.cap);
}

template <typename Getter>
device::Reply TrustedAnswer(const Case& input, uint32_t capacity, const Getter& getter,
                            const Decoding& decoding) {
  device::Reply reply = input.Answer(capacity);
  if (getter.count.width == 0) return reply;
  TrustCounts(reply, getter.size, getter.count,
              decoding.mostTrusted != 0 ? decoding.mostTrusted : getter.count.most);
  return reply;
}

// What the table says was sent.
template <typename Getter>
void RequireSent(const Case& input, const Getter& getter, std::size_t capacity) {
  ::RequireSent(input, getter.code, capacity);
  if (input.openError != 0) return;
  Require(device::Commands()[0].input == getter.block.bytes(), "the input is that of the table");
}

// What becomes of a reply that was decoded into a list.
struct Decoded {
  uint32_t count = 0;
  bool refused = false;
};

Decoded DecodedCount(const getters::ListGetter& getter, int32_t length) {
  if (length <= 0) return {};
  const auto whole = static_cast<uint32_t>(static_cast<std::size_t>(length) / getter.size);
  if (whole >= getter.cap) return {.count = static_cast<uint32_t>(getter.cap)};
  const bool cut = static_cast<std::size_t>(length) % getter.size != 0;
  if (cut && getter.takesCutRecord) return {.count = whole + 1};
  return {.count = whole, .refused = cut};
}

void RequireList(const getters::ListGetter& getter, const Decoding& decoding,
                 const device::Reply& reply, uint32_t count, const RecordList& list) {
  Require(list.count == static_cast<int32_t>(count), "the count is that of the reply");
  const auto* entries = static_cast<const uint8_t*>(list.entries);
  for (uint32_t index = 0; index < count; ++index) {
    const std::size_t offset = std::size_t{index} * getter.size;
    const std::size_t written = reply.bytes.size() - std::min(offset, reply.bytes.size());
    if (written >= getter.size) {
      RequireRecord(decoding.expected, reply.bytes.data() + offset, entries + offset, getter.size);
    } else {
      // A record that the reply cuts, of a list that takes it: its end is unspecified.
      Require(getter.takesCutRecord && index == count - 1, "only the last record may be cut");
      Require(AreSame(entries + offset, reply.bytes.data() + offset, written),
              "a cut record begins as the reply does");
    }
  }
  if (count == getter.cap) return;
  const uint8_t* behind = entries + std::size_t{count} * getter.size;
  Require(std::all_of(behind, behind + getter.size, [](uint8_t byte) { return byte == 0; }),
          "the entries behind the last record are zero");
}

Runner RecordRun(const getters::RecordGetter& getter, const Decoding& decoding) {
  return [=](const Case& input) {
    const auto size = static_cast<uint32_t>(getter.size);
    const device::Reply reply = TrustedAnswer(input, size, getter, decoding);
    void* record = Untouched();
    const Outcome outcome = Call(input, reply, [&] { return getter.call(&record); });
    if (input.failingAllocation == 1) {
      RequireNothingSent();
      RequireFailure(outcome, ENOMEM);
      return Require(record == Untouched(), "the pointer is not touched without a reply buffer");
    }
    RequireSent(input, getter, getter.size);
    if (input.CommandFails()) {
      RequireFailure(outcome, input.CommandError());
      return Require(record == Untouched(), "the pointer is not touched by a failed command");
    }
    const bool isShort = SignedLength(reply) < static_cast<int32_t>(getter.size);
    if (input.failingAllocation == 2 || isShort) {
      RequireFailure(outcome, input.failingAllocation == 2 ? ENOMEM : EBADMSG);
      return Require(record == nullptr, "the pointer is NULL without a record");
    }
    RequireSuccess(outcome);
    RequireLive({getter.size});
    RequireRecord(decoding.expected, reply.bytes.data(), record, getter.size);
    getter.release(record);
  };
}

Runner ListRun(const getters::ListGetter& getter, const Decoding& decoding) {
  return [=](const Case& input) {
    const uint32_t capacity = Capacity(getter);
    const device::Reply reply = TrustedAnswer(input, capacity, getter, decoding);
    auto* list = static_cast<RecordList*>(Untouched());
    const Outcome outcome = Call(input, reply, [&] { return getter.call(&list); });
    if (input.failingAllocation == 1 || input.failingAllocation == 2) {
      RequireNothingSent();
      RequireFailure(outcome, ENOMEM);
      return Require(list == nullptr, "the pointer is NULL after a failure");
    }
    RequireSent(input, getter, capacity);
    if (input.CommandFails()) {
      RequireFailure(outcome, input.CommandError());
      if (getter.dropsHeader) RequireLost({16});
      return Require(list == nullptr, "the pointer is NULL after a failure");
    }
    const Decoded decoded = DecodedCount(getter, SignedLength(reply));
    if (input.failingAllocation == 3 || decoded.refused) {
      const int error = input.failingAllocation == 3 ? ENOMEM : EBADMSG;
      if (!getter.hidesDecodeFailure) {
        RequireFailure(outcome, error);
        return Require(list == nullptr, "the pointer is NULL after a failure");
      }
      Require(outcome.result == 0, "the result is that of the command alone");
      return Require(outcome.error == error, "errno tells of the hidden failure");
    }
    RequireSuccess(outcome);
    RequireLive({16, capacity});
    RequireList(getter, decoding, reply, decoded.count, *list);
    getter.release(list);
  };
}

Runner FetchRun(const getters::ListGetter& getter, const Decoding& decoding) {
  return [=](const Case& input) {
    const uint32_t capacity = Capacity(getter);
    const device::Reply reply = TrustedAnswer(input, capacity, getter, decoding);
    RecordList* list = nullptr;
    const RecordList before{.count = -1, .entries = Untouched()};
    const Outcome outcome = Call(input, reply, [&] {
      list = static_cast<RecordList*>(memory::Give(sizeof before));
      *list = before;
      return getter.fetch(list);
    });
    if (input.failingAllocation == 1) {
      RequireNothingSent();
      return RequireFailure(outcome, ENOMEM);
    }
    RequireSent(input, getter, capacity);
    if (input.CommandFails()) {
      RequireFailure(outcome, input.CommandError());
      if (!getter.dropsHeader) return;
      Require(list->count == before.count && list->entries == before.entries,
              "a failed command leaves the caller's header as it was");
      return RequireLost({16});
    }
    const Decoded decoded = DecodedCount(getter, SignedLength(reply));
    if (input.failingAllocation == 2) return RequireFailure(outcome, ENOMEM);
    if (decoded.refused) return RequireFailure(outcome, EBADMSG);
    RequireSuccess(outcome);
    RequireLive({16, capacity});
    RequireList(getter, decoding, reply, decoded.count, *list);
    getter.release(list);
  };
}

Runner RawRun(const getters::RawGetter& getter) {
  return [=](const Case& input) {
    const auto capacity = static_cast<uint32_t>(getter.size);
    const bool cleared = getter.into == getters::Into::ClearedBuffer;
    const device::Reply reply = input.Answer(capacity);
    const Buffer buffer(static_cast<uint8_t*>(memory::Give(capacity)), std::free);
    const std::size_t looked = std::min<std::size_t>(capacity, reply.bytes.size() + kBehind);
    std::memset(buffer.get(), kFill, looked);
    const Outcome outcome = Call(input, reply, [&] { return getter.call(buffer.get()); });
    Require(memory::Allocations() == 0, "nothing is allocated");
    RequireSent(input, getter, capacity);
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

Runner VariableRun(const getters::RawGetter& getter) {
  return [=](const Case& input) {
    constexpr uint32_t kBefore = 0x5C5C5C5C;
    const device::Reply reply = input.Answer(4);
    uint32_t value = kBefore;
    const Outcome outcome = Call(input, reply, [&] { return getter.call(&value); });
    Require(memory::Allocations() == 0, "nothing is allocated");
    RequireSent(input, getter, 4);
    if (input.CommandFails()) {
      RequireFailure(outcome, input.CommandError());
      return Require(value == kBefore, "a failed command leaves the variable");
    }
    RequireSuccess(outcome);
    RequireWritten(&value, sizeof value, reply);
  };
}

// A fuzzer that lacks a getter of its family is none.
[[noreturn]] void Stop(const std::string& name, const char* what) {
  (void)std::fprintf(stderr, "%s: %s, tests/fuzz/\n", name.c_str(), what);
  std::exit(1);
}

}  // namespace

std::vector<Subject> SubjectsOf(const getters::Family& family, const Decodings& decodings,
                                std::vector<Subject> others,
                                const std::vector<getters::ListGetter>& variants) {
  std::vector<Subject> subjects;
  const auto decodingOf = [&](const std::string& name) {
    const auto found =
        std::find_if(decodings.begin(), decodings.end(),
                     [&](const Decoding& decoding) { return decoding.name == name; });
    if (found == decodings.end()) Stop(name, "no layout in the fuzzer of its family");
    return *found;
  };
  const auto addList = [&](const getters::ListGetter& getter, const char* variant) {
    const Decoding decoding = decodingOf(getter.name);
    subjects.push_back({std::string(getter.name) + variant, ListRun(getter, decoding), "list",
                        getter.size, getter.count});
    if (!getter.fetch) return;
    subjects.push_back({getter.FetchName() + variant, FetchRun(getter, decoding), "list",
                        getter.size, getter.count});
  };
  for (const getters::RecordGetter& getter : family.records) {
    subjects.push_back({getter.name, RecordRun(getter, decodingOf(getter.name)), "record",
                        getter.size, getter.count});
  }
  for (const getters::ListGetter& getter : family.lists) addList(getter, "");
  for (const getters::ListGetter& getter : variants) addList(getter, ":variant");
  for (const getters::RawGetter& getter : family.raws) {
    const bool isStraight = getter.into != getters::Into::Variable;
    subjects.push_back(
        {getter.name, isStraight ? RawRun(getter) : VariableRun(getter), "raw", getter.size});
  }
  for (const getters::OtherGetter& getter : family.others) {
    const auto own = std::find_if(others.begin(), others.end(), [&](const Subject& subject) {
      return subject.name == getter.name;
    });
    if (own == others.end()) Stop(getter.name, "no function in the fuzzer of its family");
    own->size = getter.size;
  }
  std::move(others.begin(), others.end(), std::back_inserter(subjects));
  return subjects;
}

void* Untouched() {
  static uint64_t place;
  return &place;
}

void RequireSent(const Case& input, unsigned long code, std::size_t capacity) {
  if (input.openError != 0) return RequireNothingSent();
  Require(device::Commands().size() == 1, "one command is sent");
  const device::Command& command = device::Commands()[0];
  Require(command.code == code, "the command has its code");
  Require(command.capacity == capacity, "the kernel is told the room that there is");
  Require(command.input.empty() || command.input.size() == 968, "the input is a block or nothing");
}

void RequireSent(const Case& input, const getters::OtherGetter& getter) {
  RequireSent(input, getter.code, getter.Capacity());
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

void TrustCounts(device::Reply& reply, std::size_t size, const getters::Count& count,
                 uint32_t most) {
  for (std::size_t at = count.offset; at + count.width <= reply.bytes.size(); at += size) {
    uint32_t claimed = 0;
    std::memcpy(&claimed, reply.bytes.data() + at, count.width);
    if (claimed <= most) continue;
    claimed %= most + 1;
    std::memcpy(reply.bytes.data() + at, &claimed, count.width);
  }
}
