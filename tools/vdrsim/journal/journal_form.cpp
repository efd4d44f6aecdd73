#include "journal/journal_form.h"

#include <fmt/format.h>

#include <iterator>

#include "common/errno_name.h"
#include "journal/put.h"
#include "requests/field_view.h"

namespace vdrsim {

namespace {

using requests::Field;
using requests::FieldView;

constexpr int64_t kNanoseconds = 1'000'000'000;

std::string_view Text(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void PutTime(std::string& out, int64_t time) {
  fmt::format_to(std::back_inserter(out), ",\"time\":{}.{:09}", time / kNanoseconds,
                 time % kNanoseconds);
}

void PutMember(std::string& out, std::string_view name, uint64_t number) {
  out += ",\"";
  out += name;
  out += "\":";
  PutNumber(out, number);
}

// A text that JSON can't carry is escaped, and the member behind it says so.
void PutText(std::string& out, std::string_view name, std::string_view text) {
  if (PutJsonText(out, text)) return;
  out += ",\"";
  out += name;
  out += "Escaped\":true";
}

void PutQuotedHex(std::string& out, std::span<const std::byte> bytes,
                  std::string_view separator = {}) {
  out += '"';
  PutHex(out, bytes, separator);
  out += '"';
}

void PutField(std::string& out, const FieldView& view) {
  out += '"';
  out += view.field.name;
  out += "\":";
  switch (view.field.kind) {
    case Field::Kind::Number:
      return PutNumber(out, view.Number());
    case Field::Kind::Signed:
      return PutSigned(out, view.Signed());
    case Field::Kind::Text:
    case Field::Kind::OpenText:
      return PutText(out, view.field.name, view.Text());
    case Field::Kind::Mac:
      return PutQuotedHex(out, view.bytes, ":");
    case Field::Kind::Bytes:
      return PutQuotedHex(out, view.bytes);
  }
}

// Null where the input is none of this command's.
void PutRequest(std::string& out, const requests::Request& request,
                std::span<const std::byte> input) {
  if (input.size() != InputLength(request.form)) {
    out += "null";
    return;
  }
  char separator = '{';
  requests::ForEachField(request, input, [&](const FieldView& view) {
    out += std::exchange(separator, ',');
    PutField(out, view);
  });
  out += separator == '{' ? "{}" : "}";
}

void PutMeaning(std::string& out, const Entry& entry) {
  const requests::Request* request = requests::Find(entry.code, entry.input);
  if (!request) {
    out += ",\"name\":null,\"request\":null";
    return;
  }
  out += ",\"name\":\"";
  out += request->name.view();
  out += "\",\"request\":";
  PutRequest(out, *request, entry.input);
}

void PutError(std::string& out, int error) {
  const std::string_view name = tools::ErrnoName(error);
  out += ",\"errno\":";
  if (name.empty()) return PutSigned(out, error);
  out += '"';
  out += name;
  out += '"';
}

void PutMark(std::string& out, const Entry& entry) {
  out += "{\"mark\":";
  PutText(out, "mark", Text(entry.input));
  PutMember(out, "seq", entry.seq);
  PutTime(out, entry.time);
  out += JournalForm::kEndOfLine;
}

void PutEnd(std::string& out, const Entry& entry) {
  out += "{\"end\":";
  PutNumber(out, entry.seq);
  PutTime(out, entry.time);
  out += JournalForm::kEndOfLine;
}

}  // namespace

void JournalForm::PutBeginning(std::string& out) const {
  fmt::format_to(std::back_inserter(out),
                 "{{\"format\":\"{}\",\"version\":{},\"program\":", kFormat, kVersion);
  PutJsonText(out, program_);
  out += kEndOfLine;
}

void JournalForm::PutCommand(const Entry& entry, std::string& out) {
  out += "{\"seq\":";
  PutNumber(out, entry.seq);
  PutTime(out, entry.time);
  PutMember(out, "pid", static_cast<uint64_t>(entry.process));
  PutMember(out, "tid", static_cast<uint64_t>(entry.thread));
  out += entry.node == Node::Normal ? ",\"node\":\"normal\"" : ",\"node\":\"upgrade\"";
  PutMember(out, "code", entry.code);
  PutMeaning(out, entry);
  out += ",\"input\":";
  PutQuotedHex(out, entry.input);
  PutMember(out, "capacity", entry.capacity);
  PutError(out, entry.error);
  PutMember(out, "length", entry.length);
  PutMember(out, "produced", entry.produced);
}

void JournalForm::Put(const Entry& entry, std::string& out) const {
  switch (entry.kind) {
    case Entry::Kind::Command:
      PutCommand(entry, out);
      out += kEndOfLine;
      return;
    case Entry::Kind::Mark:
      return PutMark(out, entry);
    case Entry::Kind::End:
      return PutEnd(out, entry);
  }
}

}  // namespace vdrsim
