#pragma once

#include <vdrzax/policy.h>

#include <vdrzax/cxx/call.hpp>
#include <vdrzax/cxx/route.hpp>

// Policies, policy tables, and what binds both to LIFs.
namespace vdrzax {
inline namespace v1 {

// A policy.
class Policy : public View<PolicyRecord> {
 public:
  using View::View;

  std::uint32_t policy_word0() const noexcept { return raw().policyWord0; }
  std::uint32_t policy_word1() const noexcept { return raw().policyWord1; }
  std::uint32_t policy_word2() const noexcept { return raw().policyWord2; }
  std::uint32_t policy_word3() const noexcept { return raw().policyWord3; }
  std::uint32_t policy_word4() const noexcept { return raw().policyWord4; }
  std::uint64_t policy_qword() const noexcept { return raw().policyQword; }

  static void release(RecordList* list) noexcept { VDRZAX_ReleaseAllPolicy(list); }
};

// A policy table.
class PolicyTable : public View<PolicyTableRecord> {
 public:
  using View::View;

  std::uint32_t table_key() const noexcept { return raw().tableKey; }
  std::string_view table_name() const noexcept { return text(raw().tableName); }
  std::uint32_t table_word() const noexcept { return raw().tableWord; }

  static void release(RecordList* list) noexcept { VDRZAX_ReleaseAllPolicyTable(list); }
};

// An entry of a reference to policy tables.
class PolicyTableUse : public View<PolicyTableRefEntry> {
 public:
  using View::View;

  std::uint64_t qword0() const noexcept { return raw().qword0; }
  std::uint64_t qword8() const noexcept { return raw().qword8; }
  std::uint64_t qword16() const noexcept { return raw().qword16; }
};

// A LIF's reference to policy tables.
class LifPolicyTables : public View<LifPolicyTableRef> {
 public:
  using View::View;

  std::string_view ref_name() const noexcept { return text(raw().refName); }
  std::uint16_t ref_count() const noexcept { return raw().refCount; }
  // At most the twenty that there is room for.
  Range<PolicyTableUse> ref_entries() const noexcept {
    return {raw().refEntries, std::min<std::size_t>(ref_count(), 20)};
  }

  static void release(LifPolicyTableRef* record) noexcept {
    VDRZAX_ReleaseLifPolicyTableRef(record);
  }
};

// What a policy is set to.
struct PolicySettings {
  std::uint32_t policy_arg1 = 0;
  std::uint32_t policy_arg2 = 0;
  std::uint32_t policy_arg3 = 0;
};

// A policy of a LIF. Type 4 alone names one, by `policy_lif_name`, which is required then.
struct LifPolicySettings {
  std::int32_t policy_type = 0;
  Text policy_lif_name = {};
  std::uint32_t route_arg1 = 0;
  std::uint32_t route_arg2 = 0;
  std::uint32_t route_arg3 = 0;
  Text if_name = {};
  std::uint32_t route_flags = 0;
};

// An entry of a reference to policy tables, to be sent.
struct PolicyTableUseSettings {
  std::uint64_t qword0 = 0;
  std::uint64_t qword8 = 0;
  std::uint64_t qword16 = 0;
};

namespace detail {

// The entries of a reference, as the request holds them: at most twenty.
class PolicyTableUses {
 public:
  explicit PolicyTableUses(std::span<const PolicyTableUseSettings> uses) noexcept
      : size_(uses.size()) {
    if (size_ > kRoom) return;
    std::transform(uses.begin(), uses.end(), entries_, [](const PolicyTableUseSettings& use) {
      return PolicyTableRefEntry{use.qword0, use.qword8, use.qword16};
    });
  }
  Refusal refusal() const noexcept { return size_ > kRoom ? Refusal::TooLong : Refusal::None; }
  const PolicyTableRefEntry* passed() const noexcept { return entries_; }
  std::uint16_t size() const noexcept { return static_cast<std::uint16_t>(size_); }

 private:
  static constexpr std::size_t kRoom = 20;

  std::size_t size_;
  PolicyTableRefEntry entries_[kRoom]{};
};

}  // namespace detail

class PolicyCalls {
 public:
  result<void> try_set_policy(std::uint32_t policy_key, const PolicySettings& settings,
                              Answer* answer = nullptr) const noexcept {
    return detail::Command("VDRZAX_SetPolicy", VDRZAX_SetPolicy, policy_key, settings.policy_arg1,
                           settings.policy_arg2, settings.policy_arg3, detail::Given(answer));
  }
  result<void> try_delete_policy(std::uint32_t policy_key, std::uint32_t policy_arg1,
                                 std::uint32_t policy_arg2,
                                 Answer* answer = nullptr) const noexcept {
    return detail::Command("VDRZAX_DelPolicy", VDRZAX_DelPolicy, policy_key, policy_arg1,
                           policy_arg2, detail::Given(answer));
  }
  result<List<Policy>> try_policies(std::uint32_t policy_key) const noexcept {
    return detail::ReadList<Policy>("VDRZAX_GetPolicy", VDRZAX_GetPolicy, policy_key);
  }
  result<std::uint32_t> try_policy_count(std::uint32_t policy_key) const noexcept {
    return detail::Number("VDRZAX_GetPolicyCount", VDRZAX_GetPolicyCount, policy_key);
  }
  result<void> try_set_policy_table(std::uint32_t policy_key, Text table_name,
                                    Answer* answer = nullptr) const noexcept {
    return detail::Command("VDRZAX_SetPolicyTable", VDRZAX_SetPolicyTable, policy_key,
                           detail::Name(table_name), detail::Given(answer));
  }
  result<void> try_delete_policy_table(std::uint32_t policy_key,
                                       Answer* answer = nullptr) const noexcept {
    return detail::Command("VDRZAX_DelPolicyTable", VDRZAX_DelPolicyTable, policy_key,
                           detail::Given(answer));
  }
  result<List<PolicyTable>> try_policy_tables() const noexcept {
    return detail::ReadList<PolicyTable>("VDRZAX_GetPolicyTable", VDRZAX_GetPolicyTable);
  }
  result<void> try_set_lif_policy(Text instance_name, const LifPolicySettings& settings,
                                  Answer* answer = nullptr) const noexcept {
    return detail::Command("VDRZAX_SetLifPolicy", VDRZAX_SetLifPolicy, settings.policy_type,
                           detail::OptionalName(settings.policy_lif_name), settings.route_arg1,
                           settings.route_arg2, settings.route_arg3,
                           detail::OptionalName(settings.if_name), detail::Name(instance_name),
                           settings.route_flags, detail::Given(answer));
  }
  result<void> try_delete_lif_policy(Text instance_name, const LifPolicySettings& settings,
                                     Answer* answer = nullptr) const noexcept {
    return detail::Command("VDRZAX_DelLifPolicy", VDRZAX_DelLifPolicy, settings.policy_type,
                           detail::OptionalName(settings.policy_lif_name), settings.route_arg1,
                           settings.route_arg2, settings.route_arg3,
                           detail::OptionalName(settings.if_name), detail::Name(instance_name),
                           settings.route_flags, detail::Given(answer));
  }
  // The datapath reports them as routes.
  result<List<Route>> try_lif_policies(Text instance_name, std::uint32_t policy_type,
                                       Text policy_lif_name = {}) const noexcept {
    return detail::ReadList<Route>("VDRZAX_GetLifPolicies", VDRZAX_GetLifPolicies,
                                   detail::Name(instance_name), policy_type,
                                   detail::OptionalName(policy_lif_name));
  }
  // Sends at most 20 entries; more are refused.
  result<void> try_set_lif_policy_table_ref(Text instance_name, Text lif_name,
                                            std::span<const PolicyTableUseSettings> uses,
                                            Answer* answer = nullptr) const noexcept {
    const detail::PolicyTableUses entries(uses);
    return detail::Command("VDRZAX_SetLifPolicyTableRef", VDRZAX_SetLifPolicyTableRef,
                           detail::Name(instance_name), detail::Name(lif_name), entries.size(),
                           entries, detail::Given(answer));
  }
  result<void> try_delete_lif_policy_table_ref(Text instance_name, Text lif_name,
                                               Answer* answer = nullptr) const noexcept {
    return detail::Command("VDRZAX_DelLifPolicyTableRef", VDRZAX_DelLifPolicyTableRef,
                           detail::Name(instance_name), detail::Name(lif_name),
                           detail::Given(answer));
  }
  result<Owned<LifPolicyTables>> try_lif_policy_table_ref(Text instance_name,
                                                          Text lif_name) const noexcept {
    return detail::Record<LifPolicyTables>("VDRZAX_GetLifPolicyTableRef",
                                           VDRZAX_GetLifPolicyTableRef, detail::Name(instance_name),
                                           detail::Name(lif_name));
  }
  result<Owned<LifPolicyTables>> try_find_lif_policy_table_ref(Text instance_name,
                                                               Text lif_name) const noexcept {
    return detail::Found(try_lif_policy_table_ref(instance_name, lif_name));
  }

#ifdef __cpp_exceptions
  void set_policy(std::uint32_t policy_key, const PolicySettings& settings,
                  Answer* answer = nullptr) const {
    return try_set_policy(policy_key, settings, answer).value();
  }
  void delete_policy(std::uint32_t policy_key, std::uint32_t policy_arg1, std::uint32_t policy_arg2,
                     Answer* answer = nullptr) const {
    return try_delete_policy(policy_key, policy_arg1, policy_arg2, answer).value();
  }
  List<Policy> policies(std::uint32_t policy_key) const { return try_policies(policy_key).value(); }
  std::uint32_t policy_count(std::uint32_t policy_key) const {
    return try_policy_count(policy_key).value();
  }
  void set_policy_table(std::uint32_t policy_key, Text table_name, Answer* answer = nullptr) const {
    return try_set_policy_table(policy_key, table_name, answer).value();
  }
  void delete_policy_table(std::uint32_t policy_key, Answer* answer = nullptr) const {
    return try_delete_policy_table(policy_key, answer).value();
  }
  List<PolicyTable> policy_tables() const { return try_policy_tables().value(); }
  void set_lif_policy(Text instance_name, const LifPolicySettings& settings,
                      Answer* answer = nullptr) const {
    return try_set_lif_policy(instance_name, settings, answer).value();
  }
  void delete_lif_policy(Text instance_name, const LifPolicySettings& settings,
                         Answer* answer = nullptr) const {
    return try_delete_lif_policy(instance_name, settings, answer).value();
  }
  List<Route> lif_policies(Text instance_name, std::uint32_t policy_type,
                           Text policy_lif_name = {}) const {
    return try_lif_policies(instance_name, policy_type, policy_lif_name).value();
  }
  void set_lif_policy_table_ref(Text instance_name, Text lif_name,
                                std::span<const PolicyTableUseSettings> uses,
                                Answer* answer = nullptr) const {
    return try_set_lif_policy_table_ref(instance_name, lif_name, uses, answer).value();
  }
  void delete_lif_policy_table_ref(Text instance_name, Text lif_name,
                                   Answer* answer = nullptr) const {
    return try_delete_lif_policy_table_ref(instance_name, lif_name, answer).value();
  }
  Owned<LifPolicyTables> lif_policy_table_ref(Text instance_name, Text lif_name) const {
    return try_lif_policy_table_ref(instance_name, lif_name).value();
  }
  Owned<LifPolicyTables> find_lif_policy_table_ref(Text instance_name, Text lif_name) const {
    return try_find_lif_policy_table_ref(instance_name, lif_name).value();
  }
#endif
};

}  // namespace v1
}  // namespace vdrzax
