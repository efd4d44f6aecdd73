#include "support/contract.h"

#include <algorithm>
#include <cstring>

#include "support/steps.h"

namespace contract {

namespace {

constexpr int kOpenReadWrite = 2;

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
    device.steps.clear();
    getter.release(nullptr);
    EXPECT_EQ(device.steps, Steps{});
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
