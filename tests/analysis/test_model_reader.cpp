#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "analysis/model_reader.hpp"
#include "analysis/number_scanner.hpp"
#include "tests/analysis/temp_file.hpp"

namespace drav {
namespace {

// How each line of an ordinary file is read is the classic goldens'
// (tests/golden/classic.batch). Here lines far longer than anything kept of
// them, past several chunks of the stream: the name is still cut to its
// eight characters, the value read in full and kept as the scanner's
// stand-in, and the next line found.
TEST(ReadModels, HugeFieldsAreCutButReadInFull) {
  const std::size_t huge = 3 * TextInputStream::kChunkSize + 17;
  const std::string contents = "\xC3\xA9" + std::string(huge, 'n') + "\t-1" + std::string(huge, '0') + "e-" +
                               std::to_string(huge) + "\t" + std::string(huge, 'x') + "\n" +
                               std::string(huge, 'm') + ",7.25\n" + "c," + std::string(huge, '9') + "\n";
  TextTable text(3, kTextColumns);
  NumberTable stat(3, kStatColumns);
  TextInputStream stream = testing_support::OpenAsRunDoes(contents);
  ReadModels(stream, 3, text, stat);
  EXPECT_EQ(text(1, kNameColumn), "\xC3\xA9nnnnnnn");
  EXPECT_EQ(text(1, kAicTextColumn), "-0.1" + std::string(NumberScanner::kMaxDigits - 1, '0') + "e1");
  EXPECT_EQ(stat(1, kAicColumn), -1);
  EXPECT_EQ(text(2, kNameColumn), "mmmmmmmm");
  EXPECT_EQ(stat(2, kAicColumn), 7.25);
  EXPECT_EQ(text(3, kAicTextColumn), "0." + std::string(NumberScanner::kMaxDigits, '9') + "1e" + std::to_string(huge));
  EXPECT_EQ(stat(3, kAicColumn), std::numeric_limits<double>::max());
}

}  // namespace
}  // namespace drav
