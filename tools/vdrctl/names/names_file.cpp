#include "names/names_file.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <vector>

#include "command_words.h"
#include "common/suggestion.h"
#include "files.h"
#include "output/text.h"

namespace vdrctl {

namespace {

using Json = nlohmann::ordered_json;
using vdrzax::Field;
using vdrzax::RecordLayout;

constexpr std::size_t kLongestFile = 1 << 20;

using Layouts = std::map<std::string, const RecordLayout*, std::less<>>;

void AddLayout(Layouts& layouts, std::string_view title, const RecordLayout& layout) {
  layouts.emplace(title, &layout);
  for (const Field& row : layout.rows) {
    if (row.entry) AddLayout(layouts, row.entry->name, *row.entry);
  }
}

// Every layout that a command prints, by the title that it has in the documentation.
Layouts AllLayouts() {
  Layouts layouts;
  ForEachCommand([&](const Command& command) {
    for (std::size_t index = 0; index < command.reply.layouts.size(); ++index) {
      AddLayout(layouts, TitleOf(command.reply, index), *command.reply.layouts[index]);
    }
  });
  return layouts;
}

// Every field that can have a name of its own, by the name that it has without.
std::map<std::string, Field, std::less<>> FieldsOf(const RecordLayout& layout) {
  std::map<std::string, Field, std::less<>> fields;
  for (const Field& row : layout.rows) {
    if (row.kind == Field::Kind::Skipped) continue;
    fields.emplace(row.name, row);
    for (uint32_t index = 0;
         row.kind == Field::Kind::Number && row.elements > 1 && index < row.elements; ++index) {
      fields.emplace(ElementName(row, index), ElementOf(row, index));
    }
  }
  return fields;
}

// The path of a member.
std::string Below(const std::string& place, const std::string& name) {
  return fmt::format("{}/{}", place, name);
}

template <typename Map>
std::vector<std::string_view> Keys(const Map& map) {
  std::vector<std::string_view> keys;
  keys.reserve(map.size());
  for (const auto& [key, value] : map) keys.push_back(key);
  return keys;
}

bool IsName(std::string_view name) {
  constexpr std::string_view kCharacters =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-";
  return !name.empty() && name.size() <= 63 &&
         name.find_first_not_of(kCharacters) == std::string_view::npos;
}

// Sees a document while it is parsed, and finds a second member of one name, of which the parser would
// keep the last without a word.
class Members {
 public:
  // Returns the place of a member that its object has already; "" for all else.
  std::string See(Json::parse_event_t event, const Json& parsed);

 private:
  struct Object {
    std::set<std::string> names{};
    std::string last{};
  };
  std::vector<Object> open_{};
};

std::string Members::See(Json::parse_event_t event, const Json& parsed) {
  using Event = Json::parse_event_t;
  if (event == Event::object_start) open_.emplace_back();
  if (event == Event::object_end) open_.pop_back();
  if (event != Event::key) return "";
  Object& object = open_.back();
  object.last = parsed.get<std::string>();
  if (object.names.insert(object.last).second) return "";
  std::string place;
  for (const Object& one : open_) place += "/" + one.last;
  return place;
}

// Reads one file; each complaint says where.
class Reader {
 public:
  explicit Reader(const std::string& file) : file_(file) {}

  FieldNames Read();

 private:
  void ReadRecord(const std::string& title, const Json& fields);
  FieldName ReadField(const Json& value, const Field& field, const std::string& place);
  Dress ReadForm(const Json& value, const Field& field, const std::string& place);
  std::vector<Flag> ReadFlags(const Json& value, const Field& field, const std::string& place);
  void RefuseTwice(const std::string& title, const RecordLayout& layout);
  const Json& Object(const Json& value, const std::string& place);
  std::string Text(const Json& value, const std::string& place);
  [[noreturn]] void Refuse(const std::string& place, const std::string& complaint) const {
    throw NamesFailure(
        fmt::format("{}: {}: {}", Escaped(file_), place.empty() ? "/" : Escaped(place), complaint));
  }

