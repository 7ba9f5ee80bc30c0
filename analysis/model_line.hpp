#pragma once
#include <cstddef>
#include <string>
#include <string_view>

#include "analysis/number_scanner.hpp"

namespace drav {

// What the report uses of one line of a model file, gathered as the line
// streams by: the start of the first field, enough for the eight characters
// of a name, and the second field, kept as read while it is short and
// otherwise by the number at its start. Anything behind the second field is
// skipped unseen, so a line of a gigabyte takes no more memory than one of
// ten bytes. A tab and a comma both end a field; the platform's line end,
// the third separator of a model line, never stands inside a line.
class ModelLine {
 public:
  // Bytes kept of the name: eight characters of at most four bytes each,
  // and room to see that the eighth is complete.
  static constexpr std::size_t kNameBytes = 64;
  // Bytes of the AIC field kept as read; a longer field is kept by its value.
  static constexpr std::size_t kAicBytes = 256;

  void Add(std::string_view piece);

  // The first field, cut somewhere behind its eighth character; valid UTF-8.
  std::string Name() const;
  // The second field as read, or for a long one a short text that Val reads
  // to the same number; valid UTF-8.
  std::string AicText() const;

 private:
  int field_ = 0;  // 0 the name, 1 the AIC, 2 behind both
  std::string name_;
  std::string aic_;
  std::size_t aicLength_ = 0;
  NumberScanner number_;
};

}  // namespace drav
