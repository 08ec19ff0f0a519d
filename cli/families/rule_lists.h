// What firewall, streaming and local proxy share: printing their four rule lists, and editing one of them by the words
// `set`, `add` and `rem`, written once for every kind of rule and every family.
//
// The daemon takes whole lists only: `add` and `rem` read the record, edit its list and send all of it back, also when
// nothing has changed.
#pragma once

#include <json/json.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <type_traits>

#include "cli/actions.h"
#include "sdk/facade.h"
#include "sdk/platform/address_text.h"
#include "sdk/text.h"
#include "sdk/word_table.h"

namespace cli {

/// An object of all four lists.
Json::Value toJson(const ZephlinkSDK_RuleLists& lists);

/// Up to as many rules of one kind as the daemon takes; what is appended beyond is dropped.
template <class Rule>
struct RuleList {
  // Rules are equal when their bytes are: texts have nothing but zeros behind their end.
  static_assert(std::has_unique_object_representations_v<Rule>);

  std::uint16_t count = 0;
  Rule rules[ZephlinkSDK_MaxRules] = {};

  std::span<const Rule> all() const { return {rules, count}; }

  bool holds(const Rule& wanted) const {
    return std::ranges::any_of(all(),
                               [&wanted](const Rule& rule) { return std::memcmp(&rule, &wanted, sizeof(Rule)) == 0; });
  }

  void append(const Rule& rule) {
    if (count < ZephlinkSDK_MaxRules) std::memcpy(&rules[count++], &rule, sizeof(Rule));
  }
};

/// Where the records keep the rules of one kind.
template <class Rule>
struct RuleKind {
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

/// What the lists of a family have alike.
template <class Record>
struct RuleFamily {
  Record (&get)(zephlinksdk::ZephlinkSDK*, zephlinksdk::Callback<Record>, void*);
  void (*print)(const Record&);
};

/// The method of a family that replaces one of its lists.
template <class Record, class Rule>
using SetRules = Record(zephlinksdk::ZephlinkSDK*, unsigned short, const Rule*, zephlinksdk::Callback<Record>, void*);

enum class Edit { Set, Add, Remove };

inline constexpr auto kEditWords =
    zephlinksdk::wordTable<Edit>({{Edit::Set, "set"}, {Edit::Add, "add"}, {Edit::Remove, "rem"}}, "");

/// The usage text of each edit; only ports have such texts, for a word that is no rule.
using EditUsages = zephlinksdk::WordTable<Edit, const char*, 3>;

/// A word that is no address gives one of zeros, and a long domain is cut.
inline void readRule(const char* word, Domain& domain) { zephlinksdk::copyText(domain, word); }
template <class Address>
void readRule(const char* word, Address& address) {
  address = zephlinksdk::addressFromText<Address>(word);
}

/// Reads a rule from each word. Words that are refused have told their fault, and its status is returned.
template <class Rule>
std::optional<int> readRules(Words words, RuleList<Rule>& list, const char*) {
  for (const char* word : words) {
    Rule rule;
    readRule(word, rule);
    list.append(rule);
  }
  return std::nullopt;
}
std::optional<int> readRules(Words words, RuleList<PortRule>& list, const char* usage);

/// `rules` after one of the edits that change a list; those of `given` stand behind the others.
template <class Rule>
RuleList<Rule> edited(std::span<const Rule> rules, Edit edit, const RuleList<Rule>& given) {
  RuleList<Rule> list;
  for (const Rule& rule : rules) {
    if (edit == Edit::Add || !given.holds(rule)) list.append(rule);
  }
  if (edit == Edit::Remove) return list;
  for (const Rule& rule : given.all()) {
    if (!list.holds(rule)) list.append(rule);
  }
  return list;
}

/// The answer to the list that was sent, or why the list could not be read.
template <class Rule, class Record>
Record change(Edit edit, const RuleList<Rule>& given, const RuleKind<Rule>& kind, const RuleFamily<Record>& family,
              SetRules<Record, Rule>& set) {
  if (edit == Edit::Set) return call(set, given.count, given.rules);
  const Record record = call(family.get);
  if (record.hasError) return record;
  const RuleList<Rule> list = edited(kind.of(record), edit, given);
  return call(set, list.count, list.rules);
}

/// The handler of the words behind a list's name: one of the three words and the rules.
template <class Rule, class Record>
int editList(Words words, const RuleKind<Rule>& kind, const RuleFamily<Record>& family, SetRules<Record, Rule>& set,
             const char* usage, const EditUsages& editUsages = {}) {
  if (words.empty()) return missing(usage);
  const auto edit = kEditWords.find(words[0]);
  if (!edit) return invalid(usage);
  RuleList<Rule> given;
  if (const auto fault = readRules(words.subspan(1), given, editUsages.text(*edit))) return *fault;
  return finish(change(*edit, given, kind, family, set), family.print);
}

}  // namespace cli
