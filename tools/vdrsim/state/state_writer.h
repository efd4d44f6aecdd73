#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "datapath/state.h"
#include "state/shape.h"
#include "state/tables.h"

namespace vdrsim {

// Writes a state as a document, in pieces, while it goes over the state: there is never more of the
// document than a piece.
class StateWriter {
 public:
  explicit StateWriter(State state);

  // Takes the instances from elsewhere, which must make them in the order of their names.
  StateWriter(State state, std::unique_ptr<shape::Cursor> instances);

  StateWriter(StateWriter&&) = delete;

  // The next piece, valid until the next call; an empty one at the end. What counts in a snapshot
  // goes on counting, so that the total is known no sooner than the end.
  std::string_view Next();

 private:
  // An object that is being written: the members of a key, and those of a value behind it.
  struct Object {
    const shape::Struct* parts[2];
    const void* owners[2];
    size_t part;
    size_t member;
  };
  struct Elements {
    const shape::Collection* collection;
    std::unique_ptr<shape::Cursor> cursor;
  };
  struct Level {
    std::variant<Object, Elements> content;
    bool isOnOneLine;
    bool isEmpty = true;
  };

  void Step();
  void StepIn(Object& object);
  void StepIn(Elements& elements);
  void Separate();
  void Open(char bracket, Level level);
  void Close(char bracket);
  void PutValue(const shape::Shape& shape, const void* value);
  void PutObject(const shape::Struct* key, const void* keyOwner, const shape::Shape& value,
                 const void* owner);

  StateHeader header_{.version = kStateVersion};
  State state_;
  std::unique_ptr<shape::Cursor> instances_;
  std::vector<Level> levels_{};
  bool hasBegun_ = false;
  std::string piece_{};
};

}  // namespace vdrsim
