#include "reference/schema.h"

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <vector>

#include "command_line.h"
#include "command_words.h"
#include "output/forms.h"
#include "output/output.h"

namespace vdrctl {

namespace {

using vdrzax::Field;

constexpr const char* kDialect = "https://json-schema.org/draft/2020-12/schema";

void PutText(JsonForm& form, const char* name, std::string_view text) {
  form.Name(name);
  form.Word(text);
}

void PutCount(JsonForm& form, const char* name, uint64_t number) {
  form.Name(name);
  form.Number(number);
}

// A member that is an object, which `put` fills.
template <typename Put>
void PutNested(JsonForm& form, std::string_view name, Put put) {
  form.Name(name);
  form.OpenRecord();
  put();
  form.CloseRecord();
}

// Objects that have all members of these names, and no others but what `putProperties` names.
template <typename Put>
void PutObjectType(JsonForm& form, const std::vector<std::string_view>& required,
                   Put putProperties) {
  PutText(form, "type", "object");
  PutNested(form, "properties", putProperties);
  form.Name("required");
  form.Open();
  for (const std::string_view name : required) {
    form.Next();
    form.Word(name);
  }
  form.Close();
  form.Name("additionalProperties");
  form.Boolean(false);
}

template <typename Put>
void PutArrayType(JsonForm& form, Put putItem) {
  PutText(form, "type", "array");
  PutNested(form, "items", putItem);
}

void PutNumberType(JsonForm& form, uint32_t width) {
  PutText(form, "type", "integer");
  PutCount(form, "minimum", 0);
  PutCount(form, "maximum", UINT64_MAX >> (64 - 8 * width));
}

void PutHexType(JsonForm& form, uint32_t bytes) {
  PutText(form, "type", "string");
  PutText(form, "pattern", fmt::format("^([0-9a-f]{{2}}){{{}}}$", bytes));
}

void PutMacType(JsonForm& form) {
  PutText(form, "type", "string");
  PutText(form, "pattern", "^[0-9a-f]{2}(:[0-9a-f]{2}){5}$");
}

void PutAddressType(JsonForm& form, const char* format) {
  PutText(form, "type", "string");
  PutText(form, "format", format);
}

void PutFlagsType(JsonForm& form) {
  PutArrayType(form, [&] { PutText(form, "type", "string"); });
}

void PutElementType(JsonForm& form, const Member& member) {
  switch (member.dress) {
    case Dress::Ipv4:
      return PutAddressType(form, "ipv4");
    case Dress::Boolean:
      return PutText(form, "type", "boolean");
    case Dress::Flags:
      return PutFlagsType(form);
    default:
      return PutNumberType(form, member.field.ElementWidth());
  }
}

void PutObject(JsonForm& form, const std::vector<Member>& members);

void PutArrayOfNumbers(JsonForm& form, const Member& member) {
  PutArrayType(form, [&] { PutElementType(form, member); });
  PutCount(form, "minItems", member.field.elements);
  PutCount(form, "maxItems", member.field.elements);
}

void PutArrayOfRecords(JsonForm& form, const Member& member) {
  PutArrayType(form, [&] { PutObject(form, member.entry->members); });
  PutCount(form, "maxItems", member.field.elements);
}

void PutBytesType(JsonForm& form, const Member& member) {
  switch (member.dress) {
    case Dress::Ipv4:
      return PutAddressType(form, "ipv4");
    case Dress::Ipv6:
      return PutAddressType(form, "ipv6");
    case Dress::Mac:
      return PutMacType(form);
    case Dress::Text:
      return PutText(form, "type", "string");
    default:
      return PutHexType(form, member.field.width);
  }
}

void PutType(JsonForm& form, const Member& member) {
  switch (member.field.kind) {
    case Field::Kind::Number:
      if (member.dress == Dress::Ipv6) return PutAddressType(form, "ipv6");
      if (member.field.elements > 1) return PutArrayOfNumbers(form, member);
      return PutElementType(form, member);
    case Field::Kind::Text:
      return PutText(form, "type", "string");
    case Field::Kind::Bytes:
      return PutBytesType(form, member);
    case Field::Kind::Mac:
      return PutMacType(form);
    case Field::Kind::Entries:
      return PutArrayOfRecords(form, member);
    case Field::Kind::Skipped:
      return;
  }
}

bool IsText(const Member& member) {
  return member.field.kind == Field::Kind::Text || member.dress == Dress::Text;
}

void PutObject(JsonForm& form, const std::vector<Member>& members) {
  std::vector<std::string_view> names;
  names.reserve(members.size());
  for (const Member& member : members) names.emplace_back(member.name);
  PutObjectType(form, names, [&] {
    for (const Member& member : members) {
      PutNested(form, member.name, [&] { PutType(form, member); });
      if (!IsText(member)) continue;
      PutNested(form, member.name + "Escaped", [&] {
        form.Name("const");
        form.Boolean(true);
      });
    }
  });
}

// An object of one member, whose type `putType` puts.
template <typename Put>
void PutSingle(JsonForm& form, const char* member, Put putType) {
  PutObjectType(form, {member}, [&] { PutNested(form, member, putType); });
}

void PutDumpObject(JsonForm& form) {
  PutObjectType(form, {"length", "bytes"}, [&] {
    PutNested(form, "length", [&] { PutNumberType(form, 8); });
    PutNested(form, "bytes", [&] {
      PutText(form, "type", "string");
      PutText(form, "pattern", "^([0-9a-f]{2})*$");
    });
  });
}

void PutLayouts(JsonForm& form, const Output& out) {
  const auto& views = out.views();
  if (views.size() == 1) return PutObject(form, views.front().members);
  form.Name("anyOf");
  form.Open();
  for (const RecordView& view : views) {
    form.Next();
    form.OpenRecord();
    PutText(form, "title", view.name);
    PutObject(form, view.members);
    form.CloseRecord();
  }
  form.Close();
}

void PutReplySchema(JsonForm& form, const Command& command, const Output& out) {
  switch (command.reply.form) {
    case Reply::Form::Number:
      return PutSingle(form, command.reply.member, [&] { PutNumberType(form, 4); });
    case Reply::Form::Address:
      return PutSingle(form, command.reply.member, [&] { PutAddressType(form, "ipv4"); });
    case Reply::Form::Mac:
      return PutSingle(form, command.reply.member, [&] { PutMacType(form); });
    case Reply::Form::Record:
      return PutLayouts(form, out);
    case Reply::Form::List:
      return PutArrayType(form, [&] { PutLayouts(form, out); });
    case Reply::Form::Bytes:
      return PutDumpObject(form);
    case Reply::Form::Table:
    case Reply::Form::None:
      return;
  }
}

bool PrintsJson(const Command& command) {
  return command.reply.form != Reply::Form::None && command.reply.form != Reply::Form::Table;
}

void PutCommandSchema(JsonForm& form, const Command& command, const Presentation& presentation) {
  Writer unused;
  PutText(form, "title", "vdrctl " + FullName(command) + " --json");
  PutReplySchema(form, command, Output(presentation, command.reply, unused));
}

const Command& Named(const std::string& words) {
  const Command* command = FindCommand(words);
  if (command && PrintsJson(*command)) return *command;
  throw WrongUsage(command ? "'vdrctl " + words + "' prints no JSON"
                           : "there is no command '" + Escaped(words) + "'",
                   "vdrctl schema");
}

// Synonyms are understood as on a command line.
std::string CommandWords(std::initializer_list<const char*> given) {
  std::string words;
  for (const char* word : given) {
    if (!word) continue;
    const std::string_view accepted = Accepted(words, word);
    words += fmt::format("{}{}", words.empty() ? "" : " ", accepted.empty() ? word : accepted);
  }
  return words;
}

}  // namespace

int PrintSchema(Output& out, const char* first, const char* second, const char* third) {
  const std::string words = CommandWords({first, second, third});
  const Presentation presentation{.names = out.names()};
  Writer text;
  JsonForm form(text);
  form.OpenRecord();
  PutText(form, "$schema", kDialect);
  if (!words.empty()) {
    PutCommandSchema(form, Named(words), presentation);
  } else {
    PutNested(form, "$defs", [&] {
      ForEachCommand([&](const Command& command) {
        if (!PrintsJson(command)) return;
        PutNested(form, FullName(command), [&] { PutCommandSchema(form, command, presentation); });
      });
    });
  }
  form.CloseRecord();
  text.Put('\n');
  out.Text(text.text());
  return 0;
}

}  // namespace vdrctl
