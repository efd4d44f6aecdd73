#pragma once

#include <vdrzax/channel.h>

#include <cerrno>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

// How calls fail. The rules stand in <vdrzax.hpp>.
namespace vdrzax {
inline namespace v1 {

// What the face refuses before anything is sent. The library would cut the argument or run past it.
enum class Refusal {
  None,
  TooLong,    // a text or an array with more than there is room for
  NulInside,  // a text that would end early
  Missing,    // a required text or address that is not there
};

// Why a call failed: the function of <vdrzax.h> that was, or would have been, called, and an errno
// value, which is 0 when nothing failed.
struct Failure {
  const char* function = "";
  int code = 0;
  Refusal refusal = Refusal::None;
};

// What a call throws that the library or the device refused.
class error : public std::system_error {
 public:
  explicit error(const Failure& failure)
      : system_error(failure.code, std::system_category(), failure.function),
        function_(failure.function) {}

  // The function of <vdrzax.h> that failed.
  const char* function() const noexcept { return function_; }

 private:
  const char* function_;
};

namespace detail {

#ifdef __cpp_exceptions
[[noreturn]] inline void Throw(const Failure& failure) {
  const std::string function = failure.function;
  switch (failure.refusal) {
    case Refusal::TooLong:
      throw std::length_error(function + ": an argument is longer than its field");
    case Refusal::NulInside:
      throw std::invalid_argument(function + ": a text has a NUL inside");
    case Refusal::Missing:
      throw std::invalid_argument(function + ": a required argument is missing");
    case Refusal::None:
      break;
  }
  throw error(failure);
}
#endif

}  // namespace detail

// How a call ended that does not throw: a value, or why there is none.
template <typename Value>
class [[nodiscard]] result {
 public:
  using value_type = Value;

  result(Value value) noexcept : value_(std::move(value)) {}
  result(const Failure& failure) noexcept : failure_(failure) {}

  explicit operator bool() const noexcept { return failure_.code == 0; }
  bool has_value() const noexcept { return failure_.code == 0; }
  std::error_code code() const noexcept { return {failure_.code, std::system_category()}; }
  const char* function() const noexcept { return failure_.function; }
  const Failure& failure() const noexcept { return failure_; }

  // An empty value after a failure.
  Value& operator*() & noexcept { return value_; }
  const Value& operator*() const& noexcept { return value_; }
  Value&& operator*() && noexcept { return std::move(value_); }
  Value* operator->() noexcept { return &value_; }
  const Value* operator->() const noexcept { return &value_; }

#ifdef __cpp_exceptions
  // The value; throws what the call of the same name without `try_` throws.
  Value value() && {
    if (!has_value()) detail::Throw(failure_);
    return std::move(value_);
  }
#endif

 private:
  Value value_{};
  Failure failure_;
};

template <>
class [[nodiscard]] result<void> {
 public:
  using value_type = void;

  result() noexcept = default;
  result(const Failure& failure) noexcept : failure_(failure) {}

  explicit operator bool() const noexcept { return failure_.code == 0; }
  bool has_value() const noexcept { return failure_.code == 0; }
  std::error_code code() const noexcept { return {failure_.code, std::system_category()}; }
  const char* function() const noexcept { return failure_.function; }
  const Failure& failure() const noexcept { return failure_; }

#ifdef __cpp_exceptions
  void value() const {
    if (!has_value()) detail::Throw(failure_);
  }
#endif

 private:
  Failure failure_;
};

}  // namespace v1
}  // namespace vdrzax
