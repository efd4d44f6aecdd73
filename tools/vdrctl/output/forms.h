#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "output/text.h"
#include "output/writer.h"

// The forms that a record can be written in; value.h says what a form is.

namespace vdrctl {

class JsonForm {
 public:
  explicit JsonForm(Writer& out) : out_(out) {}

  void Number(uint64_t number) { out_.Number(number); }
  void NumberInHex(uint64_t number) { out_.Number(number); }
  void HexNumber(uint64_t number);
  void Word(std::string_view ascii);
  void Text(std::string_view text);
  void Hex(std::span<const uint8_t> bytes, std::string_view separator);
  void Boolean(bool value) { out_.Put(value ? "true" : "false"); }
  void Real(double number);
  void Null() { out_.Put("null"); }

  void Open() { Begin('['); }
  void Next();
  void Close() { End(']'); }
  void OpenRecord() { Begin('{'); }
  void Name(std::string_view name);
  void CloseRecord() { End('}'); }

 private:
  void Begin(char bracket);
  void End(char bracket);

  Writer& out_;
  bool first_ = true;
  std::string_view name_ = {};  // of the member whose value comes next
};

// The cell of a table. Something must stand in each, or the eye takes one column for the next.
class CellForm {
 public:
  explicit CellForm(Writer& out) : out_(out) {}

  void Number(uint64_t number) { out_.Number(number); }
  void NumberInHex(uint64_t number) { HexNumber(number); }
  void HexNumber(uint64_t number);
  void Word(std::string_view ascii) { out_.Put(ascii); }
  void Text(std::string_view text);
  void Hex(std::span<const uint8_t> bytes, std::string_view separator);
  void Boolean(bool value) { out_.Put(value ? "yes" : "no"); }

  void Open() { empty_ = true; }
  void Next();
  void Close();
  void OpenRecord();
  void Name(std::string_view name);
  void CloseRecord() { out_.Put('}'); }

 private:
  Writer& out_;
  bool empty_ = false;
  bool firstMember_ = false;
};

}  // namespace vdrctl
