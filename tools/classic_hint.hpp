#pragma once
// A hint for `drav-report COUNT FILE` run on a table with a header, such as
// a write.csv export: the classic form reads its header as a model with
// AIC 0.0, which then looks like the best model of all. The report stays as
// it is; the hint on standard error says why it looks so and what reads
// such a file.
#include <cstdint>
#include <filesystem>
#include <optional>

namespace drav::cli {

// The first of the first `count` lines of `path` whose AIC field holds no
// number; nothing when each holds one, or when the path is no regular file
// (a pipe or standard input cannot be read a second time).
std::optional<std::int64_t> FirstLineWithoutNumber(const std::filesystem::path& path, std::int64_t count);

}  // namespace drav::cli
