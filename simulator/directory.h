// The servers that the simulated daemon can connect to.
#pragma once

#include <json/value.h>

#include <string>

namespace zephsim {

/// All servers in the form they have on the wire, the closest first.
Json::Value makeDirectory();

/// What is asked for, and what it is asked of.
struct ServerWish {
  std::string text;         ///< a keyword, or country, city and number joined by "|", with a leading "#" or not
  const Json::Value& all;   ///< of `makeDirectory`
  const Json::Value& last;  ///< the server of the last session, or null
};

/// The server that fits best, or null if there is none.
Json::Value chooseServer(const ServerWish& wish);

}  // namespace zephsim
