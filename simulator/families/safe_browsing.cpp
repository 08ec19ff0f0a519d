// Safe browsing: settings, counters, and the lookups that fail or are blocked while it is on.
#include "simulator/families.h"
#include "simulator/json.h"
#include "simulator/setters.h"

namespace zephsim {
namespace {

using namespace std::chrono_literals;

/// The service rejects a configuration or token with this prefix.
constexpr char kBadPrefix[] = "bad";

/// The service's error codes, in connect and lookup errors.
enum class ServiceError { Refused = 4, LookupTimeout = 8, NotInitialized = 17 };

constexpr const char* kBlockedHosts[] = {"malware.example.net", "phishing.example.org", "tracker.example.com"};
constexpr const char* kFailingHosts[] = {"slow.example.com", "lookup.example.net"};

class SafeBrowsing {
 public:
  explicit SafeBrowsing(Daemon& owner) : daemon(owner) {
    settings->value = object({{"initialized", false},
                              {"config_set", false},
                              {"enabled", false},
                              {"log_level", "info"},
                              {"network_override", "none"}});
  }

  std::vector<Request> plainRequests() const {
    return {
        {"request_safe_browsing_settings", reportRecord(settings)},
        {"enable_safe_browsing", setMember(settings, "enable", "enabled", Kind::Bool)},
        {"set_safe_browsing_log_level",
         setWord(settings, "log_level", "log_level", {"debug", "info", "error", "trace", "warning"})},
        {"set_safe_browsing_safe_network_override",
         setWord(settings, "network_override", "network_override", {"none", "unsafe", "safe"})},
    };
  }

  /// Connects to the service with the configuration; an empty one disconnects.
  void initialize(const Json::Value& members) {
    const std::string config = requiredText(members, "config");
    daemon.after(300ms, [this, config] {
      const bool good = !isBad(config);
      settings->value["config_set"] = good && !config.empty();
      settings->value["initialized"] = good && !config.empty();
      good ? daemon.report(*settings) : connectError(ServiceError::Refused, "The configuration is refused");
    });
  }

  void setConfig(const Json::Value& members) {
    settings->value["config_set"] = !requiredText(members, "config").empty();
    daemon.report(*settings);
  }

  void refreshToken(const Json::Value& members) {
    if (isBad(requiredText(members, "token"))) return connectError(ServiceError::Refused, "The token is refused");
    answerIfInitialized();
  }

  void reportHomeNetwork(const Json::Value&) { answerIfInitialized(); }

  void reportStats(const Json::Value&) {
    daemon.report("report_safe_browsing_stats",
                  object({{"min", lookups == 0 ? 0 : 4},
                          {"max", lookups == 0 ? 0 : 212},
                          {"average", lookups == 0 ? 0 : 37},
                          {"num_errors", errors},
                          {"num_blocks", blocks},
                          {"failure_rate", lookups == 0 ? 0.0 : static_cast<double>(errors) / lookups},
                          {"num_block_responses", blocks},
                          {"num_safe_browsing_lookups", lookups},
                          {"num_safe_browsing_packets_filtered", lookups * 9}}));
  }

  void tick() {
    if (!settings->value["enabled"].asBool() || !settings->value["initialized"].asBool()) return;
    lookups += 1 + static_cast<unsigned>(daemon.random(0, 12));
    daemon.chance(0.6) ? block() : fail();
  }

 private:
  static bool isBad(const std::string& text) { return text.rfind(kBadPrefix, 0) == 0; }

  void connectError(ServiceError error, const char* text) {
    daemon.report("report_safe_browsing_connect_error",
                  object({{"error", static_cast<int>(error)}, {"safebro_msg", text}}));
  }

  void answerIfInitialized() {
    if (settings->value["initialized"].asBool()) return daemon.report(*settings);
    connectError(ServiceError::NotInitialized, "Safe browsing is not initialized");
  }

  void block() {
    ++blocks;
    const char* host = kBlockedHosts[blocks % std::size(kBlockedHosts)];
    daemon.report("report_safe_browsing_block", object({{"host", host}, {"redirected", daemon.chance(0.5)}}));
  }

  void fail() {
    ++errors;
    daemon.report("report_safe_browsing_lookup_error",
                  object({{"host", kFailingHosts[errors % std::size(kFailingHosts)]},
                          {"error", static_cast<int>(ServiceError::LookupTimeout)},
                          {"safebro_msg", "The lookup took too long"}}));
  }

  Daemon& daemon;
  const SharedRecord settings = std::make_shared<Record>(Record{"report_safe_browsing_settings"});
  unsigned lookups = 0;
  unsigned errors = 0;
  unsigned blocks = 0;
};

}  // namespace

std::vector<Request> safeBrowsingFamily(Daemon& daemon) {
  const auto family = std::make_shared<SafeBrowsing>(daemon);
  daemon.every(2s, [family] { family->tick(); });
  std::vector<Request> requests = family->plainRequests();
  const std::vector<Request> others = {
      {"initialize_safe_browsing", method(family, &SafeBrowsing::initialize)},
      {"set_safe_browsing_config", method(family, &SafeBrowsing::setConfig)},
      {"safe_browsing_token_refresh", method(family, &SafeBrowsing::refreshToken)},
      {"safe_browsing_report_home_network", method(family, &SafeBrowsing::reportHomeNetwork)},
      {"request_safe_browsing_stats", method(family, &SafeBrowsing::reportStats)},
  };
  requests.insert(requests.end(), others.begin(), others.end());
  return requests;
}

}  // namespace zephsim
