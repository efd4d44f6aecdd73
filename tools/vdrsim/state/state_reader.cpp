#include "state/state_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <bitset>
#include <cerrno>
#include <cstring>
#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "common/escapes.h"
#include "common/suggestion.h"
#include "state/shape.h"
#include "state/state_rules.h"
#include "state/tables.h"

namespace vdrsim {

namespace {

using shape::Candidate;
using shape::Collection;
using shape::Member;
using shape::Scalar;
using shape::Shape;
using shape::Struct;
using shape::Token;
using shape::Unfit;

// A name as a step of a path (RFC 6901).
std::string Step(std::string_view name) {
  std::string step = "/";
  for (const char character : name) {
    if (character == '~') {
      step += "~0";
    } else if (character == '/') {
      step += "~1";
    } else {
      step += character;
    }
  }
  return step;
}

// Where a value that comes next belongs.
struct Place {
  const Shape* shape;
  const Struct* key;  // of an element of an array
  void* keyOwner;
  void* owner;
};

constexpr Struct kNothing{"", {}};

// What is open of the document: an object, or the elements of a collection.
class Level {
 public:
  virtual ~Level() = default;
  virtual void Name(std::string& name) = 0;
  virtual Place Next() = 0;
  virtual void Take() {}  // the value that came is complete
  virtual void End() {}
  virtual bool IsObject() const = 0;
  virtual std::string Step() const = 0;
};

class ObjectLevel final : public Level {
 public:
  ObjectLevel(const Struct& key, void* keyOwner, const Struct& members, void* owner)
      : parts_{&key, &members}, owners_{keyOwner, owner} {}

  void Name(std::string& name) override {
    name_ = name;
    size_t number = 0;
    for (size_t part = 0; part < std::size(parts_); ++part) {
      for (const Member& member : parts_[part]->members) {
        if (member.name == name) return Choose(member, owners_[part], number);
        ++number;
      }
    }
    throw Unfit("there is no such member" + tools::Suggestion(name, Names()));
  }
  Place Next() override { return {&member_->shape, nullptr, nullptr, member_->make(owner_)}; }
  void End() override {
    size_t number = 0;
    for (const Struct* part : parts_) {
      for (const Member& member : part->members) {
        if (member.isRequired && !seen_[number]) {
          throw Unfit(fmt::format("'{}' is missing", member.name));
        }
        ++number;
      }
    }
  }
  void Take() override { name_.clear(); }
  bool IsObject() const override { return true; }
  std::string Step() const override { return name_.empty() ? "" : vdrsim::Step(name_); }

 private:
  std::vector<std::string_view> Names() const {
    std::vector<std::string_view> names;
    for (const Struct* part : parts_) {
      for (const Member& member : part->members) names.push_back(member.name);
    }
    return names;
  }
  void Choose(const Member& member, void* owner, size_t number) {
    if (seen_[number]) throw Unfit("is there twice");
    seen_.set(number);
    member_ = &member;
    owner_ = owner;
  }

  const Struct* parts_[2];
  void* owners_[2];
  std::bitset<64> seen_{};
  const Member* member_ = nullptr;
  void* owner_ = nullptr;
  std::string name_{};
};

class CollectionLevel final : public Level {
 public:
  CollectionLevel(const Collection& collection, void* owner)
      : collection_(collection), owner_(owner) {}

  void Name(std::string& name) override {
    name_ = name;
    candidate_ = collection_.start();
    collection_.name->take(std::string_view(name), candidate_->key());
  }
  Place Next() override {
    if (!collection_.name) candidate_ = collection_.start();
    return {&collection_.element, collection_.key, candidate_->key(), candidate_->value()};
  }
  void Take() override {
    candidate_->Join(owner_);
    candidate_ = nullptr;
    ++index_;
  }
  bool IsObject() const override { return collection_.name != nullptr; }
  std::string Step() const override {
    if (!candidate_) return "";
    return collection_.name ? vdrsim::Step(name_) : fmt::format("/{}", index_);
  }

 private:
  const Collection& collection_;
  void* owner_;
  std::unique_ptr<Candidate> candidate_{};
  std::string name_{};
  size_t index_ = 0;
};

// Takes a document as the parser comes upon it.
class Reader {
 public:
  Reader(State& state, std::string_view name) : state_(state), name_(name) {}

