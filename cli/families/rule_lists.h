// Shared by the firewall, streaming and the local proxy: prints their four rule lists and edits one of them with the
// arguments `set`, `add` and `rem`, for every type of rule and every family.
//
// The daemon accepts whole lists only: `add` and `rem` read the record, edit its list and send the whole list back,
// even if nothing has changed.
#pragma once

#include <json/json.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <type_traits>

#include "base/text.h"
#include "base/word_table.h"
#include "cli/actions.h"
#include "platform/address_text.h"
#include "zephlinksdk/zephlinksdk.h"

namespace cli {

/// Returns an object with all four lists.
Json::Value toJson(const ZephlinkSDK_RuleLists& lists);

/// Rules of one type, up to a fixed number. Rules appended beyond it are dropped.
template <class Rule>
class RuleList {
  // Rules are compared by their bytes: texts are zero-padded.
  static_assert(std::has_unique_object_representations_v<Rule>);

 public:
  explicit RuleList(std::size_t room) : capacity(room), rules(std::make_unique<Rule[]>(room)) {}

  std::span<const Rule> all() const { return {rules.get(), count}; }

  /// Returns the list's whole capacity, to fill. New rules are all zero.
  std::span<Rule> fill() { return {rules.get(), count = capacity}; }

  bool contains(const Rule& wanted) const {
    return std::ranges::any_of(all(),
                               [&wanted](const Rule& rule) { return std::memcmp(&rule, &wanted, sizeof(Rule)) == 0; });
  }

  void append(const Rule& rule) {
    if (count < capacity) std::memcpy(&rules[count++], &rule, sizeof(Rule));
  }

 private:
  std::size_t capacity;
  std::size_t count = 0;
  std::unique_ptr<Rule[]> rules;
};

/// The members of the records that contain one type of rules.
template <class Rule>
struct RuleKind {
  using List = RuleList<Rule>;

  std::uint16_t ZephlinkSDK_RuleLists::*count;
  Rule (ZephlinkSDK_RuleLists::*rules)[ZephlinkSDK_MaxRules];

  std::span<const Rule> of(const ZephlinkSDK_RuleLists& lists) const { return {lists.*rules, lists.*count}; }
};

using Domain = char[ZephlinkSDK_DomainSize];
using PortRule = ZephlinkSDK_ProtocolPortPair;

inline constexpr RuleKind<Domain> kDomains{&ZephlinkSDK_RuleLists::domainCount, &ZephlinkSDK_RuleLists::domains};
inline constexpr RuleKind<in_addr> kIPv4{&ZephlinkSDK_RuleLists::ipv4Count, &ZephlinkSDK_RuleLists::ipv4};
inline constexpr RuleKind<in6_addr> kIPv6{&ZephlinkSDK_RuleLists::ipv6Count, &ZephlinkSDK_RuleLists::ipv6};
inline constexpr RuleKind<PortRule> kPorts{&ZephlinkSDK_RuleLists::portCount, &ZephlinkSDK_RuleLists::ports};

enum class Edit { Set, Add, Remove };

inline constexpr auto kEditWords =
    zephlinksdk::wordTable<Edit>({{Edit::Set, "set"}, {Edit::Add, "add"}, {Edit::Remove, "rem"}}, "");

/// The usage text of each edit, in the order of `Edit`. Only ports have them: an invalid rule prints one.
using EditUsages = std::array<const char*, 3>;
inline constexpr EditUsages kNoUsages{};

/// An invalid address reads as all zeros; a long domain is cut.
inline void readRule(const char* argument, Domain& domain) { zephlinksdk::copyText(domain, argument); }
template <class Address>
void readRule(const char* argument, Address& address) {
  address = zephlinksdk::addressFromText<Address>(argument);
}

/// Reads one rule from each argument. If an argument is invalid, prints the error and returns the status.
template <class Rule>
std::optional<int> readRules(Arguments arguments, RuleList<Rule>& list, const char*) {
  for (const char* argument : arguments) {
    Rule rule;
    readRule(argument, rule);
    list.append(rule);
  }
  return std::nullopt;
}
std::optional<int> readRules(Arguments arguments, RuleList<PortRule>& list, const char* usage);

/// Returns `rules` with the rules of `given` appended or removed. Compares all of `given`; the result is cut to the
/// number of rules that the daemon accepts.
template <class Rule>
RuleList<Rule> edited(std::span<const Rule> rules, Edit edit, const RuleList<Rule>& given) {
  RuleList<Rule> list(ZephlinkSDK_MaxRules);
  for (const Rule& rule : rules) {
    if (edit == Edit::Add || !given.contains(rule)) list.append(rule);
  }
  if (edit == Edit::Remove) return list;
  for (const Rule& rule : given.all()) {
    if (!list.contains(rule)) list.append(rule);
  }
  return list;
}

/// Sends at most as many rules as the daemon accepts.
template <auto& Set, class Rule>
auto send(const RuleList<Rule>& list) {
  const std::span<const Rule> rules = list.all();
  const std::size_t count = std::min<std::size_t>(rules.size(), ZephlinkSDK_MaxRules);
  return call<Set>(static_cast<std::uint16_t>(count), rules.data());
}

/// Returns the answer to the list that was sent, or the error if the list could not be read.
template <const auto& Kind, auto& Get, auto& Set, class Rule>
auto changeList(Edit edit, const RuleList<Rule>& given) {
  if (edit == Edit::Set) return send<Set>(given);
  const auto record = call<Get>();
  if (record.hasError) return record;
  return send<Set>(edited(Kind.of(record.lists), edit, given));
}

/// The handler of one list: its arguments are `set`, `add` or `rem`, and the rules.
template <const auto& Kind, auto& Get, auto& Set, auto& Print, const EditUsages& Usages>
int editList(Arguments arguments, const char* usage) {
  if (arguments.empty()) return missing(usage);
  const auto edit = kEditWords.find(arguments[0]);
  if (!edit) return invalid(usage);
  typename std::remove_cvref_t<decltype(Kind)>::List given(arguments.size() - 1);
  if (const auto fault = readRules(arguments.subspan(1), given, Usages[static_cast<std::size_t>(*edit)])) return *fault;
  return finish(changeList<Kind, Get, Set>(*edit, given), Print);
}

}  // namespace cli
