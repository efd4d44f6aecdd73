#include "reference/command_list.h"

#include "command_words.h"
#include "help.h"
#include "output/forms.h"
#include "output/output.h"

namespace vdrctl {

namespace {

// Null where there is no text.
void PutText(JsonForm& form, const char* name, std::string_view text) {
  form.Name(name);
  if (text.empty()) return form.Null();
  form.Word(text);
}

// One name, several, or null: what a program that reads this wants to tell apart.
void PutFunctions(JsonForm& form, std::span<const char* const> functions) {
  if (functions.size() < 2) {
    return PutText(form, "function", functions.empty() ? "" : functions.front());
  }
  form.Name("function");
  form.Open();
  for (const char* function : functions) {
    form.Next();
    form.Word(function);
  }
  form.Close();
}

void PutParameter(JsonForm& form, const Parameter& parameter) {
  form.OpenRecord();
  PutText(form, "name", parameter.name);
  PutText(form, "kind", KindName(parameter.kind));
  form.Name("required");
  form.Boolean(!parameter.optional);
  form.Name("limit");
  if (parameter.limit != 0) {
    form.Number(parameter.limit);
  } else {
    form.Null();
  }
  PutText(form, "meaning", parameter.meaning);
  form.CloseRecord();
}

void PutCommand(JsonForm& form, const Command& command) {
  form.OpenRecord();
  PutText(form, "object", command.object);
  PutText(form, "verb", command.verb);
  PutText(form, "summary", command.summary);
  PutFunctions(form, command.functions.All());
  form.Name("codes");
  form.Open();
  for (const uint32_t code : command.codes.All()) {
    form.Next();
    form.Number(code);
  }
  form.Close();
  form.Name("parameters");
  form.Open();
  for (const Parameter& parameter : command.Parameters()) {
    form.Next();
    PutParameter(form, parameter);
  }
  form.Close();
  form.CloseRecord();
}

}  // namespace

int ListCommands(Output& out) {
  Writer text;
  if (out.IsJson()) {
    JsonForm form(text);
    form.Open();
    ForEachCommand([&](const Command& command) {
      form.Next();
      PutCommand(form, command);
    });
    form.Close();
    text.Put('\n');
  } else {
    ForEachCommand([&](const Command& command) {
      text.Put(UsageLine(command).substr(std::string_view("vdrctl ").size()));
      text.Put("\n    ");
      text.Put(command.summary);
      text.Put('\n');
    });
  }
  out.Text(text.text());
  return 0;
}

}  // namespace vdrctl
