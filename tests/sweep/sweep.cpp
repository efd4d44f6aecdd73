#include "sweep/sweep.h"

#include <iterator>

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

// All entries of a record count as valid.
Row Counted(Row row, const getters::Count& count) {
  if (count.width == 0) return row;
  return std::move(row).Holding(count.offset, count.width, count.most);
}

Row Listed(Row row, const getters::ListGetter& getter) {
  row = Counted(std::move(row), getter.count);
  if (getter.dropsHeader) row = std::move(row).KeepingOnFailedCommand(16);
  if (getter.takesCutRecord) return row;
  return std::move(row).Refusing(UnlessWhole(getter.size, getter.cap));
}

Rows GettersOf(const getters::Family& family) {
  Rows rows;
  for (const getters::ListGetter& getter : family.lists) {
    rows.push_back(Getter(getter));
    if (getter.fetch) rows.push_back(Fetch(getter));
  }
  for (const getters::RecordGetter& getter : family.records) rows.push_back(Getter(getter));
  for (const getters::RawGetter& getter : family.raws) rows.push_back(Getter(getter));
  return rows;
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

Row Getter(const getters::ListGetter& getter) {
  Row row = Listed(Allocated<RecordList>(getter.name, getter.call, getter.release, getter.size, 3),
                   getter);
  row.hidesDecodeFailure = getter.hidesDecodeFailure;
  return row;
}

Row Fetch(const getters::ListGetter& getter) {
  auto list = std::make_shared<RecordList*>();
  return Listed({.name = getter.FetchName(),
                 .call =
                     [list, fetch = getter.fetch](fake::Device& device) {
                       *list = static_cast<RecordList*>(std::calloc(1, 16));
                       device.Remember(*list, 16);
                       return fetch(*list);
                     },
                 .release = [list, release = getter.release] { release(*list); },
                 .record = getter.size,
                 .allocations = 2},
                getter);
}

Row Getter(const getters::RecordGetter& getter) {
  return Counted(Allocated<void>(getter.name, getter.call, getter.release, getter.size, 2),
                 getter.count)
      .Refusing(ShorterThan(getter.size));
}

Row Raw(const getters::OtherGetter& getter, std::function<int(void* buffer)> call) {
  return Raw(getter.name, std::move(call), getter.Capacity());
}

Row Getter(const getters::RawGetter& getter) { return Raw(getter.name, getter.call, getter.size); }

const Rows& AllRows() {
  static const Rows all = [] {
    Rows rows = ChannelRows();
    const auto add = [&rows](Rows more) {
      std::move(more.begin(), more.end(), std::back_inserter(rows));
    };
    for (const getters::Family* family : getters::Families()) add(GettersOf(*family));
#define ADD_ROWS(family) add(family##Rows());
    FOR_EACH_FAMILY(ADD_ROWS)
#undef ADD_ROWS
    return rows;
  }();
  return all;
}

}  // namespace sweep
