#include "selection/fits/program_output.hpp"

#include <utility>

#include "selection/fits/fit_refusal.hpp"
#include "selection/fits/model_names.hpp"
#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {

ProgramOutput::ProgramOutput(std::string_view program, std::string source, Diagnostics& diagnostics)
    : program_(program), source_(std::move(source)), diagnostics_(diagnostics) {}

FitRecord ProgramOutput::Model(std::int64_t line) const {
  FitRecord record;
  record.source = source_;
  record.line = line;
  record.program.assign(program_);
  return record;
}

void ProgramOutput::Flag(FitRecord& record, std::string text, std::int64_t line, const std::string& label) {
  diagnostics_.Warn(label + text, source_, line);
  record.warnings.push_back(std::move(text));
}

void ProgramOutput::Warn(std::string text, std::int64_t line) { diagnostics_.Warn(std::move(text), source_, line); }

void ProgramOutput::Note(std::string text, std::int64_t line) { diagnostics_.Note(std::move(text), source_, line); }

void ProgramOutput::Refuse(std::int64_t line, std::string text) const { fits::Refuse(source_, line, std::move(text)); }

std::string ProgramOutput::FileName() const { return FileStem(source_); }

void ProgramOutput::NameUnnamed(std::vector<FitRecord>& records, Numbering numbering) const {
  const std::string stem = FileName();
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (!records[i].model.empty()) continue;
    records[i].model = stem;
    if (numbering == Numbering::ByPlace && records.size() > 1) records[i].model += " (" + std::to_string(i + 1) + ")";
  }
  if (numbering == Numbering::WhereRepeated) NumberRepeatedNames(records);
}

std::string_view Opening(std::string_view text, std::size_t bytes) { return text.substr(0, bytes); }

}  // namespace drav::selection::fits
