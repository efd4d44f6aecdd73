#pragma once

#include <fmt/format.h>

#include <memory>
#include <optional>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

#include "datapath/table.h"
#include "requests/requests.h"
#include "state/forms.h"
#include "state/shape.h"

// What the rows of the tables of members are made by.
namespace vdrsim::shape {

// A type that stands for any other, to count what a structure has.
struct Anything {
  template <typename Type>
  operator Type() const noexcept;
};

// How many members a structure has. A table that has fewer rows would lose some.
template <typename Type, typename... Parts>
consteval size_t MemberCount() {
  if constexpr (requires { Type{Parts{}..., Anything{}}; }) {
    return MemberCount<Type, Parts..., Anything>();
  } else {
    return sizeof...(Parts);
  }
}

template <auto Pointer>
struct Pointed;
template <typename OwnerType, typename ValueType, ValueType OwnerType::*Pointer>
struct Pointed<Pointer> {
  using Owner = OwnerType;
  using Value = ValueType;

  static const Value& In(const void* owner) { return static_cast<const Owner*>(owner)->*Pointer; }
  static Value& In(void* owner) { return static_cast<Owner*>(owner)->*Pointer; }
};

template <typename Value>
struct Optional : std::false_type {
  using Content = Value;
};
template <typename Value>
struct Optional<std::optional<Value>> : std::true_type {
  using Content = Value;
};

template <auto Pointer>
const void* Find(const void* owner) {
  using Place = Pointed<Pointer>;
  const auto& value = Place::In(owner);
  if constexpr (Optional<typename Place::Value>::value) {
    return value ? &*value : nullptr;
  } else {
    static const typename Place::Owner kNew{};
    return value == kNew.*Pointer ? nullptr : &value;
  }
}

template <auto Pointer>
const void* FindAlways(const void* owner) {
  return &Pointed<Pointer>::In(owner);
}

template <auto Pointer>
void* Make(void* owner) {
  auto& value = Pointed<Pointer>::In(owner);
  if constexpr (Optional<typename Pointed<Pointer>::Value>::value) {
    return &value.emplace();
  } else {
    return &value;
  }
}

// An argument of a function, which sets a member and tells how long a text can be.
constexpr requests::Field ArgumentOf(size_t index, requests::Name name) {
  for (const requests::Field& field : requests::kRequests[index]->fields()) {
    if (field.name == name.view()) return field;
  }
  throw "the request has no field of this name";
}

template <size_t Index, requests::Name Function, requests::Name Argument>
struct Source {
  static constexpr requests::Name kFunctionName = Function;
  static constexpr requests::Name kArgumentName = Argument;
  static constexpr requests::Field kField = ArgumentOf(Index, Argument);
  // A caller without the library can leave out the terminator, but not that of a name.
  static constexpr size_t kRoom = kField.width;
  static constexpr size_t kNameRoom = kField.width - 1;
  static constexpr std::string_view kFunction = kFunctionName.text;
  static constexpr std::string_view kArgument = kArgumentName.text;
};

// The function has one code, or that one which is named.
template <requests::Name Function, requests::Name Argument,
          uint32_t Code = std::numeric_limits<uint32_t>::max()>
using From = Source<requests::IndexOf(Function, Code), Function, Argument>;

template <auto Pointer, typename Argument>
using UsualForm =
    typename forms::Usual<typename Optional<typename Pointed<Pointer>::Value>::Content,
                          Argument::kRoom>::Form;

template <auto Pointer, typename Argument, typename Form = UsualForm<Pointer, Argument>>
constexpr Member Set(const char* name) {
  return {name,          &forms::kScalar<Form>, Find<Pointer>,
          Make<Pointer>, Argument::kFunction,   Argument::kArgument};
}

// A part of a key, which is written even when it is zero.
template <auto Pointer, typename Argument, typename Form = UsualForm<Pointer, Argument>>
constexpr Member KeyPart(const char* name) {
  return {name,          &forms::kScalar<Form>, FindAlways<Pointer>,
          Make<Pointer>, Argument::kFunction,   Argument::kArgument};
}

// The owner itself, where a key or an element of an array has no members.
template <typename Argument, typename Form>
constexpr Member Itself(const char* name) {
  return {name,
          &forms::kScalar<Form>,
          [](const void* owner) { return owner; },
          [](void* owner) { return owner; },
          Argument::kFunction,
          Argument::kArgument,
          true};
}

// A member that no argument alone sets, with a remark of what it is.
template <auto Pointer>
constexpr Member Has(const char* name, Shape shape, std::string_view remark = {}) {
  return {name, shape, Find<Pointer>, Make<Pointer>, {}, remark};
}

template <typename Held>
std::unique_ptr<Cursor> Walk(const void* collection) {
  class Walking final : public Cursor {
   public:
    explicit Walking(const Held& held) : next_(held.begin()), end_(held.end()) {}
    bool Next(Element& element) override {
      if (next_ == end_) return false;
      if constexpr (requires { next_->second; }) {
        element = {&next_->first, &next_->second};
      } else {
        element = {nullptr, &*next_};
      }
      ++next_;
      return true;
    }

   private:
    decltype(std::declval<const Held&>().begin()) next_;
    decltype(std::declval<const Held&>().end()) end_;
  };
  return std::make_unique<Walking>(*static_cast<const Held*>(collection));
}

inline void RefuseBeyond(bool isFull, size_t most) {
  if (isFull) throw Unfit(fmt::format("is one more than the {} that there can be", most));
}

inline void RefuseTwice(bool isThere) {
  if (isThere) throw Unfit("is there twice");
}

template <typename Key, typename Object>
void Insert(Table<Key, Object>& table, Key& key, Object& object, size_t most) {
  RefuseTwice(std::as_const(table).Find(key) != nullptr);
  const int error = table.Set(key, most, [&](Object& made) {
    made = std::move(object);
    return 0;
  });
  RefuseBeyond(error != 0, most);
}

// An element of a table, of which there can be `Most`.
template <typename Held, size_t Most>
class Row;
template <typename Key, typename Object, size_t Most>
class Row<Table<Key, Object>, Most> final : public Candidate {
 public:
  void* key() override { return &key_; }
  void* value() override { return &object_; }
  void Join(void* collection) override {
    Insert(*static_cast<Table<Key, Object>*>(collection), key_, object_, Most);
  }

