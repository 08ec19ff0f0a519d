// Fuzzes connect codes: Base64 of JSON that contains the host.
//
// Decoding inverts encoding and accepts only the valid groups at the start of a text. A code is sent unchanged exactly
// if it decodes to an object with a host.
#include "base/base64.h"
#include "fuzz/at_once.h"
#include "fuzz/check.h"
#include "sdk/link/json.h"
#include "zephlinksdk/zephlinksdk.h"

namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string encode(std::string_view bytes) {
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    const std::string_view group = bytes.substr(at, 3);
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 3; ++i)
      bits = bits << 8U | (i < group.size() ? static_cast<std::uint8_t>(group[i]) : 0);
    for (std::size_t i = 0; i < 4; ++i) text += i <= group.size() ? kAlphabet[bits >> (18 - 6 * i) & 63U] : '=';
  }
  return text;
}

void checkDecoding(std::string_view text) {
  fuzz::check(zephlinksdk::decodeBase64(encode(text)) == text, "decoding inverts encoding", text);
  const std::string bytes = zephlinksdk::decodeBase64(text);
  fuzz::check(bytes.size() <= text.size() / 4 * 3, "four characters give three bytes at most", text);
  // The last group may contain unused bits.
  const std::string again = encode(bytes);
  const std::size_t certain = bytes.size() / 3 * 4;
  fuzz::check(text.substr(0, certain) == std::string_view(again).substr(0, certain),
              "decoded bytes equal the encoded ones", text);
  fuzz::check(text.size() >= again.size(), "padding is required", text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static zephlinksdk::ZephlinkSDK* const sdk = fuzz::makeSdk();
  const std::string_view text = fuzz::textOf(data, size);
  checkDecoding(text);

  const std::string code(text.substr(0, text.find('\0')));
  Json::Value content;
  const bool readable = fuzz::parseJson(zephlinksdk::decodeBase64(code), content);
  const bool named = readable && content.isObject() && content.isMember("u");

  fuzz::answerWith({});
  const auto record = ZephlinkSDK_connectToNetworkShareViaConnectCode(sdk, code.c_str(), nullptr, nullptr);
  fuzz::check(record.hasError, "an unanswered call ends in an error", code);
  fuzz::check(record.errorCode == (named ? ZephlinkSDK_Error_Timeout : ZephlinkSDK_Error_InvalidArgument),
              "a code is refused exactly when it names no host", code);
  fuzz::check(fuzz::sentRequests().size() == (named ? 1 : 0), "a refused code is not sent", code);
  if (!named) return 0;
  Json::Value request;
  fuzz::parseJson(fuzz::sentRequests()[0], request);
  // Only valid Base64 characters are unchanged in JSON; an invalid rest may not be UTF-8.
  const std::string sent = zephlinksdk::asString(zephlinksdk::member(request[1], "connect_code"));
  fuzz::check(zephlinksdk::decodeBase64(sent) == zephlinksdk::decodeBase64(code), "a code is sent unchanged", code);
  return 0;
}
