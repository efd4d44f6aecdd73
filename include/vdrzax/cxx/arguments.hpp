#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vdrzax/cxx/result.hpp>

// What calls take beside numbers, and how it is checked before anything is sent.
namespace vdrzax {
inline namespace v1 {

// A text to send, or none. It refers to the caller's characters, which must live as long as the call.
class Text {
 public:
  constexpr Text() noexcept = default;
  constexpr Text(std::nullptr_t) noexcept {}
  // Ends at the first NUL; NULL is none.
  constexpr Text(const char* text) noexcept
      : text_(text ? std::string_view(text) : std::string_view()), isTerminated_(true) {}
  constexpr Text(std::string_view text) noexcept : text_(text.data() ? text : "") {}
  Text(const std::string& text) noexcept : text_(text), isTerminated_(true) {}

  constexpr bool has_value() const noexcept { return text_.data() != nullptr; }
  constexpr std::string_view view() const noexcept { return text_; }
  constexpr bool is_terminated() const noexcept { return isTerminated_; }

 private:
  std::string_view text_;
  bool isTerminated_ = false;
};

template <std::size_t kSize>
using Bytes = std::array<std::uint8_t, kSize>;

// A hardware (MAC) address, in the order in which it is written.
using Mac = Bytes<6>;

// What the kernel may answer to a command that adds or deletes. It is cleared before the command is
// sent, and after a failed one it holds what the kernel wrote before it failed.
using Answer = Bytes<88>;

namespace detail {

// A text for a field that holds `kRoom` characters.
template <std::size_t kRoom, bool kIsRequired>
class Field {
 public:
  explicit Field(Text text) noexcept : text_(text.view()), refusal_(Judge(text)) {
    if (refusal_ != Refusal::None || text.is_terminated() || !text.has_value()) return;
    std::memcpy(copy_, text_.data(), text_.size());
    copy_[text_.size()] = '\0';
    text_ = {copy_, text_.size()};
  }
  Field(const Field&) = delete;
  Field& operator=(const Field&) = delete;

  Refusal refusal() const noexcept { return refusal_; }
  const char* passed() const noexcept { return text_.data(); }

 private:
  static Refusal Judge(Text text) noexcept {
    const std::string_view view = text.view();
    if (!text.has_value()) return kIsRequired ? Refusal::Missing : Refusal::None;
    if (view.size() > kRoom) return Refusal::TooLong;
    return view.find('\0') == std::string_view::npos ? Refusal::None : Refusal::NulInside;
  }

  std::string_view text_;
  Refusal refusal_;
  char copy_[kRoom + 1];
};

template <std::size_t kRoom>
using Required = Field<kRoom, true>;
template <std::size_t kRoom>
using Optional = Field<kRoom, false>;
using Name = Required<VDRZAX_NAME_MAX>;
using OptionalName = Optional<VDRZAX_NAME_MAX>;

// A hardware address, as the library takes it.
class Address {
 public:
  explicit Address(const Mac& mac) noexcept { std::memcpy(value_.bytes, mac.data(), mac.size()); }
  Refusal refusal() const noexcept { return Refusal::None; }
  const MacValue* passed() const noexcept { return &value_; }

 private:
  MacValue value_{};
};

// One that may be left out, unless the caller says that it is needed.
class OptionalAddress {
 public:
  explicit OptionalAddress(const std::optional<Mac>& mac, bool isNeeded = false) noexcept
      : address_(mac.value_or(Mac{})), isGiven_(mac.has_value()), isNeeded_(isNeeded) {}
  Refusal refusal() const noexcept {
    return isNeeded_ && !isGiven_ ? Refusal::Missing : Refusal::None;
  }
  const MacValue* passed() const noexcept { return isGiven_ ? address_.passed() : nullptr; }

 private:
  Address address_;
  bool isGiven_;
  bool isNeeded_;
};

template <typename Argument>
concept IsChecked = requires(const Argument& argument) {
  argument.refusal();
};

template <typename Argument>
Refusal RefusalOf(const Argument& argument) noexcept {
  if constexpr (IsChecked<Argument>) {
    return argument.refusal();
  } else {
    return Refusal::None;
  }
}

// What the function of the library is given.
template <typename Argument>
auto Passed(const Argument& argument) noexcept {
  if constexpr (IsChecked<Argument>) {
    return argument.passed();
  } else {
    return argument;
  }
}

inline void* Given(Answer* answer) noexcept { return answer ? answer->data() : nullptr; }

inline int CodeOf(Refusal refusal) noexcept {
  return refusal == Refusal::TooLong ? ENAMETOOLONG : EINVAL;
}

}  // namespace detail

}  // namespace v1
}  // namespace vdrzax
