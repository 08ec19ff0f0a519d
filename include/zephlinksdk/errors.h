// The error codes. C11 and C++20.
#pragma once

#include <stdint.h>

#include "zephlinksdk/language.h"

/// The values of a record's `errorCode`. A daemon may send codes that are not listed.
enum ZephlinkSDK_Error ZEPHLINKSDK_UINT32 {
  // From the daemon.
  ZephlinkSDK_Error_None = 0,                    ///< no error
  ZephlinkSDK_Error_Network = 1,                 ///< a network error of the daemon
  ZephlinkSDK_Error_Server = 2,                  ///< an error of the server
  ZephlinkSDK_Error_InvalidCredentials = 3,      ///< wrong user name, password or token
  ZephlinkSDK_Error_Directory = 4,               ///< an error of the directory service
  ZephlinkSDK_Error_Account = 5,                 ///< an issue with the account
  ZephlinkSDK_Error_TooManyRequests = 6,         ///< too many requests by this device
  ZephlinkSDK_Error_TokenExpired = 7,            ///< the OAuth token has expired
  ZephlinkSDK_Error_VpnAdapter = 8,              ///< the daemon cannot open or configure the tunnel's interface
  ZephlinkSDK_Error_Unknown = 9,                 ///< an unspecified error
  ZephlinkSDK_Error_DeviceLimit = 10,            ///< the account has too many devices
  ZephlinkSDK_Error_LockedByServer = 11,         ///< the server's configuration locks the setting
  ZephlinkSDK_Error_LockedByAccount = 12,        ///< the account's configuration locks the setting
  ZephlinkSDK_Error_DaemonInvalidArgument = 13,  ///< the daemon refused an argument
  // From the library.
  ZephlinkSDK_Error_AsyncCall = 3584,           ///< marks the immediate record of an asynchronous call: no error
  ZephlinkSDK_Error_Sdk = 3840,                 ///< another failure of the library or the system
  ZephlinkSDK_Error_Timeout = 3841,             ///< connected, but no report arrived within the time-out
  ZephlinkSDK_Error_InvalidArgument = 3842,     ///< an invalid argument; nothing was sent
  ZephlinkSDK_Error_CallbackRequired = 3843,    ///< the call delivers its result through a callback only
  ZephlinkSDK_Error_NotSupported = 3844,        ///< not supported on this platform
  ZephlinkSDK_Error_NotConnected = 3845,        ///< not connected to the daemon within the time-out
  ZephlinkSDK_Error_SyncCallInCallback = 3846,  ///< a synchronous call in a callback would deadlock
};
ZEPHLINKSDK_ENUM(ZephlinkSDK_Error);

#ifdef __cplusplus
extern "C" {
#endif

/// Returns the text of an error code, a constant. Unlisted codes have the text of ZephlinkSDK_Error_Unknown.
/// Thread-safe.
const char* ZephlinkSDK_errorText(uint32_t code);

#ifdef __cplusplus
}
#endif
