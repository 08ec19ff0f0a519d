// The servers that the simulated daemon can connect to.
#pragma once

#include <json/value.h>

#include <string>

namespace zephsim {

/// Returns all servers in their wire format, the closest first.
Json::Value makeDirectory();

/// A request for a server, and the servers to choose from.
struct ServerChoice {
  std::string text;         ///< a keyword, or country, city and number joined by "|", optionally with a leading "#"
  const Json::Value& all;   ///< from `makeDirectory`
  const Json::Value& last;  ///< the server of the last session, or null
};

/// Returns the server that fits best; null if none does.
Json::Value chooseServer(const ServerChoice& choice);

}  // namespace zephsim
