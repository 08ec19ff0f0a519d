// Stores errors in records.
#pragma once

#include <cstdint>

#include "zephlinksdk/errors.h"
#include "zephlinksdk/records.h"

namespace zephlinksdk {

/// Sets the code, the message (cut to the field; null counts as empty) and `hasError` (true unless the code is 0).
void setError(ZephlinkSDK_Result& head, std::uint32_t code, const char* message);

/// Sets the code with its default message.
void setError(ZephlinkSDK_Result& head, std::uint32_t code);

/// Returns the head of any record.
inline ZephlinkSDK_Result& headOf(ZephlinkSDK_Result& record) { return record; }
template <class Record>
ZephlinkSDK_Result& headOf(Record& record) {
  return record.head;
}

/// Returns the record of a call that is refused before anything is sent. Single return so that a large record is built
/// in place (NRVO).
template <class Record>
Record refused(std::uint32_t code) {
  Record record{};
  setError(headOf(record), code);
  return record;
}

}  // namespace zephlinksdk
