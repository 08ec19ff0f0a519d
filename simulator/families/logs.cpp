// The daemon's log files: settings, erasing, and problem reports with a ticket.
#include "simulator/families.h"
#include "simulator/json.h"
#include "simulator/setters.h"

namespace zephsim {
namespace {

using namespace std::chrono_literals;

constexpr unsigned kFirstTicket = 10001;

std::int64_t requiredSize(const Json::Value& members, const char* member) {
  const std::int64_t size = required(members, member, Kind::Whole).asInt64();
  if (size < 0) throw Refusal{Fault::InvalidArgument, std::string(member) + " may not be negative"};
  return size;
}

class Logs {
 public:
  explicit Logs(Daemon& owner) : daemon(owner) {
    settings->value["daemon"] =
        object({{"file_size", 1048576}, {"files_per_daemon", 5}, {"total_files", 20}, {"log_level", "info"}});
  }

  void reportSettings(const Json::Value&) { daemon.report(*settings); }

  void setSettings(const Json::Value& members) {
    static const Words kLevels = {"verbose", "info", "warn", "error"};
    const Json::Value& requested = members["daemon"];
    settings->value["daemon"] = object({{"file_size", Json::Int64{requiredSize(requested, "file_size")}},
                                        {"files_per_daemon", Json::Int64{requiredSize(requested, "files_per_daemon")}},
                                        {"total_files", Json::Int64{requiredSize(requested, "total_files")}},
                                        {"log_level", requiredWord(requested, "log_level", kLevels)}});
    daemon.report(*settings);
  }

  void sendReport(const Json::Value& members) {
    const std::string email = requiredText(members, "email");
    daemon.after(800ms, [this, email] {
      if (email.find('@') == std::string::npos) {
        return daemon.fault("report_log_result", Fault::InvalidArgument, "The e-mail address is not valid");
      }
      daemon.report("report_log_result",
                    object({{"type", 0}, {"msg", ""}, {"ticket_id", "ZS-" + std::to_string(nextTicket++)}}));
    });
  }

 private:
  Daemon& daemon;
  const SharedRecord settings = std::make_shared<Record>(Record{"report_log_settings"});
  unsigned nextTicket = kFirstTicket;
};

}  // namespace

std::vector<Request> logsFamily(Daemon& daemon) {
  const auto family = std::make_shared<Logs>(daemon);
  return {
      {"request_log_settings", method(family, &Logs::reportSettings)},
      {"set_daemon_log_settings", method(family, &Logs::setSettings)},
      {"send_log_report", method(family, &Logs::sendReport)},
      {"erase_all_log_files", [](Daemon&, const Json::Value&) {}},  // there are no log files
  };
}

}  // namespace zephsim
