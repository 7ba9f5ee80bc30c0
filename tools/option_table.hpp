#pragma once
// Every option of drav-report's command forms, declared once: its name, the
// value it takes and the choices of that value, the forms that take it and
// its lines in --help. The parser, each form's --help, the bash completion
// and the checks of the manual page and the README all read this table, so
// a new option is one more row.
#include <span>
#include <string>
#include <string_view>

#include "tools/selection_options.hpp"

namespace drav::cli {

// The command forms that take options, as bits of Option::forms.
enum Form : unsigned {
  kTable = 1,       // table, and table --fits
  kAverage = 2,     // average, and average --all
  kImportance = 4,  // importance
  kFits = 8,        // fits
};
inline constexpr unsigned kTermForms = kTable | kAverage | kImportance;

// The form a subcommand names: kTable for "table", and so on.
Form FormNamed(std::string_view subcommand);

struct Option {
  std::string_view name;     // as given, "--criterion"
  std::string_view value;    // the value's name in help ("COLUMN"); empty for a flag
  std::string_view choices;  // the values it may take, split by '|'; empty where any
  unsigned forms;            // the forms that take it
  // Its lines in the forms' --help, name and value first, wrapped as they
  // print; empty where the row above tells of this one too (--k and --n).
  std::string_view help;
  // Takes the value (empty for a flag) into the options; throws UsageError
  // for a value it cannot take.
  void (*take)(SelectionOptions& options, std::string_view value, Form form);
};

std::span<const Option> Options();

// The options of any of `forms`, in their order in the table: the lines of their
// --help under "Options:".
std::string OptionsHelp(unsigned forms);

// "NAME is A, B or C, not 'VALUE'": the refusal of a value outside an
// option's choices, worded from the table.
std::string NotAChoice(const Option& option, std::string_view value);

// The command line of `form` (argv[0] is its subcommand), every option
// taken as the table says and every other argument an input file. Throws
// UsageError for an option `form` does not take, a value missing or
// refused.
SelectionOptions ParseCommandLine(Form form, int argc, char** argv);

// A bash completion for drav-report, written from the table: the forms,
// their options, and the choices of each option's value.
std::string BashCompletion();

}  // namespace drav::cli
