#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

// What the values of a state look like in a document, apart from their types. The tables of members
// are made of this; reading, writing and describing go by it.
namespace vdrsim::shape {

// Why a value can't be taken, in words that follow its place: "is not a number".
class Unfit : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A number beyond 64 bits, or one that is not whole, as it stands in the document.
struct OddNumber {
  std::string_view digits;
};

// A value of a document that holds no others.
using Token = std::variant<std::nullptr_t, bool, uint64_t, int64_t, OddNumber, std::string_view>;

// A value that is one token.
struct Scalar {
  void (*put)(const void* value, std::string& out);  // as it stands in the document
  void (*take)(const Token& token, void* value);     // throws Unfit
  std::string (*describe)();                         // for people
  std::string (*schema)();                           // members of a JSON Schema
};

struct Struct;
struct Collection;
using Shape = std::variant<const Scalar*, const Struct*, const Collection*>;

// A value that an owner has.
struct Member {
  const char* name;
  Shape shape;
  const void* (*find)(const void* owner);  // NULL when it is as in a new owner
  void* (*make)(void* owner);              // makes it when it is not there
  std::string_view function;               // what sets it: a function of the library ...
  std::string_view argument;               // ... and its argument, or a remark without function
  bool isRequired = false;
};

// A value with members, an object of the document. The name of a key goes before that of the value
// that it has in an array.
struct Struct {
  const char* name;
  std::span<const Member> members;
};

// A value that a collection holds, and its key: an element on its way in or out.
struct Element {
  const void* key = nullptr;
  const void* value = nullptr;
};

// Goes over a collection, which stays as it is meanwhile.
class Cursor {
 public:
  virtual ~Cursor() = default;
  // False at the end. What `element` refers to is valid until the next call.
  virtual bool Next(Element& element) = 0;
};

// An element that is being read, until it joins its collection.
class Candidate {
 public:
  virtual ~Candidate() = default;
  virtual void* key() = 0;
  virtual void* value() = 0;
  virtual void Join(void* collection) = 0;  // throws Unfit, as when there is no room
};

// Values of one kind: an object by their names or, without names, an array. The elements of an array
// begin with the members of their key, if they have one.
struct Collection {
  Shape element;
  const Scalar* name;
  const Struct* key;
  size_t most;
  std::unique_ptr<Cursor> (*walk)(const void* collection);
  std::unique_ptr<Candidate> (*start)();
};

}  // namespace vdrsim::shape
