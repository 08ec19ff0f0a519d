// Error codes, their texts, and the one way to put an error into a record.
#pragma once

#include <cstdint>

#include "sdk/results.h"

/// What a record's `errorCode` may hold. A daemon may send codes that are not listed.
enum ZephlinkSDK_Error : uint32_t {
  // From the daemon.
  ZephlinkSDK_Error_None = 0,
  ZephlinkSDK_Error_Network = 1,
  ZephlinkSDK_Error_Server = 2,
  ZephlinkSDK_Error_InvalidCredentials = 3,
  ZephlinkSDK_Error_Directory = 4,
  ZephlinkSDK_Error_Account = 5,
  ZephlinkSDK_Error_TooManyRequests = 6,
  ZephlinkSDK_Error_TokenExpired = 7,
  ZephlinkSDK_Error_VpnAdapter = 8,
  ZephlinkSDK_Error_Unknown = 9,
  ZephlinkSDK_Error_DeviceLimit = 10,
  ZephlinkSDK_Error_LockedByServer = 11,
  ZephlinkSDK_Error_LockedByAccount = 12,
  ZephlinkSDK_Error_DaemonInvalidArgument = 13,
  // Made by the library.
  ZephlinkSDK_Error_AsyncCall = 3584,  ///< marks the immediate record of an asynchronous call; `hasError` is false
  ZephlinkSDK_Error_Sdk = 3840,        ///< no channel to the daemon exists, or a failure without a code of its own
  ZephlinkSDK_Error_Timeout = 3841,    ///< connected, but no report came in time
  ZephlinkSDK_Error_InvalidArgument = 3842,     ///< refused before anything was sent
  ZephlinkSDK_Error_CallbackRequired = 3843,    ///< the call has no result other than through a callback
  ZephlinkSDK_Error_NotSupported = 3844,        ///< not on this platform
  ZephlinkSDK_Error_NotConnected = 3845,        ///< the time ran out without a connection to the daemon
  ZephlinkSDK_Error_SyncCallInCallback = 3846,  ///< a synchronous call from a callback would wait for itself
};

namespace zephlinksdk {

/// The text of a code, a constant; codes that are not listed have the text of ZephlinkSDK_Error_Unknown.
const char* errorText(uint32_t code);

/// Stores the code, the message (cut to the field; null counts as empty) and `hasError`, true if the code is not 0.
void setError(ZephlinkSDK_Result& record, uint32_t code, const char* message);

/// The same with the code's own text as message.
void setError(ZephlinkSDK_Result& record, uint32_t code);

/// The record of a call that is refused before anything is sent. Its one return keeps a large record single: it is made
/// in the caller's place.
template <class Record>
Record refused(uint32_t code) {
  Record record{};
  setError(record, code);
  return record;
}

}  // namespace zephlinksdk
