// The table of options is the one place an option is declared: each form's
// --help, the manual page and the README tell of every option the form
// takes, and the parser takes exactly those. (The words of each refusal
// stand in the usage goldens.)
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "base/errors.hpp"
#include "tools/option_table.hpp"

namespace drav::cli {
namespace {

constexpr std::pair<const char*, Form> kForms[] = {
    {"table", kTable}, {"average", kAverage}, {"importance", kImportance}, {"fits", kFits}};

std::string Source(const std::string& path) {
  std::ifstream in(std::string(DRAV_SOURCE_DIR) + "/" + path);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

// The manual page's text between two headings, its escaped dashes plain.
std::string ManualSection(const std::string& from, const std::string& to) {
  std::string page;
  for (const char c : Source("packaging/drav-report.1")) {
    if (c == '-' && !page.empty() && page.back() == '\\') page.pop_back();
    page += c;
  }
  const std::size_t begin = page.find(from);
  return page.substr(begin, page.find(to, begin) - begin);
}

// What the parser says of `words` given to `form`, or "" where it takes them.
std::string Refusal(Form form, std::vector<std::string> words) {
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  try {
    ParseCommandLine(form, static_cast<int>(argv.size()), argv.data());
  } catch (const selection::UsageError& error) {
    return error.what();
  }
  return "";
}

TEST(OptionTable, EveryOptionIsToldWhereItsFormIsTold) {
  const std::string readme = Source("README.md");
  const std::string tables = ManualSection(".SS Options", ".SH PROGRAM OUTPUTS");
  const std::string outputs = ManualSection(".SH PROGRAM OUTPUTS", ".SH SEE ALSO");
  for (const Option& option : Options()) {
    const std::string name(option.name);
    for (const auto& [formName, form] : kForms) {
      if ((option.forms & form) != 0) {
        EXPECT_NE(OptionsHelp(form).find(name), std::string::npos) << formName << " --help: " << name;
      }
    }
    EXPECT_NE(readme.find(name), std::string::npos) << "README: " << name;
    EXPECT_NE(((option.forms & kFits) != 0 ? outputs : tables).find(name), std::string::npos) << "manual: " << name;
  }
}

TEST(OptionTable, EachFormTakesItsOwnOptionsOnly) {
  for (const Option& option : Options()) {
    const std::string name(option.name);
    for (const auto& [formName, form] : kForms) {
      if ((option.forms & form) != 0) continue;
      // Another row may declare the name for this form.
      bool elsewhere = false;
      for (const Option& other : Options()) elsewhere = elsewhere || (other.name == option.name && (other.forms & form));
      if (elsewhere) continue;
      EXPECT_EQ(Refusal(form, {formName, name, "x", "f"}), "unknown option " + name + " for " + formName);
    }
  }
  EXPECT_EQ(Refusal(kTable, {"table", "--strict=yes", "f"}), "--strict takes no value");
  EXPECT_EQ(Refusal(kTable, {"table", "--", "--by"}), "");  // a file named --by
}

}  // namespace
}  // namespace drav::cli
