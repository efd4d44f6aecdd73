#include "output/forms.h"

#include <array>
#include <charconv>

namespace vdrctl {

namespace {

void PutHexNumber(Writer& out, uint64_t number) {
  std::array<char, 16> digits;
  const auto end = std::to_chars(digits.begin(), digits.end(), number, 16).ptr;
  out.Put("0x");
  out.Put(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
}

}  // namespace

void JsonForm::HexNumber(uint64_t number) {
  out_.Put('"');
  PutHexNumber(out_, number);
  out_.Put('"');
}

void JsonForm::Real(double number) {
  std::array<char, 400> digits;
  const auto end =
      std::to_chars(digits.begin(), digits.end(), number, std::chars_format::fixed, 6).ptr;
  out_.Put(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
}

void JsonForm::Word(std::string_view ascii) { PutJsonText(out_, ascii); }

// A text that JSON can't carry is put in the form that tables show, and the member behind says so.
void JsonForm::Text(std::string_view text) {
  PutJsonText(out_, text);
  if (IsUtf8(text)) return;
  out_.Put(",\"");
  out_.Put(name_);
  out_.Put("Escaped\":true");
}

void JsonForm::Hex(std::span<const uint8_t> bytes, std::string_view separator) {
  out_.Put('"');
  out_.Hex(bytes, separator);
  out_.Put('"');
}

void JsonForm::Next() {
  if (!first_) out_.Put(',');
  first_ = false;
}

void JsonForm::Name(std::string_view name) {
  Next();
  PutJsonText(out_, name);
  out_.Put(':');
  name_ = name;
}

void JsonForm::Begin(char bracket) {
  out_.Put(bracket);
  first_ = true;
}

void JsonForm::End(char bracket) {
  out_.Put(bracket);
  first_ = false;
}

void CellForm::HexNumber(uint64_t number) { PutHexNumber(out_, number); }

void CellForm::Text(std::string_view text) {
  if (text.empty()) return out_.Put('-');
  PutEscaped(out_, text);
}

void CellForm::Hex(std::span<const uint8_t> bytes, std::string_view separator) {
  out_.Hex(bytes, separator);
}

void CellForm::Next() {
  if (!empty_) out_.Put(' ');
  empty_ = false;
}

void CellForm::Close() {
  if (empty_) out_.Put('-');
  empty_ = false;
}

void CellForm::OpenRecord() {
  out_.Put('{');
  firstMember_ = true;
}

void CellForm::Name(std::string_view name) {
  if (!firstMember_) out_.Put(' ');
  firstMember_ = false;
  out_.Put(name);
  out_.Put('=');
}

}  // namespace vdrctl
