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
#include "datapath/table.h"

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
// and kWritesAll where they write every byte of an entry, so that it needs no zeros before.
// They hold snapshots of what they are made from, and are used with nothing locked.
template <typename Entries>
class EntryStream final : public Reply::Source {
 public:
  explicit EntryStream(Entries entries) : entries_(std::move(entries)) {}

  uint32_t Prepare() override {
    const uint32_t total = entries_.Prepare();
    size_ = std::min<size_t>(total, Reply::kPiece);
    buffer_ = std::make_unique_for_overwrite<std::byte[]>(size_);
    return total;
  }

  std::span<const std::byte> Next() noexcept override {
    const std::span room(buffer_.get(), size_);
    size_t filled = 0;
    for (size_t clear = 0; clear < size_;) {
      const size_t step = std::min(kStep, size_ - clear);
      if constexpr (!requires { Entries::kWritesAll; }) std::memset(&room[clear], 0, step);
      clear += step;
      while (const size_t length = entries_.Write(room.subspan(filled, clear - filled))) {
        filled += length;
      }
    }
    return room.first(filled);
  }

 private:
  // What is cleared at once is still near when it is written.
  static constexpr size_t kStep = size_t{8} * 1024;

  Entries entries_;
  size_t size_ = 0;
  std::unique_ptr<std::byte[]> buffer_{};
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

// The same made at once, and kept with the table until that changes: who watches a table asks for it
// much more often.
template <const vdrzax::RecordLayout& Layout, typename Table, typename Show>
class KeptTableRecords final : public Reply::Source {
 public:
  static constexpr size_t kMost = size_t{1024} * 1024;

  KeptTableRecords(const Table& table, Show* show) : table_(table), show_(show) {}

  uint32_t Prepare() override {
    made_ = table_.made();
    if (!made_ || made_->kind != Kind()) Make();
    return static_cast<uint32_t>(made_->bytes.size());
  }

  std::span<const std::byte> Next() noexcept override {
    return std::span(made_->bytes).first(std::exchange(isTaken_, true) ? 0 : made_->bytes.size());
  }

 private:
  const void* Kind() const { return reinterpret_cast<const void*>(show_); }

  void Make() {
    TableRecords<Layout, Table, Show*> records(table_, show_);
    auto made = std::make_unique<Made>(Made{Kind(), std::vector<std::byte>(records.Prepare())});
    std::span<std::byte> room(made->bytes);
    while (const size_t length = records.Write(room)) room = room.subspan(length);
    made_ = made.get();
    own_ = std::move(made);
    table_.Keep(own_);
  }

  Table table_;
  Show* show_;
  const Made* made_ = nullptr;
  std::unique_ptr<const Made> own_{};
  bool isTaken_ = false;
};

template <const vdrzax::RecordLayout& Layout, typename Table, typename Show>
Answer TableAnswer(const Table& table, Show* show) {
  using Records = KeptTableRecords<Layout, Table, Show>;
  if (table.size() * Layout.size > Records::kMost) {
    return StreamAnswer(TableRecords<Layout, Table, Show*>(table, show));
  }
  return {.reply = Reply(std::make_unique<Records>(table, show))};
}

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
