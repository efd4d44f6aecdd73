#include <fmt/format.h>

#include <set>
#include <string>
#include <vector>

#include "datapath/caps.h"
#include "state/shape.h"
#include "state/tables.h"

// Prints what the page of states says of each object, from the tables of members.

namespace {

using namespace vdrsim::shape;

// An object, and the key that it has in an array.
struct Described {
  const Struct* key;
  const Struct* members;

  std::string Name() const { return std::string(key ? key->name : "") + members->name; }
};

std::string Link(const std::string& name) {
  std::string anchor = name;
  for (char& character : anchor) character = static_cast<char>(std::tolower(character));
  return fmt::format("[{}](#{})", name, anchor);
}

class Tables {
 public:
  void Print() {
    Add({&vdrsim::HeaderTable(), &vdrsim::StateTable()});
    for (size_t index = 0; index < objects_.size(); ++index) {
      const Described object = objects_[index];
      fmt::print("\n### {}\n\n", index == 0 ? "The document" : object.Name());
      PrintRows(object);
    }
  }

 private:
  std::string Add(const Described& object) {
    if (names_.insert(object.Name()).second) objects_.push_back(object);
    return Link(object.Name());
  }

  std::string Of(const Shape& shape, const Struct* key = nullptr) {
    if (const auto* scalar = std::get_if<const Scalar*>(&shape)) return (*scalar)->describe();
    if (const auto* members = std::get_if<const Struct*>(&shape)) return Add({key, *members});
    const Collection& collection = *std::get<const Collection*>(shape);
    const std::string most =
        collection.most == vdrsim::kNoCap ? "" : fmt::format(", at most {}", collection.most);
    const std::string elements = Of(collection.element, collection.key);
    if (!collection.name) return fmt::format("array of {}{}", elements, most);
    return fmt::format("object: {} to {}{}", collection.name->describe(), elements, most);
  }

  void PrintRows(const Described& object) {
    if (object.members->members.empty() && !object.key) {
      fmt::print("It has no members.\n");
      return;
    }
    fmt::print("| Member | Value | From |\n|---|---|---|\n");
    for (const Struct* part : {object.key, object.members}) {
      if (!part) continue;
      for (const Member& member : part->members) {
        fmt::print("| `{}`{} | {} | {} |\n", member.name, member.isRequired ? ", required" : "",
                   Of(member.shape), Origin(member));
      }
    }
  }

  static std::string Origin(const Member& member) {
    if (member.function.empty()) return std::string(member.argument);
    return fmt::format("`{}` of `VDRZAX_{}`", member.argument, member.function);
  }

  std::vector<Described> objects_{};
  std::set<std::string> names_{};
};

}  // namespace

int main() { Tables().Print(); }
