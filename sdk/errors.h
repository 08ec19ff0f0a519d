// How errors get into records.
#pragma once

#include <cstdint>

#include "zephlinksdk/errors.h"
#include "zephlinksdk/records.h"

namespace zephlinksdk {

/// Stores the code, the message (cut to the field; null counts as empty) and `hasError`, true if the code is not 0.
void setError(ZephlinkSDK_Result& head, std::uint32_t code, const char* message);

/// The same with the code's own text as message.
void setError(ZephlinkSDK_Result& head, std::uint32_t code);

/// The head of any record.
inline ZephlinkSDK_Result& headOf(ZephlinkSDK_Result& record) { return record; }
template <class Record>
ZephlinkSDK_Result& headOf(Record& record) {
  return record.head;
}

/// The record of a call that is refused before anything is sent. Single return so that a large record is built in
/// place.
template <class Record>
Record refused(std::uint32_t code) {
  Record record{};
  setError(headOf(record), code);
  return record;
}

}  // namespace zephlinksdk
