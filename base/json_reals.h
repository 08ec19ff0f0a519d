// Real numbers in JSON texts: read and written as in the C locale, whatever locales the process has set.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zephlinksdk {

/// The numbers of a JSON text that have a fraction or an exponent, for a parser that reads reals by the global locale:
/// it parses text(), where each of them is an integer 0 of the same length, and at() has the values.
class JsonReals {
 public:
  /// REQUIRES: `json` outlives this object. It need not be well-formed.
  explicit JsonReals(std::string_view json);

  bool empty() const { return reals.empty(); }

  /// Returns the text to parse. Up to the first error in it, all else has its place and form.
  std::string_view text() const { return empty() ? original : zeroed; }

  /// Returns the real that begins at this offset of the text; null if there is none.
  const double* at(std::ptrdiff_t offset) const;

 private:
  struct Real {
    std::size_t offset;
    double value;
  };

  void addReal(std::size_t begin, std::size_t end);

  std::string_view original;
  std::string zeroed;
  std::vector<Real> reals;  // in the order of their offsets
};

/// Returns the number as JSON with 17 significant digits, always with a point or an exponent. Numbers that JSON lacks
/// are `null` and `1e+9999`, with a sign if negative.
std::string realText(double real);

}  // namespace zephlinksdk