  bool null() { return Take(nullptr); }
  bool boolean(bool value) { return Take(value); }
  bool number_integer(int64_t value) { return Take(value); }
  bool number_unsigned(uint64_t value) { return Take(value); }
  bool number_float(double, const std::string& digits) { return Take(shape::OddNumber{digits}); }
  bool string(const std::string& text) { return Take(std::string_view(text)); }
  bool binary(const nlohmann::json::binary_t&) { return false; }

  bool key(std::string& name) {
    return Judge([&] { levels_.back()->Name(name); });
  }
  bool start_object(size_t) {
    return Judge([this] { OpenObject(); });
  }
  bool end_object() {
    return Judge([this] { Close(); });
  }
  bool start_array(size_t) {
    return Judge([this] { OpenArray(); });
  }
  bool end_array() { return end_object(); }

  bool parse_error(size_t, const std::string&, const nlohmann::json::exception& error) {
    const std::string_view text = error.what();
    // Behind the name of the exception in brackets.
    throw StateFailure(fmt::format("{}: {}", tools::Printable(name_),
                                   tools::Printable(text.substr(text.find("] ") + 2))));
  }

 private:
  // What is wrong is told with its place.
  template <typename Action>
  bool Judge(const Action& action) {
    try {
      action();
    } catch (const Unfit& unfit) {
      std::string path;
      for (const auto& level : levels_) path += level->Step();
      throw StateFailure(fmt::format("{}: {}: {}", tools::Printable(name_),
                                     path.empty() ? "/" : tools::Printable(path), unfit.what()));
    }
    return true;
  }

  bool Take(const Token& token) {
    return Judge([&] {
      if (levels_.empty()) throw Unfit("a state is an object");
      const Place place = levels_.back()->Next();
      const auto* scalar = std::get_if<const Scalar*>(place.shape);
      if (!scalar) throw Unfit(Expected(*place.shape));
      (*scalar)->take(token, place.owner);
      levels_.back()->Take();
    });
  }

  static const char* Expected(const Shape& shape) {
    const auto* collection = std::get_if<const Collection*>(&shape);
    if (std::holds_alternative<const Scalar*>(shape)) return "is not a single value";
    return collection && !(*collection)->name ? "is not an array" : "is not an object";
  }

  void OpenObject() {
    if (levels_.empty()) {
      Open<ObjectLevel>(HeaderTable(), &header_, StateTable(), &state_);
      return;
    }
    const Place place = levels_.back()->Next();
    if (const auto* members = std::get_if<const Struct*>(place.shape)) {
      Open<ObjectLevel>(place.key ? *place.key : kNothing, place.keyOwner, **members, place.owner);
      return;
    }
    const auto* collection = std::get_if<const Collection*>(place.shape);
    if (!collection || !(*collection)->name) throw Unfit(Expected(*place.shape));
    Open<CollectionLevel>(**collection, place.owner);
  }

  void OpenArray() {
    if (levels_.empty()) throw Unfit("a state is an object");
    const Place place = levels_.back()->Next();
    const auto* collection = std::get_if<const Collection*>(place.shape);
    if (!collection || (*collection)->name) throw Unfit(Expected(*place.shape));
    Open<CollectionLevel>(**collection, place.owner);
  }

  template <typename Opened, typename... Parts>
  void Open(Parts&&... parts) {
    levels_.push_back(std::make_unique<Opened>(std::forward<Parts>(parts)...));
  }

  void Close() {
    levels_.back()->End();
    levels_.pop_back();
    if (!levels_.empty()) levels_.back()->Take();
  }

  State& state_;
  std::string_view name_;
  StateHeader header_{};
  std::vector<std::unique_ptr<Level>> levels_{};
};

template <typename Input>
State Read(Input&& input, std::string_view name) {
  State state;
  Reader reader(state, name);
  nlohmann::json::sax_parse(std::forward<Input>(input), &reader);
  try {
    Complete(state);
  } catch (const Unfit& unfit) {
    throw StateFailure(fmt::format("{}: {}", tools::Printable(name), unfit.what()));
  }
  return state;
}

}  // namespace

State ReadState(std::string_view document, std::string_view name) { return Read(document, name); }

State ReadState(std::FILE* stream, std::string_view name) {
  // What can't be read looks like the end of the document to the parser.
  const auto refuseUnread = [&] {
    if (std::ferror(stream) == 0) return;
    throw StateFailure(fmt::format("{}: {}", tools::Printable(name), std::strerror(errno)));
  };
  try {
    State state = Read(stream, name);
    refuseUnread();
    return state;
  } catch (const StateFailure&) {
    refuseUnread();
    throw;
  }
}

}  // namespace vdrsim
