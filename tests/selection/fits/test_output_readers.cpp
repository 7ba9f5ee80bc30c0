// Which program printed a file: every sample output of every program, as
// the command reads it, is taken for its own program's and read as such,
// and no reader but R's (whose marks are printed in R sessions around
// lavaan's and the others' output, and which is tried last) claims another
// program's sample, whatever the order they are tried in.
#include "selection/fits/output_readers.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>

#include "base/errors.hpp"
#include "selection/fits/notebook_text.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

struct Sample {
  std::string file;  // under samples/
  std::string program;
  std::string text;  // as the readers see it: a notebook's printed text
};

// Every output under samples/, in a folder named after its program in
// lower case; the numbers R computed (.expected), the data statsmodels
// fitted (.csv) and notes to the reader are no program's output.
std::vector<Sample> Samples() {
  std::map<std::string, std::string> programs;  // by folder
  for (const OutputReader& reader : OutputReaders()) {
    std::string folder(reader.program);
    for (char& c : folder) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    programs[folder] = reader.program;
  }
  const std::filesystem::path root = std::filesystem::path(DRAV_SOURCE_DIR) / "tests/golden/fits/samples";
  std::vector<Sample> samples;
  for (const auto& folder : std::filesystem::directory_iterator(root)) {
    const auto program = programs.find(folder.path().filename().string());
    EXPECT_NE(program, programs.end()) << "a folder of samples of no known program: " << folder.path();
    if (program == programs.end()) continue;
    for (const auto& file : std::filesystem::directory_iterator(folder.path())) {
      const std::string extension = file.path().extension().string();
      if (extension == ".expected" || extension == ".csv" || file.path().filename() == "README") continue;
      const std::string relative = program->first + "/" + file.path().filename().string();
      std::string text = testing_support::SampleText(relative);
      if (LooksLikeNotebook(text)) text = NotebookOutputText(text, relative);
      samples.push_back({relative, program->second, std::move(text)});
    }
  }
  return samples;
}

TEST(OutputReaders, EverySampleIsReadAsItsOwnProgramsOutput) {
  const auto samples = Samples();
  std::map<std::string, int> perProgram;
  for (const Sample& sample : samples) {
    ++perProgram[sample.program];
    // The first reader that claims it is the one the dispatcher uses, also
    // for the samples whose reading is refused (an aborted MARK run).
    const auto& readers = OutputReaders();
    const auto claimant = std::find_if(readers.begin(), readers.end(),
                                       [&](const OutputReader& reader) { return reader.LooksLike(sample.text); });
    ASSERT_NE(claimant, readers.end()) << sample.file << " is claimed by no reader";
    EXPECT_EQ(claimant->program, sample.program) << sample.file;
    Diagnostics diagnostics;
    try {
      for (const FitRecord& record : ReadProgramOutput(testing_support::SampleText(sample.file), sample.file,
                                                       diagnostics)) {
        EXPECT_EQ(record.program, sample.program) << sample.file << ": " << record.model;
        EXPECT_EQ(record.source, sample.file);
      }
    } catch (const DataError& error) {
      EXPECT_EQ(std::string(error.what()).find("not the printed output of a program"), std::string::npos)
          << error.what();
    }
  }
  // Every program has samples here, so that none is left out unseen; R's
  // reader, which claims what R sessions print around the others, is last.
  EXPECT_EQ(perProgram.size(), OutputReaders().size());
  EXPECT_EQ(OutputReaders().back().program, "R");
  for (const OutputReader& reader : OutputReaders()) {
    EXPECT_GT(perProgram[std::string(reader.program)], 0) << reader.program;
  }
}

TEST(OutputReaders, NoReaderButRsClaimsAnotherProgramsSample) {
  for (const Sample& sample : Samples()) {
    for (const OutputReader& reader : OutputReaders()) {
      if (reader.program == "R" || reader.program == sample.program) continue;
      EXPECT_FALSE(reader.LooksLike(sample.text)) << reader.program << " claims " << sample.file;
    }
  }
}

}  // namespace
}  // namespace drav::selection::fits
