#pragma once
// Everything a run has to tell besides its result: what Drav decided where
// the input left it open, what the user should look at, and why an input
// cannot give a result, each with where it lies. Every reader and every
// command form says trouble through this one list; the front end decides
// how to show it and what status to end with.
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace drav::selection {

enum class Severity {
  Note,     // a decision Drav took where the input left it open; never a reason to refuse
  Warning,  // something that may make a number wrong; --strict refuses the input for it
  Error,    // the input cannot give a result
};

struct Diagnostic {
  Severity severity = Severity::Note;
  // Each part given a default of its own, so that a diagnostic names only
  // the parts it knows: {.file = f, .line = l, .text = t}.
  std::string file{};     // as the user named it; empty where no one file is to blame
  std::int64_t line = 0;  // from 1; 0 where no one line is
  std::string column{};   // the column's name as its header writes it; empty where none
  std::string text{};     // what is the matter, and what the user can do; it names the column in its own words
  std::string record{};   // the record at fault, as the file has it; empty where none is
};

// "FILE:LINE: text", each part only where it is known: the one shape of
// every message.
std::string Describe(const Diagnostic& diagnostic);

// The list a run fills. With `strict`, a warning is a refusal at once: the
// one place where --strict acts.
class Diagnostics {
 public:
  explicit Diagnostics(bool strict = false) : strict_(strict) {}

  void Note(std::string text, std::string file = {}, std::int64_t line = 0, std::string column = {});
  // One made elsewhere, such as on a thread that reads ahead, told here in
  // its turn; a warning as Warn takes it.
  void Add(Diagnostic diagnostic);
  // Throws DataError with the warning's text when strict.
  void Warn(std::string text, std::string file = {}, std::int64_t line = 0, std::string column = {});

  const std::vector<Diagnostic>& All() const { return items_; }
  bool Strict() const { return strict_; }

  // Those not yet shown, which are then taken as shown: a run that shows
  // what it found and then fails shows each once.
  std::span<const Diagnostic> TakeUnshown() {
    const std::size_t from = std::exchange(shown_, items_.size());
    return std::span(items_).subspan(from);
  }

 private:
  bool strict_;
  std::vector<Diagnostic> items_;
  std::size_t shown_ = 0;
};

}  // namespace drav::selection
