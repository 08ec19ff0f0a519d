// Reads and writes real numbers in JSON texts as in the C locale, whatever the process's locale.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zephlinksdk {

/// The numbers with a fraction or an exponent in a JSON text, for a parser that reads reals by the global locale. The
/// parser gets text(), in which each of them is replaced by an integer 0 of the same length; at() returns the values.
class JsonReals {
 public:
  /// REQUIRES: `json` outlives this object. It need not be well-formed.
  explicit JsonReals(std::string_view json);

  bool empty() const { return reals.empty(); }

  /// Returns the text to parse. Up to the first error in the text, everything else is unchanged and keeps its offset.
  std::string_view text() const { return empty() ? original : zeroed; }

  /// Returns the real that starts at this offset of the text, or null.
  const double* at(std::ptrdiff_t offset) const;

 private:
  struct Real {
    std::size_t offset;
    double value;
  };

  void addReal(std::size_t begin, std::size_t end);

  std::string_view original;
  std::string zeroed;
  std::vector<Real> reals;  // ordered by offset
};

/// Returns the number as JSON with 17 significant digits, always with a point or an exponent. NaN is written as `null`,
/// infinity as `1e+9999` with its sign.
std::string realText(double real);

}  // namespace zephlinksdk
