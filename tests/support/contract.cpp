#include "support/contract.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace contract {

namespace {

constexpr int kOpenReadWrite = 2;

Steps operator+(Steps left, const Steps& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

std::string Malloc(std::size_t size) { return fmt::format("malloc({})", size); }
std::string Calloc(std::size_t count, std::size_t size) {
  return fmt::format("calloc({}, {})", count, size);
}
std::string Free(std::size_t size) { return fmt::format("free({})", size); }

const Steps kExchange{"open64", "ioctl", "close"};

// A pointer value that no allocation has.
template <typename Pointer>
Pointer Sentinel() {
  static char anything;
  return reinterpret_cast<Pointer>(&anything);
}

void ExpectNothingLeft(const fake::Device& device) {
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
}

}  // namespace

Outcome Run(const Call& call) {
  errno = kUntouched;
  const int result = call();
  return {result, errno};
}

void ExpectFailure(fake::Device& device, const Call& call, int error, const Steps& steps) {
  const Outcome outcome = Run(call);
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.error, error);
  EXPECT_EQ(device.steps, steps);
}

void ExpectRefused(const Call& call) {
  fake::Device device;
  ExpectFailure(device, call, EINVAL, {});
}

void ExpectSent(const fake::Device& device, unsigned long code, const fake::Bytes& input,
                uint32_t capacity) {
  ASSERT_EQ(device.commands.size(), 1u);
  const fake::Command& command = device.commands.front();
  EXPECT_EQ(command.node, kNormalNode);
  EXPECT_EQ(command.openFlags, kOpenReadWrite);
  EXPECT_EQ(command.request, code);
  EXPECT_EQ(command.inLength, input.size());
  EXPECT_EQ(command.inBuffer == nullptr, input.empty());
  EXPECT_BYTES(command.input, input);
  EXPECT_EQ(command.outLength, capacity);
  if (capacity == 0) {
    EXPECT_EQ(command.outBuffer, nullptr);
  }
}

void ExpectCommand(const Call& call, unsigned long code, const fake::Bytes& input) {
  {
    SCOPED_TRACE("the command succeeds");
    fake::Device device;
    const Outcome outcome = Run(call);
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.error, kUntouched);
    EXPECT_EQ(device.steps, kExchange);
    ExpectSent(device, code, input, 0);
  }
  {
    SCOPED_TRACE("the node is missing");
    fake::Device device;
    device.openError = ENOENT;
    ExpectFailure(device, call, ENOENT, {"open64"});
  }
  {
    SCOPED_TRACE("the ioctl fails");
    fake::Device device;
    device.AnswerWith(fake::Failure(EXDEV));
    ExpectFailure(device, call, EXDEV, kExchange);
  }
}

void ExpectCommand(const Call& call, unsigned long code, const wire::Block& block) {
  ExpectCommand(call, code, block.bytes());
}

