#pragma once

#include <vdrzax/instance.h>

#include <vdrzax/cxx/records.hpp>

// The workers behind all calls, one for each kind.
namespace vdrzax {
inline namespace v1 {
namespace detail {

// Calls the function, unless it would be given what is refused.
//
// Some functions fail without a word about a reply that they cannot read. errno is cleared before, so
// that such a failure is not taken for an older one; it is EBADMSG then.
template <typename... Parameters, typename... Arguments>
Failure Call(const char* function, int (*call)(Parameters...),
             const Arguments&... arguments) noexcept {
  Refusal refusal = Refusal::None;
  static_cast<void>(((refusal = RefusalOf(arguments), refusal != Refusal::None) || ...));
  if (refusal != Refusal::None) return {function, CodeOf(refusal), refusal};
  const int before = std::exchange(errno, 0);
  if (call(Parameters{Passed(arguments)}...) != 0) return {function, errno ? errno : EBADMSG};
  errno = before;
  return {};
}

// A command without output.
template <typename Function, typename... Arguments>
result<void> Command(const char* function, Function* call, const Arguments&... arguments) noexcept {
  return Call(function, call, arguments...);
}

template <typename Function, typename... Arguments>
result<std::uint32_t> Number(const char* function, Function* call,
                             const Arguments&... arguments) noexcept {
  std::uint32_t number = 0;
  const Failure failure = Call(function, call, arguments..., &number);
  if (failure.code != 0) return failure;
  return number;
}

template <std::size_t kSize, typename Function, typename... Arguments>
result<Bytes<kSize>> Array(const char* function, Function* call,
                           const Arguments&... arguments) noexcept {
  Bytes<kSize> bytes{};
  const Failure failure = Call(function, call, arguments..., bytes.data());
  if (failure.code != 0) return failure;
  return bytes;
}

template <std::size_t kSize, typename Function, typename... Arguments>
result<Buffer> Raw(const char* function, Function* call, const Arguments&... arguments) noexcept {
  Buffer buffer(kSize);
  if (buffer.empty()) return Failure{function, ENOMEM};
  const Failure failure = Call(function, call, arguments..., buffer.data());
  if (failure.code != 0) return failure;
  return buffer;
}

// A record or a list that the library allocates. What its pointer holds after a failure is not read.
template <typename Owner, typename Memory, typename Function, typename... Arguments>
result<Owner> Adopt(const char* function, Function* call, const Arguments&... arguments) noexcept {
  Memory* memory = nullptr;
  const Failure failure = Call(function, call, arguments..., &memory);
  if (failure.code != 0) return failure;
  return Owner(memory);
}

template <typename View, typename Function, typename... Arguments>
result<Owned<View>> Record(const char* function, Function* call,
                           const Arguments&... arguments) noexcept {
  return Adopt<Owned<View>, typename View::Record>(function, call, arguments...);
}

template <typename Element, typename Header = RecordList, typename Function, typename... Arguments>
result<List<Element, Header>> ReadList(const char* function, Function* call,
                                       const Arguments&... arguments) noexcept {
  return Adopt<List<Element, Header>, Header>(function, call, arguments...);
}

// Whose the header of a fetch is once the device has refused the command.
enum class HeaderAfterFailure { Callers, Freed };

// A list in a header of the face's. ENOMEM and EBADMSG may be the library's, which has then freed the
// header, or the device's: it is left alone, so 16 bytes may be lost.
template <typename Element, HeaderAfterFailure kHeader, typename Function, typename... Arguments>
result<List<Element>> Fetch(const char* function, Function* call,
                            const Arguments&... arguments) noexcept {
  auto* header = static_cast<RecordList*>(std::calloc(1, sizeof(RecordList)));
  if (!header) return Failure{function, ENOMEM};
  const Failure failure = Call(function, call, arguments..., header);
  if (failure.code == 0) return List<Element>(header);
  const bool wasCalled = failure.refusal == Refusal::None;
  const bool isFreed =
      kHeader == HeaderAfterFailure::Freed || failure.code == ENOMEM || failure.code == EBADMSG;
  if (!wasCalled || !isFreed) std::free(header);
  return failure;
}

inline result<std::uint32_t> LogLevel() noexcept {
  return Number("VDRZAX_GetLogLevel", VDRZAX_GetLogLevel);
}

// Nothing when what was asked for is not there. A device that is missing gives ENOENT too; the log
// level, which every device has, tells the two apart.
template <typename Owner>
result<Owner> Found(result<Owner> asked) noexcept {
  if (asked.failure().code != ENOENT || LogLevel().failure().code == ENOENT) return asked;
  return Owner();
}

}  // namespace detail
}  // namespace v1
}  // namespace vdrzax
