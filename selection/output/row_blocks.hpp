#pragma once
// The rows of a table formatted block by block, and with a second thread
// two blocks at once: each thread takes the next block not yet taken as it
// comes free, a few blocks ahead of the one written next at most, and the
// blocks go out in their order, so the output is the same byte for byte
// however many threads made it.
#include <cstddef>
#include <functional>
#include <string>

#include "selection/output/output_buffer.hpp"

namespace drav::selection {

// Rows a block: enough that handing a block over costs nothing beside
// formatting it, few enough that a table of a hundred thousand models
// still splits.
inline constexpr std::size_t kRowBlock = 16384;

// Appends rows [begin, end) to `text`. It must be safe to run on two
// threads at once: it reads the table and writes only its `text`.
using RowFormat = std::function<void(std::size_t begin, std::size_t end, std::string& text)>;

// Appends rows [first, last) to `out` by `format`.
void WriteRowBlocks(std::size_t first, std::size_t last, OutputBuffer& out, const RowFormat& format);

}  // namespace drav::selection
