#include "support/getters/table.h"

#include <cstdio>
#include <cstdlib>

namespace getters {

namespace {

template <typename Getter>
const Getter& Find(std::vector<Getter> Family::*shape, std::string_view name) {
  for (const Family* family : Families()) {
    for (const Getter& getter : family->*shape) {
      if (getter.name == name) return getter;
    }
  }
  (void)std::fprintf(stderr, "%.*s: no getter of this shape in tests/support/getters/\n",
                     static_cast<int>(name.size()), name.data());
  std::abort();
}

}  // namespace

const ListGetter& List(std::string_view name) { return Find(&Family::lists, name); }
const RecordGetter& Record(std::string_view name) { return Find(&Family::records, name); }
const RawGetter& Raw(std::string_view name) { return Find(&Family::raws, name); }
const OtherGetter& Other(std::string_view name) { return Find(&Family::others, name); }

std::vector<const Family*> Families() {
#define ADDRESS_OF(family) &family(),
  return {FOR_EACH_FAMILY(ADDRESS_OF)};
#undef ADDRESS_OF
}

}  // namespace getters
