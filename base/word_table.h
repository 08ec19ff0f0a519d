// A constant table that maps values to words (or numbers) and back.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <type_traits>

namespace zephlinksdk {

/// One row: a value and its external form.
template <typename Value, typename Outside>
struct WordRow {
  Value value;
  Outside outside;
};

/// All rows, and the external form of values without a row.
template <typename Value, typename Outside, std::size_t N>
struct WordTable {
  using Key = std::conditional_t<std::is_arithmetic_v<Outside>, Outside, std::string_view>;

  std::array<WordRow<Value, Outside>, N> rows;
  Outside otherwise;

  /// Returns the external form of `value`.
  constexpr Outside text(Value value) const {
    for (const auto& row : rows) {
      if (row.value == value) return row.outside;
    }
    return otherwise;
  }

  /// Returns the value with the external form `key`; words compare whole and case-sensitively. Finds rows only, never
  /// `otherwise`: the caller handles unknown keys.
  constexpr std::optional<Value> find(Key key) const {
    for (const auto& row : rows) {
      if (key == row.outside) return row.value;
    }
    return std::nullopt;
  }
};

/// Makes a table of words.
template <typename Value, std::size_t N>
constexpr auto wordTable(const WordRow<Value, const char*> (&rows)[N], const char* otherwise) {
  return WordTable<Value, const char*, N>{std::to_array(rows), otherwise};
}

/// Makes a table of numbers.
template <typename Value, std::size_t N>
constexpr auto numberTable(const WordRow<Value, int> (&rows)[N], int otherwise) {
  return WordTable<Value, int, N>{std::to_array(rows), otherwise};
}

}  // namespace zephlinksdk
