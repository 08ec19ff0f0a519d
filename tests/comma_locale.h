// A locale that writes numbers as 1.234.567,5. Requires no data of the system.
#pragma once

#include <locale>
#include <string>

namespace tests {

/// Sets the global locale during its lifetime.
class CommaLocale {
 public:
  CommaLocale() : before(std::locale::global(std::locale(std::locale(), new Punctuation))) {}
  ~CommaLocale() { std::locale::global(before); }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

 private:
  struct Punctuation : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };

  std::locale before;
};

}  // namespace tests