 private:
  Key key_{};
  Object object_{};
};
template <typename Value, size_t Most>
class Row<std::vector<Value>, Most> final : public Candidate {
 public:
  void* key() override { return nullptr; }
  void* value() override { return &value_; }
  void Join(void* collection) override {
    auto& values = *static_cast<std::vector<Value>*>(collection);
    RefuseBeyond(values.size() == Most, Most);
    values.push_back(std::move(value_));
  }

 private:
  Value value_{};
};
template <typename Value, size_t Most>
class Row<std::set<Value>, Most> final : public Candidate {
 public:
  void* key() override { return nullptr; }
  void* value() override { return &value_; }
  void Join(void* collection) override {
    auto& values = *static_cast<std::set<Value>*>(collection);
    RefuseTwice(values.contains(value_));
    RefuseBeyond(values.size() == Most, Most);
    values.insert(value_);
  }

 private:
  Value value_{};
};

template <typename Held, size_t Most>
constexpr Collection Make(Shape element, const Scalar* name, const Struct* key) {
  return {element,
          name,
          key,
          Most,
          Walk<Held>,
          []() -> std::unique_ptr<Candidate> { return std::make_unique<Row<Held, Most>>(); }};
}

// Elements by their names, which the argument of a function gives.
template <typename Held, typename Argument, size_t Most>
constexpr Collection ByName(Shape element) {
  return Make<Held, Most>(element, &forms::kScalar<forms::ObjectName<Argument::kNameRoom>>,
                          nullptr);
}

// Elements one after another, each of which begins with its key, if it has one.
template <typename Held, size_t Most>
constexpr Collection Array(Shape element, const Struct* key = nullptr) {
  return Make<Held, Most>(element, nullptr, key);
}

}  // namespace vdrsim::shape
