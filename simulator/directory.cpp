#include "simulator/directory.h"

#include <functional>
#include <sstream>
#include <vector>

#include "simulator/json.h"

namespace zephsim {
namespace {

constexpr char kPrivatePrefix[] = "private";

/// `count` servers of one place, numbered from 1.
struct Place {
  const char* country;
  const char* city;
  const char* dataCenter;
  int count;
  bool isPrivate;
  bool torrent;
};

// Two cities and one country are keys that clients do not know.
constexpr Place kPlaces[] = {
    {"de", "frankfurt", "fra-1", 4, false, true},    {"nl", "amsterdam", "ams-2", 4, false, true},
    {"gb", "london", "lon-1", 4, false, false},      {"fr", "paris", "par-1", 3, false, false},
    {"ch", "zurich", "zrh-1", 2, false, true},       {"se", "stockholm", "sto-1", 2, false, true},
    {"it", "milano", "mil-1", 2, false, false},      {"es", "madrid", "mad-1", 2, false, false},
    {"pl", "warsaw", "waw-1", 2, false, false},      {"cz", "prague", "prg-1", 1, false, true},
    {"at", "vienna", "vie-1", 1, false, false},      {"dk", "copenhagen", "cph-1", 1, false, false},
    {"us", "nyc", "nyc-3", 5, false, false},         {"us", "la", "lax-1", 3, false, false},
    {"us", "chicago", "chi-1", 2, false, false},     {"us", "nova", "iad-2", 2, false, false},
    {"us", "springfield", "spr-1", 1, false, false}, {"ca", "bhs", "bhs-1", 2, false, true},
    {"ca", "toronto", "tor-1", 2, false, false},     {"br", "saopaulo", "gru-1", 2, false, false},
    {"co", "bogota", "bog-1", 1, false, false},      {"jp", "tokyo", "tyo-1", 3, false, false},
    {"hk", "kowloon", "hkg-1", 2, false, false},     {"sg", "singapore", "sin-1", 2, false, true},
    {"au", "sydney", "syd-1", 2, false, false},      {"za", "johannesburg", "jnb-1", 1, false, false},
    {"xk", "pristina", "prn-1", 1, false, false},    {"de", "dusseldorf", "dus-p", 2, true, true},
    {"us", "nyc", "nyc-p", 2, true, true},           {"jp", "tokyo", "tyo-p", 1, true, true},
};

const char* yesNo(bool value) { return value ? "yes" : "no"; }

/// Returns an address from the ranges reserved for documentation.
std::string documentationAddress(const char* prefix, Json::ArrayIndex index) {
  return prefix + std::to_string(1 + index % 250);
}

Json::Value makeServer(const Place& place, int number, Json::ArrayIndex index) {
  return object(
      {{"country", std::string(place.isPrivate ? kPrivatePrefix : "") + place.country},
       {"city", place.city},
       {"num", std::to_string(number)},
       {"private", yesNo(place.isPrivate)},
       {"torrent", yesNo(place.torrent)},
       {"publicIP", array({documentationAddress("203.0.113.", index), documentationAddress("2001:db8::", index)})},
       {"dnsIP", array({documentationAddress("198.51.100.", index)})},
       {"dc", place.dataCenter}});
}

Json::Value makeProxy() {
  return object({{"country", "proxy"}, {"city", ""}, {"num", "0"}, {"private", "no"}, {"torrent", "no"}, {"dc", ""}});
}

using Test = std::function<bool(const Json::Value& server)>;

Json::Value firstOf(const Json::Value& servers, const Test& fits) {
  for (const Json::Value& server : servers) {
    if (fits(server)) return server;
  }
  return Json::nullValue;
}

std::vector<std::string> split(const std::string& text) {
  std::vector<std::string> pieces;
  std::istringstream stream(text);
  for (std::string piece; std::getline(stream, piece, '|');) pieces.push_back(piece);
  return pieces;
}

/// Finds a server by a place; an empty or missing part matches any.
Json::Value serverAt(const Json::Value& servers, const std::string& place) {
  static constexpr const char* kKeys[] = {"country", "city", "num"};
  const std::vector<std::string> pieces = split(place);
  if (pieces.empty() || pieces.size() > std::size(kKeys)) return Json::nullValue;
  return firstOf(servers, [&](const Json::Value& server) {
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      if (!pieces[i].empty() && server[kKeys[i]] != pieces[i]) return false;
    }
    return true;
  });
}

bool isPrivate(const Json::Value& server) { return server["private"] == "yes"; }

}  // namespace

Json::Value makeDirectory() {
  Json::Value servers(Json::arrayValue);
  for (const Place& place : kPlaces) {
    for (int number = 1; number <= place.count; ++number) {
      servers.append(makeServer(place, number, servers.size()));
    }
  }
  return servers;
}

Json::Value chooseServer(const ServerChoice& choice) {
  const std::string& text = choice.text;
  if (text == "proxy") return makeProxy();
  if (text == "auto" || text == "user") return firstOf(choice.all, [](const Json::Value&) { return true; });
  if (text == "userpublic") return firstOf(choice.all, [](const Json::Value& server) { return !isPrivate(server); });
  if (text == "userprivate") return firstOf(choice.all, isPrivate);
  if (text == "p2p") return firstOf(choice.all, [](const Json::Value& server) { return server["torrent"] == "yes"; });
  if (text == "last" && !choice.last.isNull()) return choice.last;
  if (text == "last") return chooseServer({"user", choice.all, choice.last});
  if (text == "ignorelast")
    return firstOf(choice.all, [&](const Json::Value& server) { return server != choice.last; });
  return serverAt(choice.all, text.substr(0, 1) == "#" ? text.substr(1) : text);
}

}  // namespace zephsim