  const std::string& file_;
  const Layouts layouts_ = AllLayouts();
  FieldNames names_{};
};

FieldNames Reader::Read() {
  const auto bytes = ReadFile(file_, kLongestFile, "a file of names has at most 1 MiB");
  Json document;
  try {
    Members members;
    document = Json::parse(bytes, [&](int /*depth*/, Json::parse_event_t event, Json& parsed) {
      const std::string twice = members.See(event, parsed);
      if (!twice.empty()) Refuse(twice, "is there twice");
      return true;
    });
  } catch (const Json::exception& error) {  // also of a number that is too large
    const std::string_view text = error.what();
    throw NamesFailure(
        fmt::format("{}: {}", Escaped(file_), Escaped(text.substr(text.find("] ") + 2))));
  }
  for (const auto& [key, value] : Object(document, "").items()) {
    if (key != "format" && key != "records") Refuse("/" + key, "neither 'format' nor 'records'");
  }
  if (document.value("format", Json()) != 1) Refuse("/format", "1 is the only format");
  if (!document.contains("records")) Refuse("/records", "is missing");
  for (const auto& [title, fields] : Object(document["records"], "/records").items()) {
    ReadRecord(title, fields);
  }
  return std::move(names_);
}

void Reader::ReadRecord(const std::string& title, const Json& fields) {
  const std::string place = "/records/" + title;
  const auto layout = layouts_.find(title);
  if (layout == layouts_.end()) {
    Refuse(place, "there is no record of this name" + tools::Suggestion(title, Keys(layouts_)));
  }
  const auto known = FieldsOf(*layout->second);
  for (const auto& [name, value] : Object(fields, place).items()) {
    const std::string here = Below(place, name);
    const auto field = known.find(name);
    if (field == known.end()) {
      Refuse(here, "the record has no field of this name" + tools::Suggestion(name, Keys(known)));
    }
    names_.Add(title, name, ReadField(value, field->second, here));
  }
  RefuseTwice(title, *layout->second);
}

FieldName Reader::ReadField(const Json& value, const Field& field, const std::string& place) {
  FieldName name;
  if (value.is_string()) {
    name.name = Text(value, place);
  } else {
    for (const auto& [key, member] : Object(value, place).items()) {
      const std::string here = Below(place, key);
      if (key == "name") {
        name.name = Text(member, here);
      } else if (key == "form") {
        name.dress = ReadForm(member, field, here);
      } else if (key == "flags") {
        name.flags = ReadFlags(member, field, here);
      } else if (key != "comment") {
        Refuse(here, "none of 'name', 'form', 'flags' and 'comment'");
      }
    }
    if (!value.contains("name")) Refuse(place, "has no 'name'");
  }
  if ((name.dress == Dress::Flags) != !name.flags.empty()) {
    Refuse(place, "'flags' and the form 'flags' go together");
  }
  if (!IsName(name.name)) {
    Refuse(place, "a name is of 1 to 63 letters, digits, '_' and '-'");
  }
  return name;
}

struct FormRule {
  const char* name;
  Dress dress;
  bool (*fits)(const Field& field);
};

bool IsNumber(const Field& field) { return field.kind == Field::Kind::Number; }
bool HasBytes(const Field& field, uint32_t count) {
  return field.kind == Field::Kind::Bytes && field.width == count;
}

constexpr FormRule kForms[] = {
    {"decimal", Dress::Plain, IsNumber},
    {"hex", Dress::Hex, IsNumber},
    {"counter", Dress::Counter, IsNumber},
    {"boolean", Dress::Boolean, IsNumber},
    {"flags", Dress::Flags, IsNumber},
    {"ipv4", Dress::Ipv4,
     [](const Field& field) {
       return (IsNumber(field) && field.ElementWidth() == 4) || HasBytes(field, 4);
     }},
    {"ipv6", Dress::Ipv6,
     [](const Field& field) {
       return (IsNumber(field) && field.width == 16) || HasBytes(field, 16);
     }},
    {"mac", Dress::Mac,
     [](const Field& field) { return field.kind == Field::Kind::Mac || HasBytes(field, 6); }},
    {"text", Dress::Text,
     [](const Field& field) {
       return field.kind == Field::Kind::Bytes || field.kind == Field::Kind::Text;
     }},
};

Dress Reader::ReadForm(const Json& value, const Field& field, const std::string& place) {
  const std::string name = Text(value, place);
  std::vector<std::string_view> names;
  for (const FormRule& rule : kForms) {
    names.emplace_back(rule.name);
    if (name != rule.name) continue;
    if (!rule.fits(field)) Refuse(place, fmt::format("'{}' does not fit this field", name));
    return rule.dress;
  }
  Refuse(place, fmt::format("'{}' is none of {}{}", Escaped(name), fmt::join(names, ", "),
                            tools::Suggestion(name, names)));
}

std::vector<Flag> Reader::ReadFlags(const Json& value, const Field& field,
                                    const std::string& place) {
  std::vector<Flag> flags;
  const uint32_t bits = 8 * field.ElementWidth();
  for (const auto& [name, mask] : Object(value, place).items()) {
    const std::string here = Below(place, name);
    if (!IsName(name)) Refuse(here, "a name is of 1 to 63 letters, digits, '_' and '-'");
    const bool fits = mask.is_number_unsigned() && mask.get<uint64_t>() != 0 &&
                      (bits == 64 || mask.get<uint64_t>() >> bits == 0);
    if (!fits) Refuse(here, fmt::format("is not a number of 1 to {} bits, and not 0", bits));
    flags.push_back({mask.get<uint64_t>(), name});
  }
  return flags;
}

// Two fields of one name would be one member of a JSON object.
void Reader::RefuseTwice(const std::string& title, const RecordLayout& layout) {
  std::set<std::string, std::less<>> seen;
  for (const Member& member : MakeView(layout, title, &names_).members) {
    if (!seen.insert(member.name).second) {
      Refuse("/records/" + title, fmt::format("two fields are called '{}'", member.name));
    }
  }
}

const Json& Reader::Object(const Json& value, const std::string& place) {
  if (!value.is_object()) Refuse(place, "is not an object");
  return value;
}

std::string Reader::Text(const Json& value, const std::string& place) {
  if (!value.is_string()) Refuse(place, "is not a text");
  return value.get<std::string>();
}

}  // namespace

FieldNames ReadNames(const std::string& file) { return Reader(file).Read(); }

std::optional<std::string> UsualNamesFile() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  const char* home = std::getenv("HOME");
  std::vector<std::string> files;
  if (config && *config == '/') {
    files.push_back(std::string(config) + "/vdrzax/names.json");
  } else if (home && *home == '/') {
    files.push_back(std::string(home) + "/.config/vdrzax/names.json");
  }
  files.emplace_back("/etc/vdrzax/names.json");
  for (const std::string& file : files) {
    if (access(file.c_str(), F_OK) == 0) return file;
  }
  return std::nullopt;
}

}  // namespace vdrctl
