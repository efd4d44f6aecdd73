#pragma once

#include <algorithm>
#include <compare>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <type_traits>
#include <vdrzax/cxx/arguments.hpp>

// What calls give back: views of records, the lists and records that own them, and raw buffers.
namespace vdrzax {
inline namespace v1 {

// One record in memory of another's. Its fields are read by value: they may be unaligned, and no
// reference to one can be formed. A view, and a text that it gave, live as long as the owner.
template <typename RecordType>
class View {
 public:
  using Record = RecordType;
  static constexpr std::size_t kSize = sizeof(Record);

  explicit View(const void* record) noexcept : record_(record) {}

  // The record as it lies in memory.
  std::span<const std::uint8_t, kSize> bytes() const noexcept {
    return std::span<const std::uint8_t, kSize>(static_cast<const std::uint8_t*>(record_), kSize);
  }

 protected:
  static_assert(alignof(Record) == 1);

  const Record& raw() const noexcept { return *static_cast<const Record*>(record_); }

  template <typename Value>
  Value copy(std::size_t offset) const noexcept {
    Value value;
    std::memcpy(&value, bytes().data() + offset, sizeof value);
    return value;
  }

  const std::uint8_t* at(std::size_t offset) const noexcept { return bytes().data() + offset; }

  template <std::size_t kWidth>
  static std::string_view text(const char (&field)[kWidth]) noexcept {
    return {field, ::strnlen(field, kWidth)};
  }

 private:
  const void* record_;
};

namespace detail {

template <typename Element>
concept IsPlain = std::is_arithmetic_v<Element>;

template <typename Element>
constexpr std::size_t StrideOf() noexcept {
  if constexpr (IsPlain<Element>) {
    return sizeof(Element);
  } else {
    return Element::kSize;
  }
}

template <typename Element>
Element ElementAt(const std::uint8_t* place) noexcept {
  if constexpr (IsPlain<Element>) {
    Element element;
    std::memcpy(&element, place, sizeof element);
    return element;
  } else {
    return Element(place);
  }
}

// What `->` of something that gives elements by value gives.
template <typename Element>
struct Arrow {
  Element element;
  const Element* operator->() const noexcept { return &element; }
};

struct Free {
  void operator()(void* memory) const noexcept { std::free(memory); }
};

// Gives memory back by the Release function of what it holds.
template <typename Element>
struct Releaser {
  template <typename Memory>
  void operator()(Memory* memory) const noexcept {
    Element::release(memory);
  }
};

}  // namespace detail

// Walks over elements in one array, each given by value.
template <typename Element>
class Iterator {
 public:
  using value_type = Element;
  using difference_type = std::ptrdiff_t;
  using pointer = detail::Arrow<Element>;
  using reference = Element;
  using iterator_category = std::input_iterator_tag;
  using iterator_concept = std::random_access_iterator_tag;

  Iterator() noexcept = default;
  explicit Iterator(const std::uint8_t* place) noexcept : place_(place) {}

  Element operator*() const noexcept { return detail::ElementAt<Element>(place_); }
  pointer operator->() const noexcept { return {**this}; }
  Element operator[](difference_type steps) const noexcept { return *(*this + steps); }

  Iterator& operator+=(difference_type steps) noexcept {
    place_ += steps * kStride;
    return *this;
  }
  Iterator& operator-=(difference_type steps) noexcept { return *this += -steps; }
  Iterator& operator++() noexcept { return *this += 1; }
  Iterator& operator--() noexcept { return *this -= 1; }
  Iterator operator++(int) noexcept { return std::exchange(*this, *this + 1); }
  Iterator operator--(int) noexcept { return std::exchange(*this, *this - 1); }

  friend Iterator operator+(Iterator from, difference_type steps) noexcept { return from += steps; }
  friend Iterator operator+(difference_type steps, Iterator from) noexcept { return from += steps; }
  friend Iterator operator-(Iterator from, difference_type steps) noexcept { return from -= steps; }
  friend difference_type operator-(const Iterator& to, const Iterator& from) noexcept {
    return (to.place_ - from.place_) / kStride;
  }
  friend bool operator==(const Iterator& one, const Iterator& other) noexcept = default;
  friend auto operator<=>(const Iterator& one, const Iterator& other) noexcept = default;

 private:
  static constexpr auto kStride = static_cast<difference_type>(detail::StrideOf<Element>());

  const std::uint8_t* place_ = nullptr;
};

// Elements in one array of another's, such as the next hops of a route.
template <typename Element>
class Range {
 public:
  using value_type = Element;
  using iterator = Iterator<Element>;
  using const_iterator = iterator;

  Range() noexcept = default;
  Range(const void* first, std::size_t size) noexcept
      : first_(static_cast<const std::uint8_t*>(first)), size_(size) {}

  iterator begin() const noexcept { return iterator(first_); }
  iterator end() const noexcept { return begin() + static_cast<std::ptrdiff_t>(size_); }
  std::size_t size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }
  Element operator[](std::size_t index) const noexcept {
    return begin()[static_cast<std::ptrdiff_t>(index)];
  }
  Element front() const noexcept { return *begin(); }

 private:
  const std::uint8_t* first_ = nullptr;
  std::size_t size_ = 0;
};

// One record of the caller's, or none. It moves, and gives the record back when it ends.
template <typename View>
class Owned {
 public:
  using Record = typename View::Record;

