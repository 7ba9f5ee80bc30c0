#include "base/diagnostics.hpp"

#include <utility>

#include "base/errors.hpp"

namespace drav::selection {

std::string Describe(const Diagnostic& diagnostic) {
  std::string text;
  if (!diagnostic.file.empty()) {
    text += diagnostic.file;
    if (diagnostic.line > 0) text += ':' + std::to_string(diagnostic.line);
    text += ": ";
  }
  return text + diagnostic.text;
}

void Diagnostics::Note(std::string text, std::string file, std::int64_t line, std::string column) {
  items_.push_back({Severity::Note, std::move(file), line, std::move(column), std::move(text)});
}

void Diagnostics::Warn(std::string text, std::string file, std::int64_t line, std::string column) {
  Add({Severity::Warning, std::move(file), line, std::move(column), std::move(text)});
}

void Diagnostics::Add(Diagnostic diagnostic) {
  if (diagnostic.severity != Severity::Warning) {
    items_.push_back(std::move(diagnostic));
    return;
  }
  Diagnostic& warning = diagnostic;
  if (strict_) {
    warning.text += " (--strict)";
    Refuse(std::move(warning));
  }
  items_.push_back(std::move(warning));
}

}  // namespace drav::selection
