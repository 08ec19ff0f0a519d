// The form of every callback.
#pragma once

namespace zephlinksdk {

/// Gets a record, by value, and the user data of its call, on the channel thread. What it returns counts for
/// subscriptions alone: false ends one.
template <class Record>
using Callback = bool (*)(Record, void*);

}  // namespace zephlinksdk
