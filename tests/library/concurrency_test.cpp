#include <fmt/format.h>
#include <gtest/gtest.h>
#include <vdrzax.h>

#include <barrier>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <map>
#include <thread>
#include <vector>

#include "support/contract.h"

// Threads that use all families at once. The device's answer is made of the code and the whole
// input of a command, and each thread has arguments of its own: a block, a reply or an errno that
// came to the wrong thread would not fit what the thread expects.

namespace {

using contract::kUntouched;
using wire::Block;

constexpr int kThreads = 16;
constexpr int kRounds = 20;

// What the device answers to a code.
struct Answer {
  std::size_t record;
  bool isList = false;
  getters::Count count = {};  // of which there is the most in each record
};

std::map<unsigned long, Answer> MakeAnswers() {
  std::map<unsigned long, Answer> answers;
  for (const getters::Family* family : getters::Families()) {
    for (const auto& list : family->lists) answers[list.code] = {list.size, true, list.count};
    for (const auto& record : family->records) {
      answers[record.code] = {record.size, false, record.count};
    }
    for (const auto& raw : family->raws) answers[raw.code] = {raw.size};
    for (const auto& other : family->others) answers[other.code] = {other.size};
  }
  // The number of IPv6 routes, statistics of all queues, a table of 3 entries, an entry of 2 items.
  answers[115] = {4, false, {0, 4, 1}};
  answers[153].count = {4, 4, 16};
  answers[164] = {4 + 3 * getters::Other("VDRZAX_GetE2ITable").size, false, {0, 4, 3}};
  answers[170] = {18 + 2 * 4, false, {14, 4, 2}};
  return answers;
}

const std::map<unsigned long, Answer>& Answers() {
  static const auto answers = MakeAnswers();
  return answers;
}

// A word without a zero byte that no other command has, as good as certainly.
uint32_t TagOf(unsigned long code, const fake::Bytes& input) {
  uint64_t hash = 0xCBF29CE484222325U ^ code;
  for (const uint8_t byte : input) hash = (hash ^ byte) * 0x100000001B3U;
  return static_cast<uint32_t>(hash >> 32) | 0x01010101U;
}

uint32_t TagOf(unsigned long code, const Block& block) { return TagOf(code, block.bytes()); }

int32_t CountOf(uint32_t tag) { return 1 + static_cast<int32_t>((tag >> 9) % 3); }
int ErrorOf(uint32_t tag) { return (tag >> 9) % 3 == 0 ? 0 : 1000 + static_cast<int>(tag >> 16); }

// Records that repeat the tag, or the errno of a command without output.
fake::Reply AnswerOf(const fake::Command& command) {
  const uint32_t tag = TagOf(command.request, command.input);
  if (command.outLength == 0) {
    return ErrorOf(tag) == 0 ? fake::Reply{} : fake::Failure(ErrorOf(tag));
  }
  const Answer& answer = Answers().at(command.request);
  fake::Bytes record(answer.record);
  for (std::size_t index = 0; index < record.size(); ++index) {
    record[index] = static_cast<uint8_t>(tag >> (8 * (index % 4)));
  }
  std::memcpy(&record[answer.count.offset], &answer.count.most, answer.count.width);
  fake::Reply reply;
  for (int32_t left = answer.isList ? CountOf(tag) : 1; left > 0; --left) {
    reply.bytes.insert(reply.bytes.end(), record.begin(), record.end());
  }
  return reply;
}

uint32_t WordAt(const void* object, std::size_t offset) {
  uint32_t word;
  std::memcpy(&word, static_cast<const uint8_t*>(object) + offset, 4);
  return word;
}

// One thread's arguments and expectations.
class Client {
 public:
  explicit Client(int number)
      : name_(fmt::format("edge-{}", number)),
        other_(fmt::format("uplink-{}", number)),
        key_(0x01020304U * static_cast<uint32_t>(number + 1)) {}

  void Round() {
    Instances();
    Lifs();
    Routes();
    Policies();
    Bridges();
    Mappings();
    Multicast();
    Services();
    ++key_;
  }

 private:
  const char* Name() const { return name_.c_str(); }
  const char* Other() const { return other_.c_str(); }
  Block Named() const { return Block().Text(0, name_); }

  static void ExpectSucceeds(const contract::Call& call) {
    const contract::Outcome outcome = contract::Run(call);
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.error, kUntouched);
  }

