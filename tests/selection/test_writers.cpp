// The writers: the text table's columns as wide as their widest cell, found
// without printing every cell twice (checked against printing every cell,
// over numbers that round up a digit, round to zero, sit at the cap or far
// past it, counts with fractions, infinities and double-width names); and
// every writer's bytes the same whether one thread made them or two.
#include "selection/output/text_writer.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <random>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "selection/output/delimited_writer.hpp"
#include "selection/output/display_width.hpp"
#include "selection/output/json_writer.hpp"
#include "selection/output/latex_writer.hpp"
#include "selection/output/markdown_writer.hpp"
#include "selection/output/readable_cell.hpp"
#include "selection/output/row_blocks.hpp"

namespace drav::selection {
namespace {

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

TEST(TextWriter, ColumnsAreAsWideAsTheirWidestCell) {
  const std::vector<Cell> pool = {
      NumberCell(-0.00004), NumberCell(9.99996), NumberCell(99999.001), NumberCell(99999.0049), NumberCell(1e6),
      NumberCell(2e5),      NumberCell(HUGE_VAL), NumberCell(-HUGE_VAL), NumberCell(0.5), NumberCell(-12.3456),
      NumberCell(-0.4),     CountCell(3),         CountCell(2.5),        CountCell(-7),    CountCell(1234567),
      TextCell("a"),        TextCell("宽宽宽"),    FlagCell(true),        FlagCell(false),  Cell{}};
  std::mt19937 random(11);
  for (int trial = 0; trial < 200; ++trial) {
    // Three columns of a few random cells each; the last of numbers, so
    // that every line runs to the table's full width.
    const std::size_t rows = 1 + random() % 5;
    std::vector<std::vector<Cell>> cells(3, std::vector<Cell>(rows));
    for (std::size_t c = 0; c < 3; ++c) {
      for (Cell& cell : cells[c]) cell = c == 2 ? NumberCell(pool[random() % 12].number) : pool[random() % pool.size()];
    }
    OutputTable table;
    table.rows = rows;
    for (std::size_t c = 0; c < 3; ++c) {
      Column column{"k", std::string(1, static_cast<char>('A' + c)), "", 2, false,
                    [&cells, c](std::size_t row) { return cells[c][row]; }};
      if (c == 2) column.shownAtMost = 99999;
      table.columns.push_back(std::move(column));
    }
    std::string text;
    OutputBuffer out([&text](std::string_view chunk) { text += chunk; });
    WriteText(table, std::nullopt, out);

    std::int64_t expected = 4;  // the two gaps between the columns
    for (std::size_t c = 0; c < 3; ++c) {
      std::int64_t widest = DisplayWidth(table.columns[c].title);
      for (std::size_t row = 0; row < rows; ++row) {
        widest = std::max(widest, DisplayWidth(ReadableCell(cells[c][row], table.columns[c], std::nullopt)));
      }
      expected += widest;
    }
    for (const std::string& line : Lines(text)) EXPECT_EQ(DisplayWidth(line), expected) << text;
  }
}

TEST(Writers, TwoThreadsWriteWhatOneWrites) {
  // Two sets of uneven sizes, both past two blocks, so that the blocks of
  // each thread interleave and a set ends inside a block.
  const std::size_t rows = 5 * kRowBlock + 123;
  const std::size_t split = 2 * kRowBlock + 7;
  std::vector<std::string> names(rows);
  for (std::size_t i = 0; i < rows; ++i) {
    names[i] = i % 7 == 0 ? "模型" : "m";
    names[i].append(std::to_string(i));
  }
  OutputTable table;
  table.rows = rows;
  table.groups = {{"a", 0, split}, {"b", split, rows}};
  table.byKey = "set";
  table.rowsKey = "models";
  table.columns.push_back({"model", "Model", "", 0, false, [&names](std::size_t i) { return TextCell(names[i]); }});
  table.columns.push_back({"x", "x", "", 3, false, [](std::size_t i) {
                             return NumberCell(std::sin(static_cast<double>(i)) * std::pow(10.0, i % 9));
                           }});
  table.columns.push_back({"k", "K", "", 0, false, [](std::size_t i) { return CountCell(static_cast<double>(i % 13)); }});
  table.columns.push_back({"in", "In", "", 0, false, [](std::size_t i) { return FlagCell(i % 3 == 0); }});
  const auto write = [](unsigned threads, auto writer) {
    std::string text;
    OutputBuffer out([&text](std::string_view chunk) { text += chunk; }, threads);
    writer(out);
    return text;
  };
  const std::pair<const char*, std::function<void(OutputBuffer&)>> writers[] = {
      {"text", [&](OutputBuffer& out) { WriteText(table, std::nullopt, out); }},
      {"csv", [&](OutputBuffer& out) { WriteDelimited(table, ',', out); }},
      {"markdown", [&](OutputBuffer& out) { WriteMarkdown(table, 2, out); }},
      {"latex", [&](OutputBuffer& out) { WriteLatex(table, std::nullopt, out); }},
      {"json", [&](OutputBuffer& out) { WriteJson(table, out); }},
  };
  for (const auto& [name, writer] : writers) {
    const std::string one = write(1, writer);
    EXPECT_GT(one.size(), rows * 10) << name;
    EXPECT_TRUE(one == write(2, writer)) << name << " differs with two threads";
  }
}

// A fault while two threads format (a sink that cannot take more, a row
// that cannot be formatted on either thread) reaches the caller once, after
// the blocks before it, as with one thread, and leaves no thread behind.
TEST(Writers, FaultsOfEitherThreadReachTheCaller) {
  const std::size_t rows = 9 * kRowBlock;
  const std::size_t faulty = 5 * kRowBlock + 9;
  // Lines of 64 bytes: a block is a megabyte, handed to the sink whole.
  const auto format = [faulty](std::size_t begin, std::size_t end, std::string& text) {
    for (std::size_t row = begin; row < end; ++row) {
      if (row == faulty) throw std::runtime_error("row " + std::to_string(row));
      std::string line = std::to_string(row);
      line.resize(63, ' ');
      text.append(line).append(1, '\n');
    }
  };
  for (const unsigned threads : {1u, 2u}) {
    std::size_t calls = 0;
    OutputBuffer failing([&calls](std::string_view) {
      if (++calls == 2) throw std::length_error("full");
    }, threads);
    EXPECT_THROW(WriteRowBlocks(0, rows, failing, format), std::length_error) << threads;
    EXPECT_EQ(calls, 2u) << threads;

    std::string written;
    OutputBuffer out([&written](std::string_view chunk) { written += chunk; }, threads);
    try {
      WriteRowBlocks(0, rows, out, format);
      ADD_FAILURE() << "no fault";
    } catch (const std::runtime_error& fault) {
      EXPECT_STREQ(fault.what(), "row 81929");
    }
    // Every block before the faulty one went out, whole and in order; one
    // thread leaves the faulty block's first rows to its buffer.
    out.Flush();
    ASSERT_EQ(written.size() % 64, 0u);
    const std::size_t lines = written.size() / 64;
    EXPECT_EQ(lines, threads == 1 ? faulty : 5 * kRowBlock);
    for (std::size_t line = 0; line < lines; line += 997) {
      EXPECT_EQ(std::stoul(written.substr(line * 64, 16)), line) << threads;
    }
  }
}

// Two blocks that cannot be formatted, one on each thread: the earlier
// block's fault is thrown, after the blocks before it, though the later
// block's fault is recorded last. The later block waits at its first row
// until the earlier has thrown; the earlier waits at its last row until the
// other thread has taken the later, where that thread can: always if the
// helper holds the earlier block, and if the caller holds it, once three
// blocks are written (blocks of a megabyte go to the sink whole). It runs
// a few times, as which thread takes which block is the threads' race.
TEST(Writers, TheFirstOfTwoFaultyBlocksIsThrown) {
  const std::size_t rows = 9 * kRowBlock;
  const std::thread::id caller = std::this_thread::get_id();
  struct Raise {  // set as the throw leaves the earlier block
    std::atomic<bool>& flag;
    ~Raise() { flag = true; }
  };
  for (int run = 0; run < 16; ++run) {
    std::atomic<bool> laterTaken = false;
    std::atomic<bool> earlierThrown = false;
    std::size_t lines = 0;  // written, by the caller
    const auto format = [&](std::size_t begin, std::size_t end, std::string& text) {
      for (std::size_t row = begin; row < end; ++row) {
        if (row == 6 * kRowBlock - 1) {
          if (std::this_thread::get_id() != caller || lines >= 3 * kRowBlock) {
            while (!laterTaken) std::this_thread::yield();
          }
          Raise raise{earlierThrown};
          throw std::runtime_error("block 5");
        }
        if (row == 6 * kRowBlock) {
          laterTaken = true;
          while (!earlierThrown) std::this_thread::yield();
          throw std::runtime_error("block 6");
        }
        std::string line = std::to_string(row);
        line.resize(63, ' ');
        text.append(line).append(1, '\n');
      }
    };
    OutputBuffer out([&lines](std::string_view chunk) { lines += std::count(chunk.begin(), chunk.end(), '\n'); }, 2);
    try {
      WriteRowBlocks(0, rows, out, format);
      ADD_FAILURE() << "no fault";
    } catch (const std::runtime_error& fault) {
      EXPECT_STREQ(fault.what(), "block 5");
    }
    out.Flush();
    EXPECT_EQ(lines, 5 * kRowBlock);
  }
}

}  // namespace
}  // namespace drav::selection
