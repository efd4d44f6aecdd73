#pragma once

#include <vdrzax/channel.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <type_traits>

#include "channel/record_layout.h"
#include "files.h"
#include "handler.h"
#include "output/output.h"

// The ways in which a command reads: a number, a record, a list, bytes of the kernel's. Each takes a
// getter of the library and prints what it returned.

namespace vdrctl {

template <auto kRelease>
struct Releaser {
  template <typename Record>
  void operator()(Record* record) const {
    kRelease(record);
  }
};

// What a getter returned, until it is given back through its Release function.
template <typename Record, auto kRelease>
using Owned = std::unique_ptr<Record, Releaser<kRelease>>;

using OwnedBytes = Owned<uint8_t, std::free>;

// For a text that the library wants, and the operator need not give.
inline const char* OrEmpty(const char* text) { return text ? text : ""; }

// `get` takes the address of the record's pointer. What stands there after a failure is not read.
template <auto kRelease, typename Record, typename Get>
int PrintRecord(Output& out, const vdrzax::RecordLayout& layout, Get get) {
  Record* record = nullptr;
  if (get(&record) != 0) return -1;
  const Owned<Record, kRelease> owned(record);
  out.Record(layout, record);
  return 0;
}

template <auto kRelease, typename Get>
int PrintList(Output& out, Get get) {
  RecordList* list = nullptr;
  errno = 0;
  if (get(&list) != 0) return -1;
  // One list is reported as read also when it could not be decoded; errno tells, and the list is
  // gone then.
  if (errno == EBADMSG || errno == ENOMEM) return -1;
  const Owned<RecordList, kRelease> owned(list);
  out.List(list->entries, static_cast<std::size_t>(list->count));
  return 0;
}

// A reply of the kernel's own form in a buffer of `capacity` bytes. How many of them the kernel
// wrote is not told, so the zeros at its end are not shown.
template <typename Get>
int PrintBytes(Output& out, std::size_t capacity, const char* file, Get get) {
  const OwnedBytes bytes(static_cast<uint8_t*>(std::calloc(capacity, 1)));
  if (!bytes) {
    errno = ENOMEM;
    return -1;
  }
  ReplyFile output(file);
  if (get(bytes.get()) != 0) return -1;
  std::size_t length = capacity;
  while (length > 0 && bytes.get()[length - 1] == 0) --length;
  output.Put(out, capacity, {bytes.get(), length});
  return 0;
}

template <typename Get>
int PrintNumber(Output& out, Get get) {
  uint32_t value = 0;
  if (get(&value) != 0) return -1;
  out.Number(value);
  return 0;
}

template <typename Get>
int PrintAddress(Output& out, Get get) {
  uint32_t value = 0;
  if (get(&value) != 0) return -1;
  out.Address(value);
  return 0;
}

// Sends a command that the kernel may answer with 88 bytes. They are asked for only when the
// operator wants them in a file.
template <typename Send>
int SendForAnswer(const char* file, Send send) {
  if (!file) return send(nullptr);
  ReplyFile output(file);
  std::array<uint8_t, 88> answer{};
  if (send(answer.data()) != 0) return -1;
  output.Write(answer);
  return 0;
}

// The handlers of getters that take the parameters of a row in its order, and behind them where to
// store what they read.

template <typename... Types>
struct TypeList {};

template <typename Taken, typename... Rest>
struct SplitLast;
template <typename... Taken, typename Last>
struct SplitLast<TypeList<Taken...>, Last> {
  using Others = TypeList<Taken...>;
};
template <typename... Taken, typename First, typename Second, typename... Rest>
struct SplitLast<TypeList<Taken...>, First, Second, Rest...>
    : SplitLast<TypeList<Taken..., First>, Second, Rest...> {};

template <typename Function>
struct ArgumentsOf;
template <typename... Types>
struct ArgumentsOf<int (*)(Types...)> : SplitLast<TypeList<>, Types...> {};
template <auto kFunction>
using ArgumentsButLast = typename ArgumentsOf<decltype(kFunction)>::Others;

template <auto kGet, auto kRelease, typename... Types>
constexpr Handler MakeList(TypeList<Types...>) {
  return Run<[](Output& out, Types... values) {
    return PrintList<kRelease>(out, [&](RecordList** list) { return kGet(values..., list); });
  }>;
}
template <auto kGet, auto kRelease>
inline constexpr Handler Lists = MakeList<kGet, kRelease>(ArgumentsButLast<kGet>{});

template <typename Record, auto kGet, auto kRelease, const vdrzax::RecordLayout& kLayout,
          typename... Types>
constexpr Handler MakeShow(TypeList<Types...>) {
  return Run<[](Output& out, Types... values) {
    return PrintRecord<kRelease, Record>(out, kLayout,
                                         [&](Record** record) { return kGet(values..., record); });
  }>;
}
template <typename Record, auto kGet, auto kRelease, const vdrzax::RecordLayout& kLayout>
inline constexpr Handler Shows =
    MakeShow<Record, kGet, kRelease, kLayout>(ArgumentsButLast<kGet>{});

template <auto kGet, typename... Types>
constexpr Handler MakeNumber(TypeList<Types...>) {
  return Run<[](Output& out, Types... values) {
    return PrintNumber(out, [&](uint32_t* value) { return kGet(values..., value); });
  }>;
}
template <auto kGet>
inline constexpr Handler ShowsNumber = MakeNumber<kGet>(ArgumentsButLast<kGet>{});

template <auto kGet, typename... Types>
constexpr Handler MakeAddress(TypeList<Types...>) {
  return Run<[](Output& out, Types... values) {
    return PrintAddress(out, [&](uint32_t* value) { return kGet(values..., value); });
  }>;
}
template <auto kGet>
inline constexpr Handler ShowsAddress = MakeAddress<kGet>(ArgumentsButLast<kGet>{});

// The row ends with kOutput.
template <auto kGet, std::size_t kCapacity, typename... Types>
constexpr Handler MakeBytes(TypeList<Types...>) {
  return Run<[](Output& out, Types... values, const char* file) {
    return PrintBytes(out, kCapacity, file, [&](uint8_t* bytes) { return kGet(values..., bytes); });
  }>;
}
template <auto kGet, std::size_t kCapacity>
inline constexpr Handler ShowsBytes = MakeBytes<kGet, kCapacity>(ArgumentsButLast<kGet>{});

// The row ends with kAnswer.
template <auto kSend, typename... Types>
constexpr Handler MakeAnswered(TypeList<Types...>) {
  return Run<[](Types... values, const char* file) {
    return SendForAnswer(file, [&](void* answer) { return kSend(values..., answer); });
  }>;
}
template <auto kSend>
inline constexpr Handler RunAnswered = MakeAnswered<kSend>(ArgumentsButLast<kSend>{});

}  // namespace vdrctl
