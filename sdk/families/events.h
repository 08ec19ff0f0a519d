// The names of events that several families use. Other names are in their family's file.
#pragma once

namespace zephlinksdk {

inline constexpr const char* kRequestState = "request_current_state";
inline constexpr const char* kReportState = "report_current_state";
inline constexpr const char* kReportLoginError = "report_login_error";
inline constexpr const char* kReportShares = "report_networksharing_sharesavailable";
inline constexpr const char* kSetFirewallPorts = "set_firewall_ports";

}  // namespace zephlinksdk
