#include <fcntl.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vdrzax/channel.h>

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "batch/line.h"
#include "command_line.h"
#include "command_words.h"
#include "output/output.h"

// Which bytes each verb sends: the library calls the system through these, which stand before those
// of the C library.
namespace {

struct Sent {
  unsigned long code = 0;
  std::vector<uint8_t> input;
};
std::vector<Sent> sent;
constexpr int kDevice = 1'000'000;

// What the kernel does with a command beside taking its input.
enum class Answer { Zeros, Nothing, Failure };
Answer answer = Answer::Zeros;

// Tables that begin with their count have one entry: of an empty one the library loses an allocation.
uint32_t CountAtFront(unsigned long code) { return code == 129 || code == 164 ? 1 : 0; }

// A record is there, and a list is empty.
uint32_t LengthOfReply(unsigned long code, uint32_t room) {
  if (code == 129) return 4 + 68;
  if (code == 164) return 4 + 26;
  if (code == 171) return 4;
  return room <= 4096 ? room : 0;
}

}  // namespace

// What the library loses on purpose when a command fails, which docs/guarantees.md lists.
extern "C" const char*
__lsan_default_suppressions();  // NOLINT(bugprone-reserved-identifier,cert-*)
extern "C" const char*
__lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier,cert-*)
  return "leak:VDRZAX_GetBridge\nleak:VDRZAX_GetMRouting\nleak:VDRZAX_GetVMPublicIP\n";
}

