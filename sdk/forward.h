// Forwards the functions of the library to the methods of its class.
#pragma once

#include <exception>

#include "sdk/errors.h"
#include "sdk/zephlink_sdk.h"

namespace zephlinksdk {

/// Calls the method. A null `sdk` is refused with ZephlinkSDK_Error_InvalidArgument. Exceptions become an error record
/// with ZephlinkSDK_Error_Sdk: none may reach a host.
template <class Record, class... Parameters, class... Arguments>
Record forward(ZephlinkSDK* sdk, Record (ZephlinkSDK::*method)(Parameters...), Arguments... arguments) {
  if (sdk == nullptr) return refused<Record>(ZephlinkSDK_Error_InvalidArgument);
  try {
    return (sdk->*method)(arguments...);
  } catch (const std::exception&) {
    return refused<Record>(ZephlinkSDK_Error_Sdk);
  }
}

}  // namespace zephlinksdk
