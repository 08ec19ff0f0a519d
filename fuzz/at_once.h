// Replaces the channel's table and all waiting: each call is answered while it is made, on the caller's thread, with
// the reports that a target has prepared, followed by a time-out.
#pragma once

#include <string>
#include <vector>

#include "sdk/zephlink_sdk.h"

namespace fuzz {

/// Sets the answers of later calls. Each text is the data of a report, delivered under every name that a call awaits.
/// Text that is not JSON is delivered like an unreadable message.
void answerWith(std::vector<std::string> reports);

/// Returns the requests of all calls since the last `answerWith`. Each was checked to be one line of JSON of the right
/// form.
const std::vector<std::string>& sentRequests();

/// Returns an object whose channel finds no daemon.
zephlinksdk::ZephlinkSDK* makeSdk();

}  // namespace fuzz
