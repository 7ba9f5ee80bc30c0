// The table of options is the one place an option is declared: each form's
// --help, the manual page and the README tell of every option the form
// takes, and the parser takes exactly those (the words of each refusal
// stand in the usage goldens). The registry of readers is likewise the one
// place a program whose output fits reads is declared: the help and the
// manual page describe every program it lists.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "base/errors.hpp"
#include "selection/fits/output_readers.hpp"
#include "tools/fits_command.hpp"
#include "tools/option_table.hpp"
#include "tools/selection_options.hpp"

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

// fits --help describes each program in an entry of its own, its name at
// the head: "  Mplus        the .out file. ...", in the order tried.
TEST(ProgramRegistry, FitsHelpDescribesEveryProgramInTheOrderTried) {
  const std::string help = FitsHelp();
  const std::size_t section = help.find("What each program must print");
  ASSERT_NE(section, std::string::npos);
  std::istringstream lines(help.substr(section));
  std::vector<std::string> described;
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() && !described.empty()) break;  // after the last entry
    if (line.size() > 2 && line.starts_with("  ") && line[2] != ' ') {
      described.push_back(line.substr(2, line.find(' ', 2) - 2));
    }
  }
  std::vector<std::string> registered;
  for (const auto& reader : selection::fits::OutputReaders()) registered.emplace_back(reader.program);
  EXPECT_EQ(described, registered);
}

TEST(ProgramRegistry, TheManualAndTheSummaryNameEveryProgram) {
  const std::string outputs = ManualSection(".SH PROGRAM OUTPUTS", ".SH SEE ALSO");
  // "... printed outputs (R, lavaan, Mplus,\nstatsmodels, ...), listed ..."
  std::string summary(SelectionSummary());
  summary = summary.substr(summary.find("outputs (") + 9);
  summary = ", " + summary.substr(0, summary.find(')')) + ",";
  for (char& c : summary) c = c == '\n' ? ' ' : c;
  for (const auto& reader : selection::fits::OutputReaders()) {
    const std::string program(reader.program);
    EXPECT_NE(outputs.find(".SS " + program + "\n"), std::string::npos) << "manual: " << program;
    EXPECT_NE(summary.find(" " + program + ","), std::string::npos) << "drav-report --help: " << program;
  }
}

}  // namespace
}  // namespace drav::cli
