#include "journal/trace_form.h"

#include <cstring>
#include <string_view>
#include <utility>

#include "common/errno_name.h"
#include "common/escapes.h"
#include "journal/put.h"
#include "requests/field_view.h"

namespace vdrsim {

namespace {

using requests::Field;
using requests::FieldView;

// "edge-1", and whatever could drive a terminal escaped.
void PutQuoted(std::string& out, std::string_view text) {
  out += '"';
  for (const char character : tools::Printable(text)) {
    if (character == '"') out += '\\';
    out += character;
  }
  out += '"';
}

void PutArguments(std::string& out, const requests::Request* request,
                  std::span<const std::byte> input) {
  if (!request || input.size() != InputLength(request->form)) {
    PutNumber(out, input.size());
    out += " bytes";
    return;
  }
  std::string_view separator;
  requests::ForEachField(*request, input, [&](const FieldView& view) {
    out += std::exchange(separator, ", ");
    out += view.field.name;
    out += '=';
    PutValueForPeople(view, out);
  });
}

void PutCaller(std::string& out, const Entry& entry) {
  out += '[';
  PutSigned(out, entry.process);
  if (entry.thread != entry.process) {
    out += '/';
    PutSigned(out, entry.thread);
  }
  if (entry.node == Node::Upgrade) out += " upgrade";
  out += "] ";
}

// " = 0", and what the reply is long where there is one.
void PutResult(std::string& out, const Entry& entry) {
  out += " = ";
  if (entry.error == 0) {
    out += '0';
  } else {
    const std::string_view name = tools::ErrnoName(entry.error);
    out += "-1 ";
    if (name.empty()) {
      PutSigned(out, entry.error);
    } else {
      out += name;
    }
    out += " (";
    out += std::strerror(entry.error);
    out += ')';
  }
}

void PutLength(std::string& out, const Entry& entry) {
  const uint32_t expected = entry.error == 0 ? entry.produced : entry.capacity;
  if (entry.produced == 0 && entry.length == expected) return;
  out += " <";
  PutNumber(out, entry.produced);
  if (entry.length != expected) {
    out += ", claims ";
    PutNumber(out, entry.length);
  }
  out += '>';
}

void PutCommand(std::string& out, const Entry& entry) {
  PutCaller(out, entry);
  PutRequestForPeople(entry.code, entry.input, out);
  PutResult(out, entry);
  PutLength(out, entry);
  out += '\n';
}

}  // namespace

void TraceForm::Put(const Entry& entry, std::string& out) const {
  if (entry.kind == Entry::Kind::Command) return PutCommand(out, entry);
  if (entry.kind == Entry::Kind::End) return;
  out += "[mark] ";
  PutQuoted(out, {reinterpret_cast<const char*>(entry.input.data()), entry.input.size()});
  out += '\n';
}

void PutRequestForPeople(uint32_t code, std::span<const std::byte> input, std::string& out) {
  const requests::Request* request = requests::Find(code, input);
  if (request) {
    out += request->name.view();
  } else {
    out += "command ";
    PutNumber(out, code);
  }
  out += '(';
  PutArguments(out, request, input);
  out += ')';
}

void PutValueForPeople(const FieldView& view, std::string& out) {
  switch (view.field.kind) {
    case Field::Kind::Number:
      return PutNumber(out, view.Number());
    case Field::Kind::Signed:
      return PutSigned(out, view.Signed());
    case Field::Kind::Text:
    case Field::Kind::OpenText:
      return PutQuoted(out, view.Text());
    case Field::Kind::Mac:
      return PutHex(out, view.bytes, ":");
    case Field::Kind::Bytes:
      return PutHex(out, view.bytes);
  }
}

}  // namespace vdrsim
