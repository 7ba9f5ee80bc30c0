#pragma once
// A program's output that cannot be ranked: the reader stops with where and
// why, in the shape every other refusal of Drav has ("FILE:LINE: text").
#include <cstdint>
#include <string>

#include "base/diagnostics.hpp"
#include "base/errors.hpp"

namespace drav::selection::fits {

[[noreturn]] inline void Refuse(const std::string& source, std::int64_t line, std::string text) {
  selection::Refuse({.file = source, .line = line, .text = std::move(text)});
}

}  // namespace drav::selection::fits
