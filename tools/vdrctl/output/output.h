#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "channel/record_layout.h"
#include "output/presentation.h"
#include "output/record_view.h"
#include "output/writer.h"
#include "reply.h"

namespace vdrctl {

// Columns were asked for that the reply can't be shown in.
class NoSuchColumn : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Records of one size behind each other, or each at an address of its own.
class Records {
 public:
  Records(const void* first, std::size_t count, uint32_t size)
      : first_(static_cast<const uint8_t*>(first)), count_(count), size_(size) {}
  explicit Records(std::vector<const uint8_t*> addresses)
      : addresses_(std::move(addresses)), count_(addresses_.size()) {}

  std::size_t count() const { return count_; }
  const uint8_t* operator[](std::size_t index) const {
    return addresses_.empty() ? first_ + index * size_ : addresses_[index];
  }

 private:
  const uint8_t* first_ = nullptr;
  std::vector<const uint8_t*> addresses_ = {};
  std::size_t count_;
  uint32_t size_ = 0;
};

// What a command prints on standard output, as tables for people or as one JSON document. Nothing
// is written before the command has succeeded. Records are written as they are walked: whatever the
// length of a list, little more than the library's own memory is used.
class Output {
 public:
  // `reply` is that of the command's row. Throws NoSuchColumn, before anything is sent.
  Output(const Presentation& presentation, const Reply& reply, Writer& writer);

  // A table of the columns that are wanted, or a JSON array with all members of each record.
  void List(const Records& records);

  // `count` records of the reply's layout, one behind the other.
  void List(const void* first, std::size_t count) {
    List(Records(first, count, views_.front().size));
  }

  // A line a field, or a JSON object. The layout is one of the reply's.
  void Record(const vdrzax::RecordLayout& layout, const void* record);

  // A value alone, or a JSON object of one member.
  void Number(uint64_t value);
  void Address(uint32_t value);
  void Mac(std::span<const uint8_t> bytes);

  // A reply whose layout is the kernel's alone. `length` is its length as far as it is known.
  void Bytes(uint64_t length, std::span<const uint8_t> bytes);

  // Text of the tool's own, as it stands.
  void Text(std::string_view text) { writer_.Put(text); }

  // How the layouts of the reply are seen, and the names that this takes.
  const std::vector<RecordView>& views() const { return views_; }
  const FieldNames* names() const { return presentation_.names; }

  bool IsJson() const { return presentation_.form == Presentation::Form::Json; }

 private:
  std::vector<const Member*> Chosen(const RecordView& view,
                                    std::span<const char* const> usual) const;
  std::vector<std::size_t> Order(const Records& records) const;
  void Changes(const std::vector<const Member*>& members, const uint8_t* record);
  void PutTable(const Records& records, const std::vector<const Member*>& columns);
  void JsonArray(const Records& records, const std::vector<const Member*>& members);

  const Presentation& presentation_;
  Reply reply_;
  Writer& writer_;
  std::vector<RecordView> views_{};  // one a layout of the reply
};

}  // namespace vdrctl
