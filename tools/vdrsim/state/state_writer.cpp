#include "state/state_writer.h"

#include <algorithm>
#include <utility>

namespace vdrsim {

namespace {

using shape::Collection;
using shape::Element;
using shape::Member;
using shape::Scalar;
using shape::Shape;
using shape::Struct;

constexpr size_t kPiece = size_t{64} * 1024;

constexpr Struct kNothing{"", {}};

bool IsScalar(const Shape& shape) { return std::holds_alternative<const Scalar*>(shape); }

// Objects of single values take a line each.
bool FitsOnALine(const Struct& members) {
  return std::ranges::all_of(members.members,
                             [](const Member& member) { return IsScalar(member.shape); });
}

}  // namespace

StateWriter::StateWriter(State state) : StateWriter(std::move(state), nullptr) {}

StateWriter::StateWriter(State state, std::unique_ptr<shape::Cursor> instances)
    : state_(std::move(state)), instances_(std::move(instances)) {}

std::string_view StateWriter::Next() {
  piece_.clear();
  if (!std::exchange(hasBegun_, true)) PutObject(&HeaderTable(), &header_, &StateTable(), &state_);
  while (!levels_.empty() && piece_.size() < kPiece) Step();
  return piece_;
}

void StateWriter::Step() {
  std::visit([this](auto& content) { StepIn(content); }, levels_.back().content);
}

void StateWriter::StepIn(Object& object) {
  const auto members = object.parts[object.part]->members;
  if (object.member == members.size()) {
    object.member = 0;
    if (++object.part == std::size(object.parts)) Close('}');
    return;
  }
  const Member& member = members[object.member++];
  const void* value = member.find(object.owners[object.part]);
  const bool comesFromElsewhere = instances_ && member.name == std::string_view("instances");
  if (!value && !comesFromElsewhere) return;
  Separate();
  piece_.append("\"").append(member.name).append("\": ");
  PutValue(member.shape, value);
}

void StateWriter::StepIn(Elements& elements) {
  const Collection& collection = *elements.collection;
  Element element;
  if (!elements.cursor->Next(element)) return Close(collection.name ? '}' : ']');
  Separate();
  if (collection.name) {
    collection.name->put(element.key, piece_);
    piece_ += ": ";
    PutValue(collection.element, element.value);
  } else if (collection.key) {
    PutObject(collection.key, element.key, collection.element, element.value);
  } else {
    PutValue(collection.element, element.value);
  }
}

// What comes next starts a line, or follows on that of the one before.
void StateWriter::Separate() {
  Level& level = levels_.back();
  if (!level.isEmpty) piece_ += level.isOnOneLine ? ", " : ",";
  if (!level.isOnOneLine) piece_.append("\n").append(2 * levels_.size(), ' ');
  level.isEmpty = false;
}

void StateWriter::Open(char bracket, Level level) {
  piece_ += bracket;
  levels_.push_back(std::move(level));
}

void StateWriter::Close(char bracket) {
  const bool needsLine = !levels_.back().isEmpty && !levels_.back().isOnOneLine;
  levels_.pop_back();
  if (needsLine) piece_.append("\n").append(2 * levels_.size(), ' ');
  piece_ += bracket;
  if (levels_.empty()) piece_ += '\n';
}

void StateWriter::PutValue(const Shape& shape, const void* value) {
  if (const auto* scalar = std::get_if<const Scalar*>(&shape)) return (*scalar)->put(value, piece_);
  if (std::holds_alternative<const Struct*>(shape))
    return PutObject(&kNothing, nullptr, shape, value);
  const Collection& collection = *std::get<const Collection*>(shape);
  auto cursor = value ? collection.walk(value) : std::move(instances_);
  const bool isOnOneLine = !collection.name && !collection.key && IsScalar(collection.element);
  Open(collection.name ? '{' : '[', {Elements{&collection, std::move(cursor)}, isOnOneLine});
}

void StateWriter::PutObject(const Struct* key, const void* keyOwner, const Shape& value,
                            const void* owner) {
  const Struct& members = *std::get<const Struct*>(value);
  const bool isOnOneLine = FitsOnALine(*key) && FitsOnALine(members);
  Open('{', {Object{{key, &members}, {keyOwner, owner}, 0, 0}, isOnOneLine});
}

}  // namespace vdrsim
