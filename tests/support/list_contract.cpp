#include "support/contract.h"
#include "support/steps.h"

namespace contract {

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
  if (count < getter.cap) {
    const auto* behind = static_cast<const uint8_t*>(list->entries) + count * getter.size;
    EXPECT_BYTES(wire::BytesOf(behind, getter.size), fake::Bytes(getter.size));
  }
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

// A header of a caller's own, with an old content that a fetch may overwrite but never free.
RecordList* ForeignHeader(fake::Device& device) {
  static uint8_t anything;
  auto* list = static_cast<RecordList*>(std::calloc(1, 16));
  list->count = 77;
  list->entries = &anything;
  device.Remember(list, 16);
  return list;
}

// The fetch fails with `error`, has done `steps`, and the header is gone, but where it survives.
void ExpectFetchFailure(const std::function<int(RecordList* list)>& fetch,
                        const std::function<void(fake::Device&)>& script, int error,
                        const Steps& steps, bool survives) {
  fake::Device device;
  script(device);
  RecordList* list = ForeignHeader(device);
  const void* entries = list->entries;
  ExpectFailure(
      device, [&] { return fetch(list); }, error, steps);
  EXPECT_EQ(device.Live(), std::vector<std::size_t>(survives ? 1 : 0, 16));
  if (!survives) return;
  EXPECT_EQ(list->count, 77);
  EXPECT_EQ(list->entries, entries);
  std::free(list);
}

// The exported fetch of a list, called with a header of the caller's. It sends what its getter
// sends, and leaves the header to the caller where the getter loses its own.
void ExpectFetch(const ListGetter& getter) {
  const auto& fetch = getter.fetch;
  const std::size_t size = getter.size;
  const std::size_t total = getter.cap * size;
  const std::string reply = Malloc(total);
  const std::string entries = Calloc(getter.cap, size);
  const std::string freed = Free(total);
  const Steps after = getter.dropsHeader ? Steps{freed} : Steps{"free(16)", freed};
  {
    SCOPED_TRACE("the fetch succeeds");
    fake::Device device;
    device.AnswerWith({.bytes = wire::Patterns(2, size, PatternOf(getter.count))});
    RecordList* list = ForeignHeader(device);
    const Outcome outcome = Run([&] { return fetch(list); });
    ASSERT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.error, kUntouched);
    EXPECT_EQ(device.steps, (Steps{reply} + kExchange + Steps{entries, freed}));
    ExpectSent(device, getter.code, getter.block.bytes(), static_cast<uint32_t>(total));
    EXPECT_EQ(list->count, 2);
    getter.release(list);
    EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
  }
  for (const uint32_t length : {0u, 0x80000000u}) {
    SCOPED_TRACE("the fetch of an empty list clears the count");
    fake::Device device;
    device.AnswerWith({.length = length});
    RecordList* list = ForeignHeader(device);
    EXPECT_EQ(fetch(list), 0);
    EXPECT_EQ(list->count, 0);
    getter.release(list);
    ExpectNothingLeft(device);
  }
  {
    SCOPED_TRACE("the reply buffer cannot be allocated");
    ExpectFetchFailure(
        fetch, [](auto& device) { device.failingAllocation = 1; }, ENOMEM, {reply, "free(16)"},
        false);
  }
  {
    SCOPED_TRACE("the entries cannot be allocated");
    ExpectFetchFailure(
        fetch, [](auto& device) { device.failingAllocation = 2; }, ENOMEM,
        Steps{reply} + kExchange + Steps{entries, "free(16)", freed}, false);
  }
  {
    SCOPED_TRACE("the reply ends inside a record");
    ExpectFetchFailure(
        fetch, [&](auto& device) { device.AnswerWith({.bytes = wire::Pattern(size + 1)}); },
        EBADMSG, Steps{reply} + kExchange + Steps{entries, freed, "free(16)", freed}, false);
  }
  {
    SCOPED_TRACE("the node is missing");
    const Steps steps = Steps{reply, "open64"} + after;
    ExpectFetchFailure(
        fetch, [](auto& device) { device.openError = ENOENT; }, ENOENT, steps, getter.dropsHeader);
  }
  {
    SCOPED_TRACE("the ioctl fails");
    const Steps steps = Steps{reply} + kExchange + after;
    ExpectFetchFailure(
        fetch, [](auto& device) { device.AnswerWith(fake::Failure(EXDEV)); }, EXDEV, steps,
        getter.dropsHeader);
  }
}

// NULL is ignored, a header without entries is freed alone, entries are freed before their header.
void ExpectListRelease(const ListGetter& getter) {
  SCOPED_TRACE("the release");
  fake::Device device;
  const auto allocate = [&](std::size_t count, std::size_t size) {
    void* memory = std::calloc(count, size);
    device.Remember(memory, count * size);
    return memory;
  };
  getter.release(nullptr);
  EXPECT_EQ(device.steps, Steps{});

  auto* bare = static_cast<RecordList*>(allocate(1, 16));
  bare->count = 5;
  getter.release(bare);
  EXPECT_EQ(device.steps, Steps{"free(16)"});

  auto* list = static_cast<RecordList*>(allocate(1, 16));
  list->count = 5;
  list->entries = allocate(5, getter.size);
  getter.release(list);
  EXPECT_EQ(device.steps, (Steps{"free(16)", Free(5 * getter.size), "free(16)"}));
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
  ExpectCutReply(getter, size / 2);
  ExpectCutReply(getter, size - 1);
  ExpectCutReply(getter, size + 1);
  ExpectCutReply(getter, 2 * size - 1);
  ExpectCutReply(getter, 3 * size + size / 2);
  ExpectCutReply(getter, total - 1);

  ExpectListFailures(getter);
}

void ExpectListFailures(const ListGetter& getter) {
  ExpectListRelease(getter);
  if (getter.fetch) ExpectFetch(getter);
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

}  // namespace contract
