#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "replay/file_bytes.h"

namespace vdrsim {

// A recording that can't be read, and the line where.
class BadRecording : public std::runtime_error {
 public:
  BadRecording(const std::string& path, uint64_t line, const std::string& what);
};

// Bytes in hexadecimal within a file.
struct HexPlace {
  uint64_t offset = 0;
  uint32_t size = 0;  // in bytes, of which each is two digits
};

// Reads JSON Lines value by value, where the caller says what it expects. Replies stand in one value
// of any size, so none but short texts is held. Throws BadRecording at whatever is not expected, and
// at the end of the file within a line.
class JsonReader {
 public:
  explicit JsonReader(FileBytes& file) : file_(file) {}

  uint64_t line() const { return line_; }

  bool IsAtEnd() { return file_.Peek() == FileBytes::kEnd; }

  // An object; `onMember` reads the value of the member whose name it gets.
  template <typename OnMember>
  void Object(const OnMember& onMember) {
    Expect('{');
    if (Accept('}')) return;
    do {
      const std::string name = Text();
      Expect(':');
      onMember(std::string_view(name));
    } while (Accept(','));
    Expect('}');
  }

  // The end of the line behind its value.
  void EndOfLine();

  std::string Text();
  uint64_t Number(uint64_t most);  // `most` has more than one digit
  HexPlace Hex();
  bool IsText() { return Next() == '"'; }

  // Any value.
  void Skip(int depth = 0);

  [[noreturn]] void Fail(const std::string& what) const;

 private:
  int Next();
  bool Accept(char character);
  void Expect(char character);
  char Character();
  template <typename Is>
  void SkipWhile(Is is);
  void SkipText();
  void SkipWord();

  FileBytes& file_;
  uint64_t line_ = 1;
};

}  // namespace vdrsim
