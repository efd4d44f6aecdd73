#pragma once

#include <vdrzax/channel.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "getter_families.h"
#include "support/getters/block.h"

// Every function that reads from the kernel: a call with valid arguments, what it sends, what the
// reply is made of, and where the function deviates from others of its shape. Tests, fuzzers and
// measurements take their numbers from here. They are literal: nothing here knows the library's own
// codes, offsets and layouts.
namespace getters {

// A number in each record that says how many entries of the record are valid.
struct Count {
  std::size_t offset = 0;
  std::size_t width = 0;  // 0 where records have no count
  uint32_t most = 0;      // as many as there is room for
};

// A list in a header of the library's, and its fetch into a header of the caller's.
struct ListGetter {
  const char* name;
  std::function<int(RecordList** out)> call;
  std::function<void(RecordList* list)> release;
  std::function<int(RecordList* list)> fetch = {};  // empty where there is none
  unsigned long code;
  wire::Block block = {};
  std::size_t size;  // of one record
  std::size_t cap;   // records that the reply has room for
  Count count = {};
  bool dropsHeader = false;         // the header is lost when the command itself fails
  bool hidesDecodeFailure = false;  // it is answered with 0 and the address of the released header
  bool takesCutRecord = false;      // a reply that ends inside a record gives that record too

  // The fetch is exported under the name of its getter, without the underscore.
  std::string FetchName() const { return "VDRZAX" + std::string(name).substr(7); }
};

// One decoded record.
struct RecordGetter {
  const char* name;
  std::function<int(void** out)> call;
  std::function<void(void* record)> release;
  unsigned long code;
  wire::Block block = {};
  std::size_t size;
  Count count = {};
};

// How a reply that is not decoded comes to the caller.
enum class Into {
  Buffer,         // the kernel writes straight into the caller's buffer
  ClearedBuffer,  // the same, which is zero before; without a buffer the command has no output
  Variable,       // once the command has succeeded, by way of a variable of the library's
};

// A reply that is not decoded.
struct RawGetter {
  const char* name;
  std::function<int(void* buffer)> call;
  unsigned long code;
  wire::Block block = {};
  std::size_t size;
  Into into = Into::Buffer;
};

// A function with a shape of its own: its numbers alone.
struct OtherGetter {
  const char* name;
  unsigned long code;
  std::size_t size;        // of one record
  std::size_t cap = 1;     // records that the reply has room for
  std::size_t prefix = 0;  // bytes before the first record

  std::size_t Capacity() const { return prefix + cap * size; }
};

struct Family {
  std::vector<ListGetter> lists = {};
  std::vector<RecordGetter> records = {};
  std::vector<RawGetter> raws = {};
  std::vector<OtherGetter> others = {};
};

// One file a family.
#define DECLARE_GETTERS(family) const Family& family();
FOR_EACH_FAMILY(DECLARE_GETTERS)
#undef DECLARE_GETTERS

// Those of one function. A name that the table does not have ends the program.
const ListGetter& List(std::string_view name);
const RecordGetter& Record(std::string_view name);
const RawGetter& Raw(std::string_view name);
const OtherGetter& Other(std::string_view name);

// All families.
std::vector<const Family*> Families();

// The call of a getter of records, and the release of a record, of one type.
template <typename Object>
std::function<int(void** out)> Get(std::function<int(Object** out)> call) {
  return [call = std::move(call)](void** out) {
    auto* object = static_cast<Object*>(*out);
    const int result = call(&object);
    *out = object;
    return result;
  };
}
template <typename Object>
std::function<void(void* record)> Free(void (*release)(Object* record)) {
  return [release](void* record) { release(static_cast<Object*>(record)); };
}

}  // namespace getters