extern "C" int open64(const char* path, int flags, ...) {
  if (std::string_view(path).starts_with("/qorv/")) return kDevice;
  va_list rest;
  va_start(rest, flags);
  const int mode = va_arg(rest, int);
  va_end(rest);
  return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

extern "C" int ioctl(int descriptor, unsigned long request, ...) {
  va_list rest;
  va_start(rest, request);
  void* argument = va_arg(rest, void*);
  va_end(rest);
  if (descriptor != kDevice)
    return static_cast<int>(syscall(SYS_ioctl, descriptor, request, argument));
  IoctlEnvelope envelope;
  std::memcpy(&envelope, argument, sizeof envelope);
  const auto* input = static_cast<const uint8_t*>(envelope.inBuffer);
  sent.push_back({request, input ? std::vector<uint8_t>(input, input + envelope.inLength)
                                 : std::vector<uint8_t>{}});
  if (answer == Answer::Failure) {
    errno = EDOM;
    return -1;
  }
  if (answer == Answer::Nothing) {
    std::memset(static_cast<char*>(argument) + 12, 0, 4);
    return 0;
  }
  if (envelope.outBuffer) std::memset(envelope.outBuffer, 0, std::min(envelope.outLength, 4096U));
  if (const uint32_t count = CountAtFront(request)) {
    std::memcpy(envelope.outBuffer, &count, sizeof count);
  }
  const uint32_t length = LengthOfReply(request, envelope.outLength);
  std::memcpy(static_cast<char*>(argument) + 12, &length, sizeof length);
  return 0;
}

extern "C" int close(int descriptor) {
  return descriptor == kDevice ? 0 : static_cast<int>(syscall(SYS_close, descriptor));
}

namespace {

// The 968 bytes of a block, by literal offsets.
class Block {
 public:
  Block& Text(std::size_t offset, std::string_view text) {
    std::memcpy(&bytes_[offset], text.data(), text.size());
    return *this;
  }
  Block& U8(std::size_t offset, uint64_t value) { return Number(offset, value, 1); }
  Block& U16(std::size_t offset, uint64_t value) { return Number(offset, value, 2); }
  Block& U32(std::size_t offset, uint64_t value) { return Number(offset, value, 4); }
  Block& U64(std::size_t offset, uint64_t value) { return Number(offset, value, 8); }
  // Bytes as they stand: addresses in network byte order.
  Block& Raw(std::size_t offset, std::initializer_list<uint8_t> bytes) {
    std::copy(bytes.begin(), bytes.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
    return *this;
  }
  const std::vector<uint8_t>& bytes() const { return bytes_; }

 private:
  Block& Number(std::size_t offset, uint64_t value, std::size_t width) {
    std::memcpy(&bytes_[offset], &value, width);
    return *this;
  }

  std::vector<uint8_t> bytes_ = std::vector<uint8_t>(968);
};

std::vector<uint8_t> Bare(uint32_t value) {
  std::vector<uint8_t> bytes(4);
  std::memcpy(bytes.data(), &value, 4);
  return bytes;
}

struct Verb {
  const char* line;
  unsigned long code;
  std::vector<uint8_t> input;
};

Block Named(std::string_view instance) { return Block().Text(0, instance); }
Block OnLif() { return Named("edge-1").Text(384, "uplink"); }

const std::vector<uint8_t> kNothing;

std::vector<Verb> InstanceVerbs() {
  return {
      {"instance list", 0, Block().bytes()},
      {"instance list edge-1", 0, Named("edge-1").U8(368, 1).bytes()},
      {"instance show edge-1", 1, Named("edge-1").bytes()},
      {"instance set edge-1 --second 0x01020304 --text blue --fourth 0x05060708 --flag 9", 2,
       Named("edge-1")
           .U32(256, 0x01020304)
           .Text(332, "blue")
           .U32(352, 0x05060708)
           .U8(368, 9)
           .bytes()},
      {"instance delete edge-1", 3, Named("edge-1").bytes()},
      {"instance tune edge-1 mtu 9000", 4, Named("edge-1").Text(260, "mtu").U32(324, 9000).bytes()},
      {"control-plane stats show edge-1", 5, Named("edge-1").bytes()},
      {"control-plane stats reset edge-1", 6, Named("edge-1").bytes()},
      {"control-plane activate 7", 7, Bare(7)},
      {"control-plane set-address edge-1 10.1.2.3", 8,
       Named("edge-1").Raw(328, {10, 1, 2, 3}).bytes()},
      {"control-plane sync-state show edge-1", 87, Named("edge-1").bytes()},
      {"control-plane sync-state set edge-1 0x01020304", 88,
       Named("edge-1").U32(256, 0x01020304).bytes()},
      {"datapath stats show", 43, Block().bytes()},
      {"datapath stats reset", 44, Block().bytes()},
      {"connection plumb c1 --second two --fourth four --fifth five --sixth six --seventh 7", 15,
       Block()
           .Text(256, "c1")
           .Text(320, "two")
           .Text(336, "four")
           .Text(354, "five")
           .Text(386, "six")
           .U32(644, 7)
           .bytes()},
      {"connection unplumb c1", 16, Block().Text(256, "c1").bytes()},
      {"connection list", 17, Block().bytes()},
      {"connection show c1", 18, Block().Text(256, "c1").bytes()},
      {"connection mac c1", 149, Block().Text(256, "c1").bytes()},
      {"connection deletion-pending", 85, kNothing},
      {"log-level get", 9, kNothing},
      {"log-level set 3", 10, Bare(3)},
      {"extended-log-level get", 11, kNothing},
      {"extended-log-level set 4", 12, Bare(4)},
      {"stats-level get", 13, kNothing},
      {"stats-level set 5", 14, Bare(5)},
      {"tx-dispatch-queue-size get", 159, kNothing},
      {"tx-dispatch-queue-size set 6", 160, Bare(6)},
      {"pre-unload", 42, kNothing},
  };
}

std::vector<Verb> LifVerbs() {
  return {
      {"lif list edge-1", 21, Named("edge-1").bytes()},
      {"lif show edge-1 uplink", 22, OnLif().bytes()},
      {"lif set edge-1 uplink --aux-name aux --a3 3 --a4 4 --a5 5 --a6 6 --a7 7 --flags 0x1fffffff "
       "--mode 3 --mac 2:0:0:0:0:9",
       19,
       OnLif()
           .Text(256, "aux")
           .U32(512, 3)
           .U32(516, 4)
           .U32(520, 7)
           .Raw(524, {2, 0, 0, 0, 0, 9})
           .U32(544, 5)
           .U32(548, 6)
           .U32(552, 0x1fffffff)
           .U8(788, 3)
           .bytes()},
      {"lif set edge-1 uplink --mode 1", 19, OnLif().U8(788, 1).bytes()},
      {"lif set edge-1 uplink --mode 2", 19, OnLif().U8(788, 2).bytes()},
      {"lif set edge-1 uplink", 19, OnLif().bytes()},
      {"lif delete edge-1 uplink --aux-name aux", 20, OnLif().Text(256, "aux").bytes()},
      {"lif enable edge-1 uplink", 30, OnLif().bytes()},
      {"lif disable edge-1 uplink", 31, OnLif().bytes()},
      {"lif stats show edge-1 uplink", 23, OnLif().bytes()},
      {"lif stats show edge-1 uplink --cached", 23, OnLif().U32(552, 1).bytes()},
      {"lif stats reset edge-1 uplink", 24, OnLif().bytes()},
      {"lif address set edge-1 uplink 10.1.2.3/20", 26,
       OnLif().Raw(512, {10, 1, 2, 3}).Raw(516, {255, 255, 240, 0}).bytes()},
      {"lif address delete edge-1 uplink 10.1.2.3/255.0.0.0", 27,
       OnLif().Raw(512, {10, 1, 2, 3}).Raw(516, {255, 0, 0, 0}).bytes()},
      {"lif address6 set edge-1 uplink 2001:db8::1/64", 108,
       OnLif().Raw(256, {0x20, 1, 0x0d, 0xb8}).U8(271, 1).Text(276, "uplink").U8(340, 64).bytes()},
      {"lif address6 delete edge-1 uplink ::2/0", 109,
       OnLif().U8(271, 2).Text(276, "uplink").bytes()},
      {"lif designated-address set edge-1 uplink 10.1.2.3", 25,
       OnLif().Raw(520, {10, 1, 2, 3}).bytes()},
      {"lif dhcp-relay clear edge-1 uplink", 33, OnLif().bytes()},
      {"lif vxlan enable edge-1 uplink", 28, OnLif().bytes()},
      {"lif vxlan disable edge-1 uplink", 29, OnLif().bytes()},
      {"lif vxlan set-multicast edge-1 uplink 224.1.2.3", 32,
       OnLif().Raw(520, {224, 1, 2, 3}).bytes()},
      {"lif mtu6 set edge-1 uplink 1500", 152, OnLif().U32(256, 1500).bytes()},
      {"lif multicast enable edge-1 uplink", 125, OnLif().bytes()},
      {"lif multicast disable edge-1 uplink", 126, OnLif().bytes()},
      {"lif external-vlan list 4094", 172, Block().U32(260, 4094).bytes()},
  };
}

std::vector<Verb> RouteVerbs() {
  const auto route = [] {
    return Named("edge-1")
        .Raw(256, {10, 1, 0, 0})
        .Raw(260, {255, 255, 0, 0})
        .Raw(268, {10, 9, 8, 7})
        .Text(276, "uplink");
  };
  const auto route6 = [] {
    return Named("edge-1")
        .Raw(260, {0x20, 1, 0x0d, 0xb8})
        .U8(276, 32)
        .Raw(293, {0xfe, 0x80})
        .U8(308, 1)
        .Text(309, "uplink");
  };
  return {
      {"route list edge-1", 36, Named("edge-1").bytes()},
      {"route selection edge-1", 174, Named("edge-1").bytes()},
      {"route resolve edge-1 10.1.0.0/16 --third 1.2.3.4", 37,
       Named("edge-1")
           .Raw(256, {10, 1, 0, 0})
           .Raw(260, {255, 255, 0, 0})
           .Raw(264, {1, 2, 3, 4})
           .bytes()},
      {"route set edge-1 10.1.0.0/16 --gateway 10.9.8.7 --interface uplink --flags 5", 34,
       route().U32(272, 5).bytes()},
      {"route set edge-1 0.0.0.0/0", 34, Named("edge-1").bytes()},
      {"route delete edge-1 10.1.0.0/16 --gateway 10.9.8.7 --interface uplink", 35,
       route().bytes()},
      {"route6 list edge-1", 114, Named("edge-1").bytes()},
      {"route6 set edge-1 2001:db8::/32 --gateway fe80::1 --interface uplink", 110,
       route6().bytes()},
      {"route6 delete edge-1 2001:db8::/32 --gateway fe80::1 --interface uplink", 111,
       route6().bytes()},
      {"demux-route list", 173, Block().bytes()},
      {"path-mtu6 clear", 151, kNothing},
      {"flush 0x01020304 --selector1 1 --selector2 2 --selector3 3 --name tab --value 5", 80,
       Block()
           .U32(256, 0x01020304)
           .U8(260, 3)
           .U8(261, 1)
           .U8(262, 2)
           .Text(263, "tab")
           .U32(328, 5)
           .bytes()},
      {"arp list edge-1", 40, Named("edge-1").bytes()},
      {"arp list edge-1 --interface uplink", 40, OnLif().bytes()},
      {"arp set edge-1 uplink 10.1.2.3 02-00-00-00-00-0A", 38,
       OnLif().Raw(256, {10, 1, 2, 3}).Text(524, "02:00:00:00:00:0a").bytes()},
      {"arp delete edge-1 uplink 10.1.2.3", 39, OnLif().Raw(256, {10, 1, 2, 3}).bytes()},
      {"arp clear edge-1 --interface uplink", 41, OnLif().bytes()},
      {"proxy-arp list edge-1 --interface uplink", 40, OnLif().U8(917, 1).bytes()},
      {"proxy-arp set edge-1 uplink 10.1.2.3", 38,
       OnLif().Raw(256, {10, 1, 2, 3}).U8(917, 1).bytes()},
      {"proxy-arp delete edge-1 uplink 10.1.2.3", 39,
       OnLif().Raw(256, {10, 1, 2, 3}).U8(917, 1).bytes()},
      {"neighbour6 list edge-1 --interface uplink", 116, OnLif().bytes()},
      {"neighbour6 set edge-1 uplink fe80::2 2:0:0:0:0:a", 112,
       Named("edge-1")
           .Text(256, "uplink")
           .Raw(320, {0xfe, 0x80})
           .U8(335, 2)
           .Text(336, "02:00:00:00:00:0a")
           .bytes()},
      {"neighbour6 delete edge-1 uplink fe80::2", 113,
       Named("edge-1").Text(256, "uplink").Raw(320, {0xfe, 0x80}).U8(335, 2).bytes()},
      {"neighbour6 clear edge-1 --interface uplink", 117, OnLif().bytes()},
      {"proxy-neighbour6 set edge-1 uplink fe80::2", 112,
       Named("edge-1").Text(256, "uplink").Raw(320, {0xfe, 0x80}).U8(335, 2).U8(917, 1).bytes()},
      {"proxy-neighbour6 delete edge-1 uplink fe80::2", 113,
       Named("edge-1").Text(256, "uplink").Raw(320, {0xfe, 0x80}).U8(335, 2).U8(917, 1).bytes()},
  };
}

std::vector<Verb> PolicyVerbs() {
  const auto lifPolicy = [] {
    return Named("edge-1")
        .Raw(256, {10, 1, 0, 0})
        .Raw(260, {255, 255, 0, 0})
        .Raw(268, {10, 9, 8, 7})
        .U32(272, 6)
        .Text(276, "downlink")
        .Text(340, "uplink")
        .U32(408, 4);
  };
  return {
      {"policy list 7", 119, Block().U32(412, 7).bytes()},
      {"policy count 7", 122, Block().U32(412, 7).bytes()},
      {"policy set 7 --first 1 --second 2 --third 3", 120,
       Block().U32(256, 1).U32(260, 2).U32(404, 3).U32(412, 7).bytes()},
      {"policy delete 7 --first 1 --second 2", 121,
       Block().U32(256, 1).U32(260, 2).U32(412, 7).bytes()},
      {"policy-table list", 143, Block().bytes()},
      {"policy-table set 7 tab", 144, Block().U32(412, 7).Text(416, "tab").bytes()},
      {"policy-table delete 7", 145, Block().U32(412, 7).bytes()},
      {"lif-policy list edge-1 4 --lif uplink", 140,
       Named("edge-1").Text(340, "uplink").U32(408, 4).bytes()},
      {"lif-policy set edge-1 4 10.1.0.0/16 --lif uplink --gateway 10.9.8.7 --interface downlink "
       "--flags 6",
       141, lifPolicy().bytes()},
      {"lif-policy delete edge-1 4 10.1.0.0/16 --lif uplink --gateway 10.9.8.7 --interface "
       "downlink "
       "--flags 6",
       142, lifPolicy().bytes()},
      {"lif-policy-table show edge-1 uplink", 146, OnLif().bytes()},
      {"lif-policy-table set edge-1 uplink 1:2:3,4:5:0xffffffffffffffff", 147,
       OnLif()
           .U16(480, 2)
           .U64(484, 1)
           .U64(492, 2)
           .U64(500, 3)
           .U64(508, 4)
           .U64(516, 5)
           .U64(524, UINT64_MAX)
           .bytes()},
      {"lif-policy-table delete edge-1 uplink", 148, OnLif().bytes()},
  };
}

std::vector<Verb> BridgeVerbs() {
  const auto marked = [] {
    return OnLif().Text(256, "second").U32(544, 1).U32(548, 2).U32(520, 3);
  };
  return {
      {"bridge list", 61, Block().bytes()},
      {"bridge show edge-1", 62, Named("edge-1").bytes()},
      {"bridge create edge-1 5000", 53, Named("edge-1").U32(256, 5000).bytes()},
      {"bridge delete edge-1 5000", 54, Named("edge-1").U32(256, 5000).bytes()},
      {"bridge enable edge-1 200", 55, Named("edge-1").U8(256, 200).bytes()},
      {"bridge disable edge-1 200", 56, Named("edge-1").U8(256, 200).bytes()},
      {"bridge set-replication-mode edge-1 2", 49, Named("edge-1").U32(300, 2).bytes()},
      {"bridge set-ha-state edge-1 3", 118, Named("edge-1").U32(256, 3).bytes()},
      {"bridge configure edge-1 55 6", 55, Named("edge-1").U32(296, 6).bytes()},
      {"bridge network list br", 63, Named("br").bytes()},
      {"bridge port list br 7 --value 8", 64,
       Named("br").U32(260, 7).U32(264, 8).U32(268, 1).bytes()},
      {"fdb list edge-1 7 8", 65, Named("edge-1").U32(260, 7).U32(264, 8).U32(268, 1).bytes()},
      {"fdb set edge-1 70000 8 2:0:0:0:0:a --value 9 --flag 3", 66,
       Named("edge-1")
           .U32(260, 70000)
           .U32(264, 8)
           .U32(268, 1)
           .U32(272, 9)
           .Text(276, "02:00:00:00:00:0a")
           .U8(294, 3)
           .U32(296, 1)
           .bytes()},
      {"fdb clear edge-1 7 8", 67, Named("edge-1").U32(260, 7).U32(264, 8).U32(268, 1).bytes()},
      {"bridge-lif list edge-1", 59, Named("edge-1").bytes()},
      {"bridge-lif show edge-1 uplink", 60, OnLif().bytes()},
      {"bridge-lif set edge-1 uplink --second-name second --value1 1 --value2 2 --value3 3", 57,
       marked().bytes()},
      {"bridge-lif clear edge-1 uplink --second-name second --value1 1 --value2 2 --value3 3", 58,
       marked().bytes()},
      {"bridge-endpoint list", 52, Block().bytes()},
      {"bridge-endpoint add uplink ep --second-name two --fourth-name four --fifth-name five "
       "--value1 1 --value2 2 --tag 500 --flag1 3 --flag2 4",
       45,
       Block()
           .Text(256, "two")
           .Text(320, "ep")
           .Text(384, "uplink")
           .Text(448, "four")
           .U32(544, 1)
           .U32(548, 2)
           .U16(720, 500)
           .Text(722, "five")
           .U8(786, 3)
           .U8(787, 4)
           .bytes()},
      {"bridge-endpoint delete uplink ep", 46, Block().Text(320, "ep").Text(384, "uplink").bytes()},
      {"bridge-endpoint flush", 48, Block().bytes()},
      {"bridge-endpoint flush --all", 47, Block().bytes()},
      {"bridge-endpoint stats uplink", 50, Block().Text(384, "uplink").bytes()},
      {"bridge-endpoint status uplink", 51, Block().Text(384, "uplink").bytes()},
  };
}

std::vector<Verb> ClusterVerbs() {
  const auto node = [] {
    return Block()
        .Text(256, "one")
        .Text(320, "two")
        .Text(384, "three")
        .U32(400, 4)
        .Raw(404, {0x01, 0xab})
        .bytes();
  };
  return {
      {"cluster list", 89, Block().bytes()},
      {"cluster list own", 89, Named("own").bytes()},
      {"cluster create own", 90, Named("own").bytes()},
      {"cluster delete own", 91, Named("own").bytes()},
      {"cluster flush own", 104, Named("own").bytes()},
      {"cluster flush --all", 103, Block().bytes()},
      {"cluster set-debug 3 own", 107, Named("own").U8(256, 3).bytes()},
      {"cluster node list own", 92, Named("own").bytes()},
      {"cluster node add own n1 2:0:0:0:0:a", 93,
       Named("own").Text(256, "n1").Raw(320, {2, 0, 0, 0, 0, 10}).bytes()},
      {"cluster node delete own n1", 94, Named("own").Text(256, "n1").bytes()},
      {"cluster endpoint list edge-1", 95, Named("edge-1").bytes()},
      {"cluster bfd sessions edge-1", 96, Named("edge-1").bytes()},
      {"cluster bfd set-profile own 1 --value1 2 --value2 3", 106,
       Named("own").U8(256, 1).U32(260, 2).U32(264, 3).bytes()},
      {"bfd-port list", 99, Block().bytes()},
      {"bfd-port plumb p1 --second-name two --mac 2:0:0:0:0:a", 97,
       Block().Text(256, "p1").Text(320, "two").Raw(336, {2, 0, 0, 0, 0, 10}).bytes()},
      {"bfd-port unplumb p1", 98, Block().Text(256, "p1").bytes()},
      {"transport-node show --selector 3", 102, Block().U32(468, 3).bytes()},
      {"transport-node set one --second-name two --third-name three --value 4 --bytes 01ab", 100,
       node()},
      {"transport-node clear one --second-name two --third-name three --value 4 --bytes 01AB", 101,
       node()},
  };
}

std::vector<Verb> OtherVerbs() {
  const auto group = [] { return Named("edge-1").Raw(256, {224, 1, 2, 3}); };
  const auto rss = [] { return Block().Text(256, "rss"); };
  const auto address = [] { return Block().Raw(256, {1, 2, 3, 4}); };
  return {
      {"e2i list", 164, Block().bytes()},
      {"e2i show 7", 165, Block().U32(256, 7).bytes()},
      {"e2i add 7 2:0:0:0:0:a --value2 2 --value4 4 --value5 5", 161,
       Block()
           .U32(256, 7)
           .U32(260, 2)
           .Raw(264, {2, 0, 0, 0, 0, 10})
           .U32(272, 4)
           .U32(276, 5)
           .bytes()},
      {"e2i delete 7", 162, Block().U32(256, 7).bytes()},
      {"e2i clear", 163, Block().bytes()},
      {"physical-mac list", 73, Block().bytes()},
      {"physical-mac add 2:0:0:0:0:a --value 5", 74,
       Block().U32(256, 5).Raw(260, {2, 0, 0, 0, 0, 10}).bytes()},
      {"physical-mac delete 2:0:0:0:0:a", 75, Block().Raw(260, {2, 0, 0, 0, 0, 10}).bytes()},
      {"locale show", 86, Block().bytes()},
      {"fl-table show 500", 72, Block().U16(256, 500).bytes()},
      {"multicast set edge-1 --second-name two --value1 1 --value2 2 --value3 3 --flag 4", 127,
       Named("edge-1").Text(256, "two").U32(320, 1).U32(324, 2).U16(328, 3).U8(330, 4).bytes()},
      {"multicast domain show edge-1", 130, Named("edge-1").bytes()},
      {"multicast group list edge-1", 135, Named("edge-1").bytes()},
      {"multicast local-receiver list edge-1 224.1.2.3", 128, group().bytes()},
      {"multicast local-receiver add edge-1 224.1.2.3 r1", 133, group().Text(272, "r1").bytes()},
      {"multicast local-receiver delete edge-1 224.1.2.3 r1", 134, group().Text(272, "r1").bytes()},
      {"multicast remote-receiver list edge-1 224.1.2.3", 129, group().bytes()},
      {"multicast remote-receiver add edge-1 224.1.2.3 2 2:0:0:0:0:a --d 4 --e 5", 131,
       group().U32(272, 4).U32(276, 2).Raw(280, {2, 0, 0, 0, 0, 10}).U32(288, 5).bytes()},
      {"multicast replication-address show edge-1 224.1.2.3", 136, group().bytes()},
      {"multicast router show edge-1 224.1.2.3", 139, group().bytes()},
      {"multicast router add edge-1 10.1.2.3", 137,
       Named("edge-1").Raw(256, {10, 1, 2, 3}).bytes()},
      {"multicast router delete edge-1", 138, Named("edge-1").bytes()},
      {"full-sync save 9", 123, Block().U8(256, 9).bytes()},
      {"full-sync status", 124, Block().bytes()},
      {"soft-rss stats show rss", 153, rss().bytes()},
      {"soft-rss stats reset rss", 154, rss().bytes()},
      {"soft-rss tunables show rss", 155, rss().bytes()},
      {"soft-rss tunables set rss 0x0102030405060708", 156,
       rss().U64(320, 0x0102030405060708).bytes()},
      {"soft-rss table show rss", 157, rss().bytes()},
      {"soft-rss table set rss 5,6,255", 158, rss().Raw(320, {5, 6, 255}).U32(448, 3).bytes()},
      {"public-ip list", 171, kNothing},
      {"public-ip show 1.2.3.4", 170, address().bytes()},
      {"public-ip add 1.2.3.4 10.9.8.7 2:0:0:0:0:a --d 4", 166,
       address().Raw(260, {2, 0, 0, 0, 0, 10}).U32(268, 4).Raw(272, {10, 9, 8, 7}).bytes()},
      {"public-ip remove 1.2.3.4 10.9.8.7", 167, address().Raw(272, {10, 9, 8, 7}).bytes()},
      {"public-ip delete 1.2.3.4", 168, address().bytes()},
      {"public-ip clear", 169, kNothing},
      {"command 200", 200, kNothing},
      {"command 10 --value 3", 10, Bare(3)},
  };
}

// Only three fields of its block are cleared; the others are what the stack held.
constexpr const char* kDeleteReceiver = "multicast remote-receiver delete edge-1 224.1.2.3 2";

std::vector<Verb> AllVerbs() {
  std::vector<Verb> all;
  for (const auto& verbs : {InstanceVerbs(), LifVerbs(), RouteVerbs(), PolicyVerbs(), BridgeVerbs(),
                            ClusterVerbs(), OtherVerbs()}) {
    all.insert(all.end(), verbs.begin(), verbs.end());
  }
  return all;
}

vdrctl::Invocation Parsed(const std::string& line) {
  return std::get<vdrctl::Invocation>(vdrctl::Parse(vdrctl::SplitLine(line)));
}

// Returns what it prints.
std::string CarryOut(const vdrctl::Invocation& invocation, const vdrctl::Presentation& presentation,
                     int expected = 0) {
  sent.clear();
  vdrctl::Writer writer;
  vdrctl::Output out(presentation, invocation.command->reply, writer);
  vdrctl::Given::Room room;
  errno = 0;
  EXPECT_EQ(invocation.command->handler.call(out, invocation.command->Parameters(),
                                             invocation.given.In(room)),
            expected);
  return writer.text();
}

TEST(Verbs, SendWhatTheirArgumentsSay) {
  const vdrctl::Presentation forms[] = {{}, {.form = vdrctl::Presentation::Form::Json}};
  for (const Verb& verb : AllVerbs()) {
    for (const auto& presentation : forms) {
      SCOPED_TRACE(verb.line);
      CarryOut(Parsed(verb.line), presentation);
      ASSERT_FALSE(sent.empty());
      EXPECT_EQ(sent.back().code, verb.code);
      EXPECT_EQ(sent.back().input, verb.input);
    }
  }
}

// The kernel gives this answer while this is there.
class Answering {
 public:
  explicit Answering(Answer given) { answer = given; }
  ~Answering() { answer = Answer::Zeros; }
  Answering(const Answering&) = delete;
};

TEST(Verbs, FailAsTheKernelDoesAndShowNothing) {
  const Answering failure(Answer::Failure);
  for (const Verb& verb : AllVerbs()) {
    SCOPED_TRACE(verb.line);
    EXPECT_EQ(CarryOut(Parsed(verb.line), {}, -1), "");
    // This one tells every failure as a lack of memory.
    EXPECT_EQ(errno, verb.code == 114 ? ENOMEM : EDOM);
  }
}

// But for those that the library reads into memory of its own.
TEST(Verbs, ShowZerosWhereTheKernelWroteNothing) {
  const Answering nothing(Answer::Nothing);
  mallopt(M_PERTURB, 0x5a);  // Memory that nobody cleared is not zero.
  for (const Verb& verb : AllVerbs()) {
    SCOPED_TRACE(verb.line);
    const auto invocation = Parsed(verb.line);
    if (invocation.command->reply.form != vdrctl::Reply::Form::Bytes) continue;
    const std::string_view object = invocation.command->object;
    if (object == "soft-rss table" || object == "route6") continue;
    EXPECT_EQ(CarryOut(invocation, {}), "");
  }
  mallopt(M_PERTURB, 0);
}

TEST(Verbs, TheDeletionOfARemoteReceiverSendsItsThreeFields) {
  CarryOut(Parsed(kDeleteReceiver), {});
  ASSERT_EQ(sent.size(), 1U);
  const auto field = [](std::size_t offset, std::size_t width) {
    const auto first = sent.front().input.begin() + static_cast<std::ptrdiff_t>(offset);
    return std::vector<uint8_t>(first, first + static_cast<std::ptrdiff_t>(width));
  };
  EXPECT_EQ(sent.front().code, 132U);
  EXPECT_EQ(field(0, 7), (std::vector<uint8_t>{'e', 'd', 'g', 'e', '-', '1', 0}));
  EXPECT_EQ(field(256, 4), (std::vector<uint8_t>{224, 1, 2, 3}));
  EXPECT_EQ(field(276, 4), (std::vector<uint8_t>{2, 0, 0, 0}));
}

TEST(Verbs, OfTheWholeTableAreTried) {
  std::set<std::string> tried{vdrctl::FullName(*Parsed(kDeleteReceiver).command)};
  for (const Verb& verb : AllVerbs()) tried.insert(vdrctl::FullName(*Parsed(verb.line).command));
  vdrctl::ForEachCommand([&](const vdrctl::Command& command) {
    if (command.functions.All().empty()) return;
    EXPECT_TRUE(tried.contains(vdrctl::FullName(command))) << vdrctl::FullName(command);
  });
}

TEST(Verbs, SendOnlyTheCodesOfTheirRow) {
  for (const Verb& verb : AllVerbs()) {
    const auto invocation = Parsed(verb.line);
    const auto codes = invocation.command->codes.All();
    if (codes.empty()) continue;
    EXPECT_NE(std::find(codes.begin(), codes.end(), verb.code), codes.end()) << verb.line;
  }
}

}  // namespace
