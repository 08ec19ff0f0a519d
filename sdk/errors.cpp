#include "sdk/errors.h"

#include "base/text.h"

namespace zephlinksdk {
namespace {

struct ErrorRow {
  uint32_t code;
  const char* text;
};

constexpr char kUnknownError[] = "Unknown error";

constexpr ErrorRow kErrors[] = {
    {ZephlinkSDK_Error_None, "No error"},
    {ZephlinkSDK_Error_Network, "Network related error"},
    {ZephlinkSDK_Error_Server, "An error occurred on the server"},
    {ZephlinkSDK_Error_InvalidCredentials, "Invalid credentials"},
    {ZephlinkSDK_Error_Directory, "Directory related error"},
    {ZephlinkSDK_Error_Account, "An issue with the account being used"},
    {ZephlinkSDK_Error_TooManyRequests, "Too many requests are being made by this device"},
    {ZephlinkSDK_Error_TokenExpired, "The provided OAUTH token is expired"},
    {ZephlinkSDK_Error_VpnAdapter, "Error opening or configuring the VPN adapter"},
    {ZephlinkSDK_Error_Unknown, kUnknownError},
    {ZephlinkSDK_Error_DeviceLimit, "Device limit has been reached"},
    {ZephlinkSDK_Error_LockedByServer, "Setting locked by server configuration"},
    {ZephlinkSDK_Error_LockedByAccount, "Setting locked by account configuration"},
    {ZephlinkSDK_Error_DaemonInvalidArgument, "An invalid argument was supplied"},
    {ZephlinkSDK_Error_AsyncCall, "Result is an async call SDK"},
    {ZephlinkSDK_Error_Sdk, "An error in the SDK"},
    {ZephlinkSDK_Error_Timeout, "Timeout waiting for result"},
    {ZephlinkSDK_Error_InvalidArgument, "An invalid argument was supplied"},
    {ZephlinkSDK_Error_CallbackRequired, "A callback is required for this call"},
    {ZephlinkSDK_Error_NotSupported, "Platform does not support this call"},
    {ZephlinkSDK_Error_NotConnected, "Not able to establish connection to daemon"},
    {ZephlinkSDK_Error_SyncCallInCallback, "Synchronous call used from within asynchronous callback. Not supported"},
};

}  // namespace

void setError(ZephlinkSDK_Result& head, std::uint32_t code, const char* message) {
  head.hasError = code != ZephlinkSDK_Error_None;
  head.errorCode = code;
  copyText(head.errorMessage, message != nullptr ? message : "");
}

void setError(ZephlinkSDK_Result& head, std::uint32_t code) { setError(head, code, ZephlinkSDK_errorText(code)); }

}  // namespace zephlinksdk

const char* ZephlinkSDK_errorText(uint32_t code) {
  for (const auto& row : zephlinksdk::kErrors) {
    if (row.code == code) return row.text;
  }
  return zephlinksdk::kUnknownError;
}