void ExpectRawGetter(const RawGetter& getter) {
  const auto size = static_cast<uint32_t>(getter.size);
  const bool isStraight = getter.into != getters::Into::Variable;
  const bool isCleared = getter.into == getters::Into::ClearedBuffer;
  fake::Bytes buffer;
  const Call call = [&] {
    buffer.assign(size + 1, 0xEE);
    return getter.call(buffer.data());
  };
  // What the caller finds of a kernel that wrote `bytes`.
  const auto holding = [&](const fake::Bytes& bytes) {
    fake::Bytes expected(size, isCleared ? 0 : 0xEE);
    expected.push_back(0xEE);
    std::copy(bytes.begin(), bytes.end(), expected.begin());
    return expected;
  };
  const fake::Bytes few{1, 2, 3};
  const fake::Bytes all = wire::Pattern(size);
  {
    SCOPED_TRACE("the kernel fills the buffer");
    fake::Device device;
    device.AnswerWith({.bytes = all});
    const Outcome outcome = Run(call);
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.error, kUntouched);
    EXPECT_EQ(device.steps, kExchange);
    ExpectSent(device, getter.code, getter.block.bytes(), size);
    ASSERT_EQ(device.commands.size(), 1u);
    EXPECT_EQ(device.commands.front().outBuffer == buffer.data(), isStraight);
    EXPECT_BYTES(buffer, holding(all));
  }
  for (const uint32_t length : {0u, size - 1, size + 1, 0x80000000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(fmt::format("the length is not looked at: {}", length));
    fake::Device device;
    device.AnswerWith({.bytes = all, .length = length});
    EXPECT_EQ(call(), 0);
    EXPECT_BYTES(buffer, holding(all));
  }
  {
    SCOPED_TRACE("the node is missing");
    fake::Device device;
    device.openError = ENOENT;
    ExpectFailure(device, call, ENOENT, {"open64"});
    EXPECT_BYTES(buffer, holding({}));
  }
  {
    SCOPED_TRACE("the ioctl fails and has written");
    fake::Device device;
    device.AnswerWith({.bytes = few, .result = -1, .error = EXDEV});
    ExpectFailure(device, call, EXDEV, kExchange);
    EXPECT_BYTES(buffer, holding(isStraight ? few : fake::Bytes{}));
  }
  if (isStraight) {
    SCOPED_TRACE("the kernel writes a part of the buffer");
    fake::Device device;
    device.answer = [&](const fake::Command&) {
      EXPECT_BYTES(buffer, holding({}));
      return fake::Reply{.bytes = few};
    };
    EXPECT_EQ(call(), 0);
    EXPECT_BYTES(buffer, holding(few));
  }
  if (isCleared) {
    SCOPED_TRACE("no reply is asked for");
    ExpectCommand([&] { return getter.call(nullptr); }, getter.code, getter.block);
  } else if (isStraight) {
    SCOPED_TRACE("NULL is given to the kernel, which decides");
    for (const int error : {0, EFAULT}) {
      fake::Device device;
      if (error != 0) device.AnswerWith(fake::Failure(error));
      const Outcome outcome = Run([&] { return getter.call(nullptr); });
      EXPECT_EQ(outcome.result, error == 0 ? 0 : -1);
      EXPECT_EQ(outcome.error, error == 0 ? kUntouched : error);
      ExpectSent(device, getter.code, getter.block.bytes(), size);
      ASSERT_EQ(device.commands.size(), 1u);
      EXPECT_EQ(device.commands.front().outBuffer, nullptr);
    }
  }
}

wire::RecordPattern PatternOf(const getters::Count& count) {
  return [count](std::size_t size, unsigned seed) {
    fake::Bytes record = wire::Pattern(size, seed);
    const uint32_t entries = seed % (count.most + 1);
    if (count.offset + count.width <= size) {
      std::memcpy(record.data() + count.offset, &entries, count.width);
    }
    return record;
  };
}

void ExpectRecordGetter(const RecordGetter& getter) {
  const std::size_t size = getter.size;
  void* out = nullptr;
  const Call call = [&] {
    out = Sentinel<void*>();
    return getter.call(&out);
  };
  for (const uint32_t length : {static_cast<uint32_t>(size), static_cast<uint32_t>(size + 1),
                                static_cast<uint32_t>(3 * size), 0x7FFFFFFFu}) {
    SCOPED_TRACE(fmt::format("a reply of {} bytes", length));
    fake::Device device;
    device.AnswerWith({.bytes = PatternOf(getter.count)(size, 1), .length = length});
    const Outcome outcome = Run(call);
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.error, kUntouched);
    EXPECT_EQ(device.steps, (Steps{Malloc(size)} + kExchange + Steps{Calloc(1, size), Free(size)}));
    ExpectSent(device, getter.code, getter.block.bytes(), static_cast<uint32_t>(size));
    EXPECT_EQ(device.Live(), std::vector<std::size_t>{size});
    getter.release(out);
    ExpectNothingLeft(device);
  }
  for (const uint32_t length :
       {0u, 1u, static_cast<uint32_t>(size - 1), 0x80000000u, 0xFFFFFFFFu}) {
    SCOPED_TRACE(fmt::format("a short reply of {} bytes", length));
    fake::Device device;
    device.AnswerWith({.bytes = wire::Pattern(size - 1), .length = length});
    ExpectFailure(device, call, EBADMSG,
                  Steps{Malloc(size)} + kExchange + Steps{Calloc(1, size), Free(size), Free(size)});
    EXPECT_EQ(out, nullptr);
    ExpectNothingLeft(device);
  }
  {
    SCOPED_TRACE("the reply buffer cannot be allocated");
    fake::Device device;
    device.failingAllocation = 1;
    ExpectFailure(device, call, ENOMEM, {Malloc(size)});
    EXPECT_EQ(out, Sentinel<void*>());
  }
  {
    SCOPED_TRACE("the record cannot be allocated");
    fake::Device device;
    device.AnswerWith({.bytes = PatternOf(getter.count)(size, 1)});
    device.failingAllocation = 2;
    ExpectFailure(device, call, ENOMEM,
                  Steps{Malloc(size)} + kExchange + Steps{Calloc(1, size), Free(size)});
    EXPECT_EQ(out, nullptr);
    ExpectNothingLeft(device);
  }
  {
    SCOPED_TRACE("the node is missing");
    fake::Device device;
    device.openError = ENOENT;
    ExpectFailure(device, call, ENOENT, {Malloc(size), "open64", Free(size)});
    EXPECT_EQ(out, Sentinel<void*>());
  }
  {
    SCOPED_TRACE("the ioctl fails");
    fake::Device device;
    device.AnswerWith(fake::Failure(EXDEV));
    ExpectFailure(device, call, EXDEV, Steps{Malloc(size)} + kExchange + Steps{Free(size)});
    EXPECT_EQ(out, Sentinel<void*>());
  }
}

