#include <array>
#include <cerrno>
#include <span>
#include <utility>

#include "datapath/answers.h"
#include "datapath/caps.h"
#include "datapath/objects.h"
#include "datapath/services_handlers.h"
#include "services/vm_public_ip_record.h"

namespace vdrsim {

namespace {

using vdrzax::kVMPublicIPEntry;

using Addresses = Table<uint32_t, PublicAddress>;

constexpr uint32_t kItemLength = vdrzax::kVMPublicIPItem.size;
constexpr uint32_t kEmptyLength = kVMPublicIPEntry.size - kMostPublicItems * kItemLength;
// What the table's reply has room for behind the count.
static_assert(kItemLength == kPublicItemBytes && kEmptyLength == kPublicAddressBytes);
static_assert(kMostPublicAddressBytes == 8536068 - sizeof(uint32_t));

// The layout of what comes before the items, where the protocol leaves it to the datapath.
constexpr vdrzax::Field kHeaderRows[] = {
    vdrzax::U32("a", 0),
    vdrzax::Mac("c", 4),
    vdrzax::U32("d", 10),
};
constexpr vdrzax::RecordLayout kHeader{"PublicAddressHeader", 14, kHeaderRows};
static_assert(Tiles(kHeader));

uint32_t LengthOf(size_t entries, size_t items) {
  return static_cast<uint32_t>(entries * kEmptyLength + items * kItemLength);
}

uint32_t LengthOf(const PublicAddress& address) { return LengthOf(1, address.items.size()); }

// `place` is as long as the entry.
void Show(std::span<std::byte> place, uint32_t a, const PublicAddress& address) {
  std::array<std::byte, kHeader.size> header{};
  RecordWriter<kHeader>(header).Number("a", a).Mac("c", address.c).Number("d", address.d);
  const RecordWriter<kVMPublicIPEntry> record(place);
  record.Bytes("entryHeader", header);
  for (const uint32_t item : address.items) record.Append<"items">().Number("item", item);
}

// The entries one after another, each as long as it has items.
class PackedAddresses {
 public:
  explicit PackedAddresses(const PublicAddresses& addresses) : addresses_(addresses) {}

  uint32_t Prepare() {
    next_ = addresses_.entries.begin();
    return LengthOf(addresses_.entries.size(), addresses_.itemCount);
  }
  uint32_t Count() const { return static_cast<uint32_t>(addresses_.entries.size()); }

  size_t Write(std::span<std::byte> room) {
    if (next_ == addresses_.entries.end()) return 0;
    const uint32_t length = LengthOf(next_->second);
    if (room.size() < length) return 0;
    Show(room.first(length), next_->first, next_->second);
    ++next_;
    return length;
  }

 private:
  PublicAddresses addresses_;
  decltype(std::declval<const Addresses&>().begin()) next_{};
};

// Whether one item more, of an entry that is there or not, still fits.
bool HasRoom(const PublicAddresses& addresses, bool hasEntry) {
  const size_t entries = addresses.entries.size() + (hasEntry ? 0 : 1);
  return LengthOf(entries, addresses.itemCount + 1) <= kMostPublicAddressBytes;
}

}  // namespace

int Handle(State& state, const Input<"AddVMPublicIP">& input) {
  PublicAddresses& addresses = state.publicAddresses;
  const uint32_t item = input.Word("b");
  const PublicAddress* known = std::as_const(addresses).entries.Find(input.Word("a"));
  const bool isNew = !known || !known->items.contains(item);
  if (known && isNew && known->items.size() == kMostPublicItems) return ENOSPC;
  if (isNew && !HasRoom(addresses, known != nullptr)) return ENOSPC;
  const int error =
      addresses.entries.Set(input.Word("a"), kMostPublicAddressBytes, [&](PublicAddress& address) {
        address.items.insert(item);
        address.c = input.Mac("c");
        address.d = input.Word("d");
        return 0;
      });
  addresses.itemCount += isNew ? 1 : 0;
  return error;
}

int Handle(State& state, const Input<"DelVMPublicIP">& input) {
  PublicAddresses& addresses = state.publicAddresses;
  return DeleteWithin(addresses.entries, input.Word("a"), [&](PublicAddress& address) {
    const size_t deleted = address.items.erase(input.Word("b"));
    addresses.itemCount -= deleted;
    return deleted == 0 ? ENOENT : 0;
  });
}

int Handle(State& state, const Input<"DelVMPublicIPEntry">& input) {
  PublicAddresses& addresses = state.publicAddresses;
  return DeleteWithin(addresses.entries, input.Word("key"), [&](PublicAddress& address) {
    addresses.itemCount -= address.items.size();
    address.items.clear();
    return 0;
  });
}

int Handle(State& state, const Input<"DelAllVMPublicIPEntries">&) {
  state.publicAddresses = {};
  return 0;
}

Answer Handle(const State& state, const Input<"GetVMPublicIPEntry">& input) {
  const uint32_t key = input.Word("key");
  return OnKey(state.publicAddresses.entries, key, [&](const PublicAddress& address) {
    Answer answer;
    Show(answer.reply.Fill(LengthOf(address)), key, address);
    return answer;
  });
}

Answer Handle(const State& state, const Input<"GetVMPublicIPTable">&) {
  return StreamAnswer(CountFirst(PackedAddresses(state.publicAddresses)));
}

}  // namespace vdrsim
