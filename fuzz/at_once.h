// Takes the place of the channel's table and of all waiting: each call is answered while it is made, on the caller's
// thread, with the reports that a target has laid out, and at the end with a time-out.
#pragma once

#include <string>
#include <vector>

#include "sdk/zephlink_sdk.h"

namespace fuzz {

/// What answers the calls from now on. Each text is a report's data, given under every name that a call awaits; one
/// that is no JSON stands for what a broken message leaves.
void answerWith(std::vector<std::string> reports);

/// The requests of all calls since the last `answerWith`, each checked to be one line of JSON of the right form.
const std::vector<std::string>& sentRequests();

/// An object whose channel finds no daemon.
zephlinksdk::ZephlinkSDK* makeSdk();

}  // namespace fuzz
