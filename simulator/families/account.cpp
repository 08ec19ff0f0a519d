// Signing in and out, the account's figures and the directory settings.
#include <algorithm>

#include "simulator/families.h"
#include "simulator/json.h"
#include "simulator/setters.h"
#include "simulator/tunnel.h"

namespace zephsim {
namespace {

using namespace std::chrono_literals;

constexpr std::int64_t kGigabyte = 1'000'000'000;
constexpr char kGoodToken[] = "demo-token";
constexpr char kExpiredToken[] = "expired-token";
constexpr char kDefaultDomain[] = "directory.example.net";
constexpr char kDefaultGateway[] = "https://gateway.example.net/v1";

struct Account {
  const char* name;
  const char* password;  ///< null if the account has no password
  std::int64_t bytesAvailable;
  bool isAutomatic;
  bool isTeam;
  int payTier;
  bool isOverLimit;
};

constexpr Account kAccounts[] = {
    {"demo@example.com", "demo", 100 * kGigabyte, false, false, 1, false},
    {"team@example.com", "demo", 5000 * kGigabyte, false, true, 3, false},
    {"full@example.com", "demo", 0, false, false, 0, true},
    {"auto-7f3a9c@example.com", nullptr, 2 * kGigabyte, true, false, 0, false},
};
constexpr const Account& kTokenAccount = kAccounts[1];
constexpr const Account& kAutoAccount = kAccounts[3];

const Account* findAccount(const std::string& name, const std::string& password) {
  const auto* found = std::find_if(std::begin(kAccounts), std::end(kAccounts), [&](const Account& account) {
    return account.password && name == account.name && password == account.password;
  });
  return found == std::end(kAccounts) ? nullptr : found;
}

class AccountFamily {
 public:
  explicit AccountFamily(Daemon& owner) : daemon(owner), world(owner.world) {
    directory->value = object({{"domain", kDefaultDomain}, {"enableEsni", false}, {"gatewayUri", kDefaultGateway}});
  }

  void login(const Json::Value& members) {
    const Account* found = findAccount(requiredText(members, "username"), requiredText(members, "password"));
    signIn(found, Fault::Credentials, "The user name or the password is wrong");
  }

  void loginOAuth(const Json::Value& members) {
    const std::string token = requiredText(members, "oauth");
    const Account* found = token == kGoodToken ? &kTokenAccount : nullptr;
    if (token == kExpiredToken) return signIn(nullptr, Fault::OAuthExpired, "The token is expired");
    signIn(found, Fault::Credentials, "The token is not valid");
  }

  /// An established session continues with a valid token.
  void refreshOAuth(const Json::Value& members) {
    if (world.isLoggedIn() && requiredText(members, "oauth") == kGoodToken) return reportState(daemon);
    loginOAuth(members);
  }

  void allowAutoAccount(const Json::Value&) { autoAllowed = true; }

  void loginAuto(const Json::Value&) {
    signIn(autoAllowed ? &kAutoAccount : nullptr, Fault::Account, "The automatic account is not allowed");
  }

  void logout(const Json::Value&) {
    account = nullptr;
    retry = false;
    leaveTunnel(daemon, "USERINITIATED", [this] { moveTo(daemon, TunnelState::LoggedOut); });
  }

  void reportAccounting(const Json::Value&) {
    const std::int64_t used = account ? static_cast<std::int64_t>(world.bytesThrough) : 0;
    const std::int64_t available = account ? std::max<std::int64_t>(account->bytesAvailable - used, 0) : 0;
    daemon.report("report_accounting_data", object({{"email", account ? account->name : ""},
                                                    {"isAutoAccount", account && account->isAutomatic},
                                                    {"bytesAvail", Json::Int64{available}},
                                                    {"bytesUsed", Json::Int64{used}},
                                                    {"isTeam", account && account->isTeam},
                                                    {"minutesAvail", account ? 43200 : 0},
                                                    {"minutesUsed", account ? 1260 : 0},
                                                    {"payTier", account ? account->payTier : 0},
                                                    {"periodEndDate", account ? "2027-01-31" : ""},
                                                    {"account_action", retry ? "retry" : ""}}));
  }

  void reportDirectory(const Json::Value&) { daemon.report(*directory); }

  void setDomain(const Json::Value& members) {
    directory->value["domain"] = members.isNull() ? kDefaultDomain : requiredText(members, "domain");
    daemon.report(*directory);
  }

  void setGateway(const Json::Value& members) {
    directory->value["gatewayUri"] = members.isNull() ? kDefaultGateway : requiredText(members, "url");
    daemon.report(*directory);
  }

 private:
  /// If `found` is null, the sign-in fails with `fault` and `text`.
  void signIn(const Account* found, Fault fault, const char* text) {
    leaveTunnel(daemon, "USERINITIATED", [this, found, fault, text] {
      moveTo(daemon, TunnelState::LoggingIn);
      unlessMoved(daemon, 600ms, [this, found, fault, text] { found ? accept(*found) : reject(fault, text); });
    });
  }

  void accept(const Account& found) {
    account = &found;
    retry = false;
    moveTo(daemon, found.isOverLimit ? TunnelState::Overlimit : TunnelState::LoggedIn);
  }

  void reject(Fault fault, const char* text) {
    account = nullptr;
    retry = true;
    daemon.fault("report_login_error", fault, text);
    moveTo(daemon, TunnelState::LoggedOut);
  }

  Daemon& daemon;
  World& world;
  const Account* account = nullptr;  ///< the account that is signed in
  bool autoAllowed = false;
  bool retry = false;  ///< the last sign-in failed
  const SharedRecord directory = std::make_shared<Record>(Record{"report_directory_settings"});
};

}  // namespace

std::vector<Request> accountFamily(Daemon& daemon) {
  const auto family = std::make_shared<AccountFamily>(daemon);
  return {
      {"login", method(family, &AccountFamily::login)},
      {"login_oauth", method(family, &AccountFamily::loginOAuth)},
      {"update_oauth", method(family, &AccountFamily::refreshOAuth)},
      {"allow_auto_account", method(family, &AccountFamily::allowAutoAccount)},
      {"login_auto", method(family, &AccountFamily::loginAuto)},
      {"logout", method(family, &AccountFamily::logout)},
      {"request_accounting_data", method(family, &AccountFamily::reportAccounting)},
      {"request_directory_url", method(family, &AccountFamily::reportDirectory)},
      {"set_directory_domain", method(family, &AccountFamily::setDomain)},
      {"set_directory_gateway_uri", method(family, &AccountFamily::setGateway)},
  };
}

}  // namespace zephsim
