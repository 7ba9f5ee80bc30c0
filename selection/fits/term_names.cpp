#include "selection/fits/term_names.hpp"

#include "base/errors.hpp"
#include "selection/fits/fit_files.hpp"
#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {

TermNames TermNames::Read(const std::string& path) {
  std::string text;
  ReadWhole(path, text);
  const std::string name = path == "-" ? "standard input" : path;
  TermNames names;
  for (const TextLine& line : SplitLines(text)) {
    const std::string_view content = Trimmed(line.text);
    if (content.empty() || content.starts_with('#')) continue;
    const std::size_t tab = content.find('\t');
    const std::size_t equals = tab == std::string_view::npos ? content.find(" = ") : tab;
    const std::string_view printed = Trimmed(content.substr(0, equals));
    const std::string_view common =
        equals == std::string_view::npos ? std::string_view() : Trimmed(content.substr(equals + (tab == equals ? 1 : 3)));
    if (printed.empty() || common.empty()) {
      Refuse({.file = name, .line = line.number, .text = "maps no name: write the printed name, \" = \" and the name to "
                                                          "average it under, such as \"_cons = (Intercept)\"",
              .record = std::string(content)});
    }
    const auto [at, added] = names.names_.emplace(printed, common);
    if (!added && at->second != common) {
      Refuse({.file = name, .line = line.number,
              .text = "maps '" + std::string(printed) + "' a second time, to '" + std::string(common) + "' after '" +
                      at->second + "'"});
    }
  }
  return names;
}

const std::string& TermNames::Of(const std::string& printed) const {
  const auto at = names_.find(printed);
  return at == names_.end() ? printed : at->second;
}

}  // namespace drav::selection::fits