namespace {

void ExpectListOf(const ListGetter& getter, std::size_t count, std::size_t produced,
                  uint32_t length) {
  SCOPED_TRACE(fmt::format("a reply of {} bytes", length));
  const std::size_t total = getter.cap * getter.size;
  fake::Device device;
  device.AnswerWith(
      {.bytes = wire::Patterns(produced, getter.size, PatternOf(getter.count)), .length = length});
  auto* list = Sentinel<RecordList*>();
  const Outcome outcome = Run([&] { return getter.call(&list); });
  ASSERT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.error, kUntouched);
  EXPECT_EQ(device.steps, (Steps{Calloc(1, 16), Malloc(total)} + kExchange +
                           Steps{Calloc(getter.cap, getter.size), Free(total)}));
  ExpectSent(device, getter.code, getter.block.bytes(), static_cast<uint32_t>(total));
  EXPECT_EQ(list->count, static_cast<int32_t>(count));
  ASSERT_NE(list->entries, nullptr);
  getter.release(list);
  ExpectNothingLeft(device);
}

void ExpectUndecoded(const ListGetter& getter, fake::Device& device, int error,
                     const Steps& steps) {
  auto* list = Sentinel<RecordList*>();
  const Outcome outcome = Run([&] { return getter.call(&list); });
  EXPECT_EQ(outcome.result, getter.hidesDecodeFailure ? 0 : -1);
  EXPECT_EQ(outcome.error, error);
  EXPECT_EQ(device.steps, steps);
  EXPECT_EQ(list != nullptr, getter.hidesDecodeFailure);
  EXPECT_NE(list, Sentinel<RecordList*>());
  ExpectNothingLeft(device);
}

void ExpectCutReply(const ListGetter& getter, std::size_t length) {
  if (getter.takesCutRecord) {
    const std::size_t whole = length / getter.size;
    return ExpectListOf(getter, whole + 1, whole, static_cast<uint32_t>(length));
  }
  SCOPED_TRACE(fmt::format("a cut reply of {} bytes", length));
  const std::size_t total = getter.cap * getter.size;
  fake::Device device;
  fake::Bytes reply =
      wire::Patterns(length / getter.size + 1, getter.size, PatternOf(getter.count));
  reply.resize(length);
  device.AnswerWith({.bytes = reply});
  ExpectUndecoded(getter, device, EBADMSG,
                  Steps{Calloc(1, 16), Malloc(total)} + kExchange +
                      Steps{Calloc(getter.cap, getter.size), Free(total), Free(16), Free(total)});
}

void ExpectListFailure(const ListGetter& getter, const std::function<void(fake::Device&)>& script,
                       int error, const Steps& steps, const std::vector<std::size_t>& left) {
  fake::Device device;
  script(device);
  auto* list = Sentinel<RecordList*>();
  ExpectFailure(
      device, [&] { return getter.call(&list); }, error, steps);
  EXPECT_EQ(list, nullptr);
  EXPECT_EQ(device.Live(), left);
  device.FreeLost();
}

}  // namespace

