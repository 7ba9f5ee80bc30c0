#include "selection/fits/fit_files.hpp"

#include <glob.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "base/errors.hpp"
#include "base/runtime_exception.hpp"
#include "selection/fits/output_readers.hpp"
#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {
namespace {

// No statistics program prints a gigabyte for one run; a device of endless
// bytes would otherwise fill the memory.
constexpr std::size_t kMaxBytes = std::size_t{1} << 30;

// The line of text[at], numbered as SplitLines numbers them: LF, CR LF and
// CR each end one.
std::int64_t LineAt(std::string_view text, std::size_t at) {
  std::int64_t line = 1;
  for (std::size_t i = 0; i < at; ++i) {
    if (text[i] == '\n' || (text[i] == '\r' && text[i + 1] != '\n')) ++line;
  }
  return line;
}

}  // namespace

void ReadWhole(const std::string& path, std::string& text) {
  const bool standardInput = path == "-";
  const std::string name = standardInput ? "standard input" : path;
  std::FILE* file = standardInput ? stdin : std::fopen(path.c_str(), "rb");
  if (!file) throw IOException(name, errno);
  text.clear();
  char chunk[1 << 16];
  std::size_t got = 0;
  while ((got = std::fread(chunk, 1, sizeof chunk, file)) > 0) {
    text.append(chunk, got);
    // No program prints a NUL byte: a device such as /dev/zero, or a
    // binary file, is refused at its first one, as a table is, before it
    // fills the memory. A binary file that is a program's own (SPSS's
    // viewer file) is read no further, and its reader says how to export
    // the text.
    if (const void* nul = std::memchr(chunk, '\0', got)) {
      if (IsProgramsBinaryFile(text)) break;
      const std::size_t at = text.size() - got + static_cast<std::size_t>(static_cast<const char*>(nul) - chunk);
      if (!standardInput) std::fclose(file);
      Refuse({.file = name, .line = LineAt(text, at), .text = "holds a NUL byte; this is not a text file"});
    }
    if (text.size() > kMaxBytes) {
      if (!standardInput) std::fclose(file);
      Refuse({.file = name, .text = "more than 1 GiB; no program's printed output is that long"});
    }
  }
  const bool failed = std::ferror(file) != 0;
  const int error = errno;
  if (!standardInput) std::fclose(file);
  if (failed) throw IOException(name, error);
}

namespace {

std::vector<std::string> Expanded(const std::vector<std::string>& files) {
  std::vector<std::string> out;
  for (const std::string& file : files) {
    std::FILE* probe = nullptr;
    if (file == "-" || file.find_first_of("*?[") == std::string::npos || (probe = std::fopen(file.c_str(), "rb"))) {
      if (probe) std::fclose(probe);
      out.push_back(file);
      continue;
    }
    glob_t found{};
    if (glob(file.c_str(), 0, nullptr, &found) == 0) {
      for (std::size_t i = 0; i < found.gl_pathc; ++i) out.emplace_back(found.gl_pathv[i]);
    } else {
      out.push_back(file);  // reading it says why it is missing
    }
    globfree(&found);
  }
  return out;
}

}  // namespace

std::vector<FitRecord> ReadFitFiles(const std::vector<std::string>& files, const std::string& modelNames,
                                    std::optional<double> n, Diagnostics& diagnostics, BadFile bad,
                                    FilesLeftOut* leftOut) {
  std::vector<FitRecord> records;
  std::string text;
  text.reserve(1 << 20);
  // A file's trouble, where the rest are read all the same: an error of its
  // own, or a warning that it was left out.
  const auto leave = [&](Diagnostic why) {
    if (bad == BadFile::LeaveOut) {
      why.severity = Severity::Warning;
      why.text = "left out: " + why.text;
    } else {
      why.severity = Severity::Error;
    }
    diagnostics.Add(std::move(why));
  };
  for (const std::string& file : Expanded(files)) {
    const std::string name = file == "-" ? "standard input" : file;
    try {
      ReadWhole(file, text);
      // The models of a file that is then refused are not kept.
      std::vector<FitRecord> found = ReadProgramOutput(text, name, diagnostics);
      for (FitRecord& r : found) records.push_back(std::move(r));
    } catch (const IOException& error) {
      if (bad == BadFile::Refuse) throw;
      if (leftOut) ++leftOut->unreadable;
      leave({.file = error.Path(), .text = error.Reason()});
    } catch (const DataError& refusal) {
      // Under --strict a file left out would be one more warning refused.
      if (bad == BadFile::Refuse || (bad == BadFile::LeaveOut && diagnostics.Strict())) throw;
      if (leftOut) ++leftOut->refused;
      leave(refusal.Said());
    }
  }
  if (n) GiveN(records, *n);
  if (modelNames.empty()) return records;
  ReadWhole(modelNames, text);
  std::vector<std::string> names;
  for (const TextLine& line : SplitLines(text)) {
    if (!Trimmed(line.text).empty()) names.emplace_back(Trimmed(line.text));
  }
  if (names.size() != records.size()) {
    Refuse({.file = modelNames,
                       .text = std::to_string(names.size()) + " names for " + std::to_string(records.size()) +
                               " models; --model-names wants one a line, in the order drav-report fits lists the "
                               "models"});
  }
  for (std::size_t i = 0; i < names.size(); ++i) records[i].model = std::move(names[i]);
  return records;
}

}  // namespace drav::selection::fits
