#include "sweep/sweep.h"

namespace sweep {

namespace {

// What stays of a reply that ends inside a record is refused, records beyond the cap are ignored,
// and a negative length is an empty list.
ErrorOf UnlessWhole(std::size_t record, std::size_t cap) {
  return [record, cap](uint32_t length) {
    if (length >= 0x80000000U || length >= cap * record) return 0;
    return length % record == 0 ? 0 : EBADMSG;
  };
}

}  // namespace

ErrorOf ShorterThan(std::size_t size, int error) {
  return [size, error](uint32_t length) {
    return static_cast<int32_t>(length) < static_cast<int32_t>(size) ? error : 0;
  };
}

Row Row::Holding(std::size_t offset, std::size_t width, uint32_t value) && {
  numbers.push_back({offset, width, value});
  return std::move(*this);
}

Row Row::Filled() && {
  isFilled = true;
  return std::move(*this);
}

Row Row::Refusing(ErrorOf refuse) && {
  errorOf = std::move(refuse);
  return std::move(*this);
}

Row Row::KeepingOnFailedCommand(std::size_t size) && {
  keptByFailedCommand.push_back(size);
  return std::move(*this);
}

Row Row::KeepingOnRefusedReply(std::size_t size) && {
  keptByRefusedReply.push_back(size);
  return std::move(*this);
}

Row Row::KeepingOnRelease(std::size_t size) && {
  keptByRelease.push_back(size);
  return std::move(*this);
}

Row Command(std::string name, std::function<int()> call) {
  return {.name = std::move(name),
          .call = [call = std::move(call)](fake::Device&) { return call(); },
          .release = {}};
}

Row Quiet(std::string name, std::function<int()> call, int error) {
  Row row = Command(std::move(name), std::move(call));
  row.commands = 0;
  return std::move(row).Refusing([error](uint32_t) { return error; });
}

Row Raw(std::string name, std::function<int(void* buffer)> call, std::size_t capacity) {
  return {.name = std::move(name),
          .call =
              [capacity, call = std::move(call)](fake::Device&) {
                // Exactly as large as stated, so that a sanitizer sees what goes beyond.
                const auto buffer = std::make_unique<uint8_t[]>(capacity);
                return call(buffer.get());
              },
          .release = {},
          .record = capacity};
}

Row Scalar(std::string name, std::function<int(uint32_t* out)> call) {
  return Raw(
      std::move(name),
      [call = std::move(call)](void* buffer) { return call(static_cast<uint32_t*>(buffer)); }, 4);
}

Row List(std::string name, std::function<int(RecordList** out)> call, void (*release)(RecordList*),
         std::size_t record, std::size_t cap) {
  return Allocated<RecordList>(std::move(name), std::move(call), release, record, 3)
      .Refusing(UnlessWhole(record, cap));
}

Row Fetch(std::string name, std::function<int(RecordList* list)> call, void (*release)(RecordList*),
          std::size_t record, std::size_t cap) {
  auto list = std::make_shared<RecordList*>();
  return Row{.name = std::move(name),
             .call =
                 [list, call = std::move(call)](fake::Device& device) {
                   *list = static_cast<RecordList*>(std::calloc(1, 16));
                   device.Remember(*list, 16);
                   return call(*list);
                 },
             .release = [list, release] { release(*list); },
             .record = record,
             .allocations = 2}
      .Refusing(UnlessWhole(record, cap));
}

const Rows& AllRows() {
  static const Rows all = [] {
    Rows rows;
    for (Rows (*family)() : {ChannelRows, InstanceRows, LifRows, RouteRows, PolicyRows, BridgeRows,
                             E2iRows, McastRows, ServicesRows}) {
      for (Row& row : family()) rows.push_back(std::move(row));
    }
    return rows;
  }();
  return all;
}

}  // namespace sweep