void ExpectListGetter(const ListGetter& getter) {
  const std::size_t size = getter.size;
  const std::size_t total = getter.cap * size;
  ExpectListOf(getter, 0, 0, 0);
  ExpectListOf(getter, 1, 1, static_cast<uint32_t>(size));
  ExpectListOf(getter, 3, 3, static_cast<uint32_t>(3 * size));
  ExpectListOf(getter, getter.cap, getter.cap, static_cast<uint32_t>(total));
  ExpectListOf(getter, getter.cap, getter.cap, static_cast<uint32_t>(total + 1));
  ExpectListOf(getter, getter.cap, getter.cap, static_cast<uint32_t>(total + size));
  ExpectListOf(getter, getter.cap, getter.cap, 0x7FFFFFFFu);
  ExpectListOf(getter, 0, 1, 0x80000000u);
  ExpectListOf(getter, 0, 1, 0xFFFFFFFFu);

  ExpectCutReply(getter, 1);
  ExpectCutReply(getter, size - 1);
  ExpectCutReply(getter, size + 1);
  ExpectCutReply(getter, 2 * size - 1);
  ExpectCutReply(getter, total - 1);

  ExpectListFailures(getter);
}

void ExpectListFailures(const ListGetter& getter) {
  const std::size_t size = getter.size;
  const std::size_t total = getter.cap * size;
  const Steps header{Calloc(1, 16)};
  const Steps buffer{Malloc(total)};
  {
    SCOPED_TRACE("the header cannot be allocated");
    ExpectListFailure(getter, [](auto& device) { device.failingAllocation = 1; }, ENOMEM, header,
                      {});
  }
  {
    SCOPED_TRACE("the reply buffer cannot be allocated");
    ExpectListFailure(getter, [](auto& device) { device.failingAllocation = 2; }, ENOMEM,
                      header + buffer + Steps{Free(16)}, {});
  }
  {
    SCOPED_TRACE("the entries cannot be allocated");
    fake::Device device;
    device.failingAllocation = 3;
    ExpectUndecoded(
        getter, device, ENOMEM,
        header + buffer + kExchange + Steps{Calloc(getter.cap, size), Free(16), Free(total)});
  }
  const Steps after = getter.dropsHeader ? Steps{Free(total)} : Steps{Free(16), Free(total)};
  const std::vector<std::size_t> left(getter.dropsHeader ? 1 : 0, 16);
  {
    SCOPED_TRACE("the node is missing");
    ExpectListFailure(
        getter, [](auto& device) { device.openError = ENOENT; }, ENOENT,
        header + buffer + Steps{"open64"} + after, left);
  }
  {
    SCOPED_TRACE("the ioctl fails");
    ExpectListFailure(
        getter, [](auto& device) { device.AnswerWith(fake::Failure(EXDEV)); }, EXDEV,
        header + buffer + kExchange + after, left);
  }
}

void ExpectListRelease(const std::function<void(RecordList* list)>& release) {
  fake::Device device;
  const auto allocate = [&](std::size_t count, std::size_t size) {
    void* memory = std::calloc(count, size);
    device.Remember(memory, count * size);
    return memory;
  };
  release(nullptr);
  EXPECT_EQ(device.steps, Steps{});

  auto* bare = static_cast<RecordList*>(allocate(1, 16));
  bare->count = 5;
  release(bare);
  EXPECT_EQ(device.steps, Steps{"free(16)"});

  auto* list = static_cast<RecordList*>(allocate(1, 16));
  list->count = 5;
  list->entries = allocate(3, 5);
  release(list);
  EXPECT_EQ(device.steps, (Steps{"free(16)", "free(15)", "free(16)"}));
}

fake::Bytes DecodeOne(const RecordGetter& getter, const fake::Bytes& source) {
  fake::Device device;
  device.AnswerWith({.bytes = source});
  void* out = nullptr;
  EXPECT_EQ(getter.call(&out), 0);
  const fake::Bytes record = wire::BytesOf(out, getter.size);
  getter.release(out);
  return record;
}

std::vector<fake::Bytes> DecodeAll(const ListGetter& getter, const fake::Bytes& source) {
  fake::Device device;
  device.AnswerWith({.bytes = source});
  RecordList* list = nullptr;
  EXPECT_EQ(getter.call(&list), 0);
  std::vector<fake::Bytes> records;
  const auto* entries = static_cast<const uint8_t*>(list->entries);
  for (int32_t index = 0; index < list->count; ++index, entries += getter.size) {
    records.push_back(wire::BytesOf(entries, getter.size));
  }
  getter.release(list);
  return records;
}

}  // namespace contract
