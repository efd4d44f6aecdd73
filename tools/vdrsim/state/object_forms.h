#pragma once

#include <fmt/format.h>

#include <string>

#include "datapath/state.h"
#include "state/forms.h"

// The forms of values that stand for more than one member of their structure, or for one of a kind.
namespace vdrsim::forms {

struct CountOf {
  using Value = Count;

  static void Put(const Count& value, std::string& out) { Numbers<uint64_t>::Put(value, out); }
  static void Take(const Token& token, Count& value) { value = TakeNumber(token, UINT64_MAX); }
  static std::string Describe() { return Numbers<uint64_t>::Describe(); }
  static std::string Schema() { return Numbers<uint64_t>::Schema(); }
};

template <uint32_t Only>
struct Version {
  using Value = uint32_t;

  static void Put(const uint32_t& value, std::string& out) { out += std::to_string(value); }
  static void Take(const Token& token, uint32_t& value) {
    value = static_cast<uint32_t>(TakeNumber(token, UINT32_MAX));
    if (value != Only) {
      throw shape::Unfit(fmt::format("{} is not understood, {} is the only version", value, Only));
    }
  }
  static std::string Describe() { return std::to_string(Only); }
  static std::string Schema() { return fmt::format(R"("const": {})", Only); }
};

// The text of a neighbour, which says its bytes.
struct NeighbourMac {
  using Value = Neighbour;

  static void Put(const Neighbour& value, std::string& out) { PutText(value.macText, out); }
  static void Take(const Token& token, Neighbour& value);
  static std::string Describe() { return Mac::Describe() + ", as it was written"; }
  static std::string Schema() { return Mac::Schema(); }
};

// An address and its family: 10.0.0.1 or 2001:db8::1. The 16 bytes of an IPv4 server that go on
// after the address are 32 hexadecimal digits.
void PutAddress(uint32_t family, const IpAddress& address, std::string& out);
void TakeAddress(const Token& token, uint32_t& family, IpAddress& address);
void TakeServer(const Token& token, uint32_t& family, IpAddress& address);

template <typename Owner>
struct AddressIn {
  using Value = Owner;
  static constexpr bool kIsServer = std::is_same_v<Owner, RelayServer>;

  static void Put(const Owner& owner, std::string& out) {
    PutAddress(owner.family, std::bit_cast<IpAddress>(owner.address), out);
  }
  static void Take(const Token& token, Owner& owner) {
    IpAddress address{};
    (kIsServer ? TakeServer : TakeAddress)(token, owner.family, address);
    owner.address = std::bit_cast<decltype(owner.address)>(address);
  }
  static std::string Describe() {
    return kIsServer ? "IPv4 or IPv6 address, or 16 bytes in hexadecimal" : "IPv4 or IPv6 address";
  }
  static std::string Schema() {
    return kIsServer ? R"("type": "string", "pattern": "^([0-9A-Fa-f:.]+)$")"
                     : IpSchema(true, true);
  }
};

}  // namespace vdrsim::forms
