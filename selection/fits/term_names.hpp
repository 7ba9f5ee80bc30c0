#pragma once
// What --term-names FILE says: the name under which a term that one
// program prints one way and another program another ("_cons",
// "Intercept", "(Intercept)") is averaged, so that a set fitted in two
// programs can be. One mapping a line, the printed name and the common one
// split by a tab or by " = ":
//   _cons = (Intercept)
//   Intercept = (Intercept)
// Blank lines and lines starting with # are passed over.
#include <map>
#include <string>

namespace drav::selection::fits {

class TermNames {
 public:
  TermNames() = default;
  // Reads `path`. Throws IOException where it cannot be read, DataError
  // for a line that maps nothing or maps a name twice.
  static TermNames Read(const std::string& path);

  bool Empty() const { return names_.empty(); }
  // The common name of a printed one; a name the file does not map is its own.
  const std::string& Of(const std::string& printed) const;

 private:
  std::map<std::string, std::string, std::less<>> names_;
};

}  // namespace drav::selection::fits
