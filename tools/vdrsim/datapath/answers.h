#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "call.h"
#include "datapath/record_writer.h"

// What handlers answer with.
namespace vdrsim {

// A number alone.
template <typename Number>
Answer NumberAnswer(Number value) {
  Answer answer;
  std::memcpy(answer.reply.Fill(sizeof value).data(), &value, sizeof value);
  return answer;
}

// One record, which show(RecordWriter<Layout>, object...) fills.
template <const vdrzax::RecordLayout& Layout, typename Show, typename... Object>
Answer RecordAnswer(const Show& show, const Object&... object) {
  static_assert(Layout.size <= Reply::kInlineRoom);
  Answer answer;
  show(RecordWriter<Layout>(answer.reply.Fill(Layout.size)), object...);
  return answer;
}

// A reply that is made of entries while it is delivered, a buffer at a time. `Entries` has
//   uint32_t Prepare()                        returns the bytes of all entries together
//   uint32_t Count()                          how many there are, once prepared
//   size_t Write(std::span<std::byte> room)   writes the next entry into zeros, and returns its
//                                             length, or 0 when it does not fit or there is none;
//                                             does not throw
// They hold snapshots of what they are made from, and are used with nothing locked.
template <typename Entries>
class EntryStream final : public Reply::Source {
 public:
  explicit EntryStream(Entries entries) : entries_(std::move(entries)) {}

  uint32_t Prepare() override {
    const uint32_t total = entries_.Prepare();
    buffer_.resize(std::min<size_t>(total, kPiece));
    return total;
  }

  std::span<const std::byte> Next() noexcept override {
    std::ranges::fill(buffer_, std::byte{0});
    const std::span<std::byte> room(buffer_);
    size_t filled = 0;
    while (const size_t length = entries_.Write(room.subspan(filled))) filled += length;
    return room.first(filled);
  }

 private:
  // Large enough that a system call for each costs little, and no longer than a cache.
  static constexpr size_t kPiece = size_t{128} * 1024;

  Entries entries_;
  std::vector<std::byte> buffer_{};
};

template <typename Entries>
Answer StreamAnswer(Entries entries) {
  return {.reply = Reply(std::make_unique<EntryStream<Entries>>(std::move(entries)))};
}

// The number of the entries, and then these.
template <typename Entries>
class CountFirst {
 public:
  explicit CountFirst(Entries entries) : entries_(std::move(entries)) {}

  uint32_t Prepare() { return sizeof(uint32_t) + entries_.Prepare(); }
  uint32_t Count() const { return entries_.Count(); }

  size_t Write(std::span<std::byte> room) {
    if (isCounted_) return entries_.Write(room);
    const uint32_t count = Count();
    std::memcpy(room.data(), &count, sizeof count);
    isCounted_ = true;
    return sizeof count;
  }

 private:
  Entries entries_;
  bool isCounted_ = false;
};

// A record for each object of a table, in the order of their keys: show(writer, key, object).
template <const vdrzax::RecordLayout& Layout, typename Table, typename Show>
class TableRecords {
 public:
  TableRecords(Table table, Show show) : table_(std::move(table)), show_(std::move(show)) {}

  uint32_t Prepare() {
    next_ = table_.begin();
    return Count() * Layout.size;
  }
  uint32_t Count() const { return static_cast<uint32_t>(table_.size()); }

  size_t Write(std::span<std::byte> room) {
    if (room.size() < Layout.size || next_ == table_.end()) return 0;
    show_(RecordWriter<Layout>(room.first(Layout.size)), next_->first, next_->second);
    ++next_;
    return Layout.size;
  }

 private:
  Table table_;
  Show show_;
  decltype(std::declval<const Table&>().begin()) next_{};
};

template <const vdrzax::RecordLayout& Layout, typename Table, typename Show>
Answer TableAnswer(const Table& table, Show show) {
  return StreamAnswer(TableRecords<Layout, Table, Show>(table, std::move(show)));
}

// The same behind their number.
template <const vdrzax::RecordLayout& Layout, typename Table, typename Show>
Answer CountedTableAnswer(const Table& table, Show show) {
  return StreamAnswer(CountFirst(TableRecords<Layout, Table, Show>(table, std::move(show))));
}

// A record for each row of a selection that is made of a snapshot once nothing is locked:
// select(snapshot) returns a vector of rows, and show(writer, row) fills the record of one.
template <const vdrzax::RecordLayout& Layout, typename Snapshot, typename Select, typename Show>
class SelectedRecords {
 public:
  SelectedRecords(Snapshot snapshot, Select select, Show show)
      : snapshot_(std::move(snapshot)), select_(std::move(select)), show_(std::move(show)) {}

  uint32_t Prepare() {
    rows_ = select_(std::as_const(snapshot_));
    return Count() * Layout.size;
  }
  uint32_t Count() const { return static_cast<uint32_t>(rows_.size()); }

  size_t Write(std::span<std::byte> room) {
    if (room.size() < Layout.size || next_ == rows_.size()) return 0;
    show_(RecordWriter<Layout>(room.first(Layout.size)), rows_[next_++]);
    return Layout.size;
  }

 private:
  Snapshot snapshot_;
  Select select_;
  Show show_;
  decltype(std::declval<Select>()(std::declval<const Snapshot&>())) rows_{};
  size_t next_ = 0;
};

template <const vdrzax::RecordLayout& Layout, typename Snapshot, typename Select, typename Show>
Answer SelectionAnswer(const Snapshot& snapshot, Select select, Show show) {
  return StreamAnswer(SelectedRecords<Layout, Snapshot, Select, Show>(snapshot, std::move(select),
                                                                      std::move(show)));
}

}  // namespace vdrsim