  Owned() noexcept = default;
  // Takes over a record that the C function stored.
  explicit Owned(Record* record) noexcept : record_(record) {}

  explicit operator bool() const noexcept { return record_ != nullptr; }
  bool has_value() const noexcept { return record_ != nullptr; }
  // There must be one.
  View operator*() const noexcept { return View(record_.get()); }
  detail::Arrow<View> operator->() const noexcept { return {**this}; }

  // Hands the record to the caller, for the C functions.
  [[nodiscard]] Record* release() noexcept { return record_.release(); }

 private:
  std::unique_ptr<Record, detail::Releaser<View>> record_;
};

// A list of the caller's. It moves, gives its memory back when it ends, and is empty once moved from.
template <typename Element, typename Header = RecordList>
class List {
 public:
  using value_type = Element;
  using iterator = Iterator<Element>;
  using const_iterator = iterator;

  List() noexcept = default;
  // Takes over a list that the C function stored.
  explicit List(Header* header) noexcept : header_(header) {}

  iterator begin() const noexcept { return range().begin(); }
  iterator end() const noexcept { return range().end(); }
  std::size_t size() const noexcept { return range().size(); }
  bool empty() const noexcept { return size() == 0; }
  Element operator[](std::size_t index) const noexcept { return range()[index]; }
  Element front() const noexcept { return range().front(); }
  Range<Element> range() const noexcept {
    if (!header_) return {};
    return {header_->entries, static_cast<std::size_t>(header_->count)};
  }

  // Hands the list to the caller, for the C functions.
  [[nodiscard]] Header* release() noexcept { return header_.release(); }

 private:
  std::unique_ptr<Header, detail::Releaser<Element>> header_;
};

// A reply that the kernel wrote in a layout of its own. The library is not told how long it is; what
// the kernel left alone is zero.
class Buffer {
 public:
  Buffer() noexcept = default;
  // Zeros, or no bytes at all when there is no memory.
  explicit Buffer(std::size_t size) noexcept : bytes_(std::calloc(size, 1)), size_(size) {}

  std::size_t size() const noexcept { return bytes_ ? size_ : 0; }
  bool empty() const noexcept { return size() == 0; }
  std::uint8_t* data() noexcept { return static_cast<std::uint8_t*>(bytes_.get()); }
  const std::uint8_t* data() const noexcept {
    return static_cast<const std::uint8_t*>(bytes_.get());
  }
  const std::uint8_t* begin() const noexcept { return data(); }
  const std::uint8_t* end() const noexcept { return data() + size(); }
  std::uint8_t operator[](std::size_t index) const noexcept { return data()[index]; }

 private:
  std::unique_ptr<void, detail::Free> bytes_;
  std::size_t size_ = 0;
};

// A record in the kernel's own layout, which the library does not look into.
template <std::size_t kBytes>
class RawRecord : public View<Bytes<kBytes>> {
 public:
  using View<Bytes<kBytes>>::View;
};

// A table of such records. It moves, and is empty once moved from.
template <std::size_t kBytes>
class RawTable {
 public:
  using value_type = RawRecord<kBytes>;
  using iterator = Iterator<value_type>;
  using const_iterator = iterator;

  RawTable() noexcept = default;
  // Takes over memory from malloc() that holds that many records.
  RawTable(void* records, std::size_t count) noexcept : records_(records), count_(count) {}

  iterator begin() const noexcept { return range().begin(); }
  iterator end() const noexcept { return range().end(); }
  std::size_t size() const noexcept { return range().size(); }
  bool empty() const noexcept { return size() == 0; }
  value_type operator[](std::size_t index) const noexcept { return range()[index]; }
  Range<value_type> range() const noexcept {
    if (!records_) return {};
    return {records_.get(), count_};
  }
  void* data() noexcept { return records_.get(); }

  // Forgets those behind the first `count`.
  void shrink(std::size_t count) noexcept { count_ = std::min(count_, count); }

 private:
  std::unique_ptr<void, detail::Free> records_;
  std::size_t count_ = 0;
};

}  // namespace v1
}  // namespace vdrzax
