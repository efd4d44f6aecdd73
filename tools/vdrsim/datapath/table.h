#pragma once

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vdrsim {

// What was made of a value, and of which kind it is.
struct Made {
  const void* kind;
  std::vector<std::byte> bytes;
};

// A value that is shared until somebody writes it: a copy costs nothing, and keeps what it was
// copied from. The copies of one value may be read and dropped by several threads at once; who
// writes must have it to himself.
template <typename Value>
class CopyOnWrite {
 public:
  CopyOnWrite() = default;
  CopyOnWrite(const CopyOnWrite& other) : box_(other.box_) {
    if (box_) box_->owners.fetch_add(1, std::memory_order_relaxed);
  }
  CopyOnWrite(CopyOnWrite&& other) noexcept : box_(std::exchange(other.box_, nullptr)) {}
  CopyOnWrite& operator=(CopyOnWrite other) noexcept {
    std::swap(box_, other.box_);
    return *this;
  }
  ~CopyOnWrite() {
    if (box_ && box_->owners.fetch_sub(1, std::memory_order_acq_rel) == 1) delete box_;
  }

  const Value& Read() const {
    static const Value kEmpty{};
    return box_ ? box_->value : kEmpty;
  }

  // Acquires what the last other owner did with the value, so that it is done by then.
  Value& Write() {
    if (!box_) {
      box_ = new Box{};
    } else if (box_->owners.load(std::memory_order_acquire) != 1) {
      *this = CopyOnWrite(new Box{.value = box_->value});
    } else {
      delete box_->made.exchange(nullptr, std::memory_order_relaxed);
    }
    return box_->value;
  }

  // What was kept since the value was written last, valid as long as this copy is.
  const Made* made() const { return box_ ? box_->made.load(std::memory_order_acquire) : nullptr; }

  // Keeps, and takes, what was made of the value until it is written, unless something is kept.
  void Keep(std::unique_ptr<const Made>& made) const {
    const Made* none = nullptr;
    if (box_ && box_->made.compare_exchange_strong(none, made.get(), std::memory_order_release)) {
      (void)made.release();
    }
  }

  bool operator==(const CopyOnWrite& other) const {
    return box_ == other.box_ || Read() == other.Read();
  }

 private:
  struct Box {
    Value value{};
    std::atomic<size_t> owners = 1;
    std::atomic<const Made*> made = nullptr;

    ~Box() { delete made.load(std::memory_order_relaxed); }
  };

  explicit CopyOnWrite(Box* box) : box_(box) {}

  Box* box_ = nullptr;
};

// The objects of one kind by their keys, in the order of these. A copy is a snapshot.
template <typename Key, typename Object>
class Table {
 public:
  size_t size() const { return map_.Read().size(); }
  bool IsEmpty() const { return size() == 0; }
  auto begin() const { return map_.Read().begin(); }
  auto end() const { return map_.Read().end(); }

  const Made* made() const { return map_.made(); }
  void Keep(std::unique_ptr<const Made>& made) const { map_.Keep(made); }

  // NULL when there is none.
  template <typename Sought>
  const Object* Find(const Sought& key) const {
    const auto found = map_.Read().find(key);
    return found == end() ? nullptr : &found->second;
  }
  template <typename Sought>
  Object* Find(const Sought& key) {
    return std::as_const(*this).Find(key) ? &map_.Write().find(key)->second : nullptr;
  }

  // Updates the object of this key, or makes one, unless there are `most` already: ENOSPC. What
  // `update` refuses by an error is not made.
  template <typename Sought, typename Update>
  int Set(const Sought& key, size_t most, const Update& update) {
    if (Object* known = Find(key)) return update(*known);
    if (size() >= most) return ENOSPC;
    Object object{};
    const int error = update(object);
    if (error == 0) map_.Write().emplace(Key(key), std::move(object));
    return error;
  }

  // ENOENT when there is none.
  template <typename Sought>
  int Delete(const Sought& key) {
    if (!std::as_const(*this).Find(key)) return ENOENT;
    auto& map = map_.Write();
    map.erase(map.find(key));
    return 0;
  }

  void Clear() { map_ = {}; }

  // Deletes the objects of which `isMeant` is true.
  template <typename Predicate>
  void DeleteIf(const Predicate& isMeant) {
    std::erase_if(map_.Write(), [&](const auto& entry) { return isMeant(entry.second); });
  }

  // Changes each object.
  template <typename Change>
  void ForEach(const Change& change) {
    for (auto& [key, object] : map_.Write()) change(object);
  }

  bool operator==(const Table&) const = default;

 private:
  CopyOnWrite<std::map<Key, Object, std::less<>>> map_{};
};

}  // namespace vdrsim