  static void ExpectTold(const contract::Call& call, uint32_t tag) {
    const contract::Outcome outcome = contract::Run(call);
    EXPECT_EQ(outcome.result, ErrorOf(tag) == 0 ? 0 : -1);
    EXPECT_EQ(outcome.error, ErrorOf(tag) == 0 ? kUntouched : ErrorOf(tag));
  }

  // The tag stands at `offset` of the record.
  template <typename Record>
  static void ExpectRecord(const std::function<int(Record**)>& call, void (*release)(Record*),
                           uint32_t tag, std::size_t offset) {
    Record* record = nullptr;
    ExpectSucceeds([&] { return call(&record); });
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(WordAt(record, offset), tag);
    release(record);
  }

  static void ExpectList(const char* name, const std::function<int(RecordList**)>& call,
                         uint32_t tag, std::size_t offset) {
    const getters::ListGetter& getter = getters::List(name);
    RecordList* list = nullptr;
    ExpectSucceeds([&] { return call(&list); });
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->count, CountOf(tag));
    const auto last = static_cast<std::size_t>(list->count - 1) * getter.size;
    EXPECT_EQ(WordAt(list->entries, last + offset), tag);
    getter.release(list);
  }

  template <typename Call>
  static void ExpectWord(Call call, uint32_t tag) {
    uint32_t word = 0;
    ExpectSucceeds([&] { return call(&word); });
    EXPECT_EQ(word, tag);
  }

  void Instances() const {
    ExpectTold([&] { return VDRZAX_SetVdrInstance(Name(), key_, "text", 4, 1); },
               TagOf(2, Named().U32(256, key_).Text(332, "text").U32(352, 4).U8(368, 1)));
    ExpectRecord<InstanceRecord>([&](auto** out) { return VDRZAX_GetInstance(Name(), out); },
                                 VDRZAX_ReleaseInstance, TagOf(1, Named()), 64);
    ExpectList(
        "VDRZAX_GetInstances", [&](auto** out) { return VDRZAX_GetInstances(Name(), 1, out); },
        TagOf(0, Named().U8(368, 1)), 64);
    uint8_t connection[152];
    ExpectSucceeds([&] { return VDRZAX_GetConnection(Name(), connection); });
    EXPECT_EQ(WordAt(connection, 148), TagOf(18, Block().Text(256, name_)));
  }

  void Lifs() const {
    ExpectTold([&] { return VDRZAX_SetLifIp(Name(), Other(), key_, 24); },
               TagOf(26, Named().Text(384, other_).U32(512, key_).U32(516, 24)));
    ExpectRecord<LifRecord>([&](auto** out) { return VDRZAX_GetLif(Name(), Other(), out); },
                            VDRZAX_ReleaseLif, TagOf(22, Named().Text(384, other_)), 132);
    ExpectList(
        "VDRZAX_GetLifs", [&](auto** out) { return VDRZAX_GetLifs(Name(), out); },
        TagOf(21, Named()), 132);
  }

  void Routes() const {
    ExpectTold([&] { return VDRZAX_DelArp(key_, Other(), Name()); },
               TagOf(39, Named().U32(256, key_).Text(384, other_)));
    ExpectRecord<RouteRecord>(
        [&](auto** out) { return VDRZAX_GetResolveRoute(Name(), key_, 2, 3, out); },
        VDRZAX_ReleaseRoute, TagOf(37, Named().U32(256, key_).U32(260, 2).U32(264, 3)), 8);
    ExpectList(
        "VDRZAX_GetRoutes", [&](auto** out) { return VDRZAX_GetRoutes(Name(), out); },
        TagOf(36, Named()), 8);
    uint32_t count = 0;
    ExpectRecord<void>([&](auto** out) { return VDRZAX_GetRoutesv6(Name(), out, &count); },
                       std::free, TagOf(114, Named()), 772);
    EXPECT_EQ(count, 1u);
  }

  void Policies() const {
    uint8_t result[88];
    ExpectSucceeds([&] { return VDRZAX_SetPolicy(key_, 1, 2, 3, result); });
    EXPECT_EQ(WordAt(result, 84),
              TagOf(120, Block().U32(256, 1).U32(260, 2).U32(404, 3).U32(412, key_)));
    ExpectList(
        "VDRZAX_GetPolicy", [&](auto** out) { return VDRZAX_GetPolicy(key_, out); },
        TagOf(119, Block().U32(412, key_)), 16);
    ExpectWord([&](uint32_t* out) { return VDRZAX_GetPolicyCount(key_, out); },
               TagOf(122, Block().U32(412, key_)));
    ExpectRecord<LifPolicyTableRef>(
        [&](auto** out) { return VDRZAX_GetLifPolicyTableRef(Name(), Other(), out); },
        VDRZAX_ReleaseLifPolicyTableRef, TagOf(146, Named().Text(384, other_)), 540);
  }

  void Bridges() const {
    ExpectTold([&] { return VDRZAX_BridgeAdd(Name(), key_); }, TagOf(53, Named().U32(256, key_)));
    ExpectRecord<BridgeInstanceRecord>(
        [&](auto** out) { return VDRZAX_GetBridgeInstance(Name(), out); },
        VDRZAX_ReleaseBridgeInstance, TagOf(62, Named()), 80);
    ExpectList(
        "VDRZAX_GetBridgeFdbEntries",
        [&](auto** out) { return VDRZAX_GetBridgeFdbEntries(Name(), 7, key_, out); },
        TagOf(65, Named().U32(260, 7).U32(264, key_).U32(268, 1)), 12);
  }

  void Mappings() const {
    const MacValue mac{{2, 0, 0, 0, 0, 1}};
    ExpectTold([&] { return VDRZAX_AddE2I(key_, 2, &mac, 4, 5); },
               TagOf(161, Block()
                              .U32(256, key_)
                              .U32(260, 2)
                              .Raw(264, {2, 0, 0, 0, 0, 1})
                              .U32(272, 4)
                              .U32(276, 5)));
    ExpectRecord<E2IEntry>([&](auto** out) { return VDRZAX_GetE2IEntry(key_, out); },
                           [](E2IEntry* entry) { std::free(entry); },
                           TagOf(165, Block().U32(256, key_)), 20);
    E2ITable* table = nullptr;
    ExpectSucceeds([&] { return VDRZAX_GetE2ITable(&table); });
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->count, 3);
    EXPECT_EQ(WordAt(table->entries, 72), TagOf(164, Block()));
    VDRZAX_ReleaseE2ITable(table);
  }

  void Multicast() const {
    ExpectTold([&] { return VDRZAX_AddMRoutingMRouter(Name(), key_); },
               TagOf(137, Named().U32(256, key_)));
    ExpectRecord<MRoutingDomain>([&](auto** out) { return VDRZAX_GetMRoutingDomain(Name(), out); },
                                 VDRZAX_ReleaseMRoutingDomainData, TagOf(130, Named()), 144);
    ExpectList(
        "VDRZAX_GetMRoutingLocalRcvrs",
        [&](auto** out) { return VDRZAX_GetMRoutingLocalRcvrs(Name(), key_, out); },
        TagOf(128, Named().U32(256, key_)), 64);
    ExpectWord([&](uint32_t* out) { return VDRZAX_GetMRoutingReplicationIP(Name(), key_, out); },
               TagOf(136, Named().U32(256, key_)));
  }

  void Services() const {
    ExpectTold([&] { return VDRZAX_DelVMPublicIP(key_, 2); },
               TagOf(167, Block().U32(256, key_).U32(272, 2)));
    ExpectRecord<SoftRssStats>([&](auto** out) { return VDRZAX_SoftRSSGetStats(Name(), out); },
                               [](SoftRssStats* stats) { std::free(stats); },
                               TagOf(153, Block().Text(256, name_)), 68);
    ExpectRecord<VMPublicIPEntry>([&](auto** out) { return VDRZAX_GetVMPublicIPEntry(key_, out); },
                                  VDRZAX_ReleaseVMPublicIPEntry, TagOf(170, Block().U32(256, key_)),
                                  20);
    ExpectWord(VDRZAX_GetFullSyncSaveStatus, TagOf(124, Block()));
  }

  std::string name_;
  std::string other_;
  uint32_t key_;
};

TEST(Library, ThreadsThatUseAllFamiliesAtOnceGetTheirOwnAnswers) {
  fake::Device device;
  device.answer = AnswerOf;
  std::barrier together(kThreads);
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([&together, number] {
      Client client(number);
      together.arrive_and_wait();
      for (int round = 0; round < kRounds; ++round) client.Round();
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(device.Live(), std::vector<std::size_t>{});
  // 29 functions, one of which sends two commands.
  EXPECT_EQ(device.commands.size(), static_cast<std::size_t>(kThreads) * kRounds * 30);
}

}  // namespace
