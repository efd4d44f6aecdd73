#include "envelope.h"

#include <cerrno>
#include <cstring>
#include <span>

namespace vdrsim {

namespace {

constexpr size_t kInputLength = 0;
constexpr size_t kInput = 4;
constexpr size_t kReplyLength = 12;
constexpr size_t kReply = 16;

template <typename Number>
Number Decode(std::span<const std::byte> bytes, size_t offset) {
  Number value{};
  std::memcpy(&value, bytes.subspan(offset, sizeof value).data(), sizeof value);
  return value;
}

}  // namespace

uint32_t Envelope::inputLength() const { return Decode<uint32_t>(bytes_, kInputLength); }

uint64_t Envelope::input() const { return Decode<uint64_t>(bytes_, kInput); }

uint32_t Envelope::capacity() const { return Decode<uint32_t>(bytes_, kReplyLength); }

uint64_t Envelope::LengthAddress() const { return address_ + kReplyLength; }

uint64_t Envelope::ReplyAddress() const { return Decode<uint64_t>(bytes_, kReply); }

bool Envelope::Takes(uint32_t length) {
  const auto capacity = std::span(bytes_).subspan(kReplyLength, sizeof(uint32_t));
  takesLength_ = memory_.Write({{LengthAddress(), capacity}});
  return takesLength_ && memory_.IsWritable(ReplyAddress(), length);
}

int Envelope::Deliver(Answer& answer) {
  if (answer.reply.size() > capacity()) return EINVAL;
  const uint32_t claimed = answer.claimed.value_or(answer.reply.size());
  // What a command that has had its effect leaves as it is was written when it was judged.
  if (takesLength_ && answer.reply.size() == 0 && claimed == capacity()) return 0;
  return WriteReply(answer.reply, claimed) ? 0 : EFAULT;
}

// The length goes with the last piece, so the usual reply is one write.
bool Envelope::WriteReply(Reply& reply, uint32_t claimed) {
  const auto length = std::as_bytes(std::span(&claimed, 1));
  uint64_t address = ReplyAddress();
  uint64_t left = reply.size();
  for (auto piece = reply.Next(); left > 0; piece = reply.Next()) {
    if (piece.empty()) return false;
    left -= piece.size();
    if (left == 0) return memory_.Write({{address, piece}, {LengthAddress(), length}});
    if (!memory_.Write({{address, piece}})) return false;
    address += piece.size();
  }
  return memory_.Write({{LengthAddress(), length}});
}

}  // namespace vdrsim
