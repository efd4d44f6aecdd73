#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "channel/record_layout.h"

namespace vdrctl {

class FieldNames;

// How the value of a field is shown. The first is that of the field's own kind.
enum class Dress : uint8_t { Plain, Hex, Ipv4, Ipv6, Mac, Boolean, Flags, Counter, Text };

struct Flag {
  uint64_t bits;
  std::string name;
};

struct RecordView;

// A field as the operator sees it: a row of the layout, or one element of it that has got a name of
// its own.
struct Member {
  std::string name;
  vdrzax::Field field;
  Dress dress = Dress::Plain;
  std::vector<Flag> flags = {};
  std::shared_ptr<const RecordView> entry = nullptr;
};

// A layout as the operator sees it, with the names of the operator's own where there are any. Every
// form of output is made from it.
struct RecordView {
  std::string_view name;
  uint32_t size;
  std::vector<Member> members;

  const Member* Find(std::string_view member) const;
};

// `title` is what the layout is called in the documentation; `names` may be NULL.
RecordView MakeView(const vdrzax::RecordLayout& layout, std::string_view title,
                    const FieldNames* names);

// The one name that an element of an array has without a name of the operator's.
std::string ElementName(const vdrzax::Field& row, uint32_t element);

// The element of an array as a field of its own.
vdrzax::Field ElementOf(const vdrzax::Field& row, uint32_t element);

}  // namespace vdrctl
