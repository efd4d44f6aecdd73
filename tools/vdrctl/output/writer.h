#pragma once

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vdrctl {

// Standard output could not be written.
class OutputFailure : public std::runtime_error {
 public:
  explicit OutputFailure(int error) : std::runtime_error("standard output"), error_(error) {}
  int error() const { return error_; }

 private:
  int error_;
};

// Collects text and hands it to a stream in large parts; without a stream it keeps all of it.
class Writer {
 public:
  explicit Writer(std::FILE* stream = nullptr) : stream_(stream) {}

  void Put(char character) { text_ += character; }
  void Put(std::string_view text) { text_ += text; }
  void Fill(std::size_t count, char character = ' ') { text_.append(count, character); }

  void Number(uint64_t number) {
    std::array<char, 20> digits;
    text_.append(digits.data(), std::to_chars(digits.begin(), digits.end(), number).ptr);
  }

  void Hex(std::span<const uint8_t> bytes, std::string_view separator = {}) {
    if (bytes.empty()) return;
    const std::size_t start = text_.size();
    text_.resize(start + 2 * bytes.size() + separator.size() * (bytes.size() - 1));
    char* place = text_.data() + start;
    const auto put = [&place](uint8_t byte) {
      std::memcpy(place, kHexPairs[byte].data(), 2);
      place += 2;
    };
    if (separator.empty()) {
      std::ranges::for_each(bytes, put);
      return;
    }
    put(bytes.front());
    for (const uint8_t byte : bytes.subspan(1)) {
      place = std::ranges::copy(separator, place).out;
      put(byte);
    }
  }

  // Called between records: what has gathered goes out once it is worth a write.
  void Part() {
    if (stream_ && text_.size() >= kPart) Flush();
  }

  // Throws OutputFailure, also for what the stream itself still held back.
  void Finish() {
    if (!stream_) return;
    Flush();
    if (std::fflush(stream_) != 0) throw OutputFailure(errno);
  }

  const std::string& text() const { return text_; }
  void Clear() { text_.clear(); }

 private:
  static constexpr std::size_t kPart = 1 << 16;

  static constexpr auto kHexPairs = [] {
    constexpr char kDigits[] = "0123456789abcdef";
    std::array<std::array<char, 2>, 256> pairs{};
    for (std::size_t byte = 0; byte < pairs.size(); ++byte) {
      pairs[byte] = {kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return pairs;
  }();

  void Flush() {
    if (std::fwrite(text_.data(), 1, text_.size(), stream_) != text_.size()) {
      throw OutputFailure(errno);
    }
    text_.clear();
  }

  std::FILE* stream_;
  std::string text_;
};

}  // namespace vdrctl
