#include "analysis/number_scanner.hpp"

#include "analysis/val.hpp"

namespace drav {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Far beyond the double range (10^±324) and far from int64's limits, so that
// sums of such powers never overflow.
constexpr std::int64_t kPowerBound = 1'000'000'000'000;

}  // namespace

std::size_t NumberScanner::Digits(std::string_view piece, bool fraction) {
  std::size_t i = 0;
  // Zeros in front of the first significant digit only move the point.
  if (count_ == 0) {
    while (i < piece.size() && piece[i] == '0') ++i;
    if (fraction) point_ -= static_cast<std::int64_t>(i);
  }
  const std::size_t first = i;
  for (; i < piece.size() && IsDigit(piece[i]); ++i) {
    if (count_ < kMaxDigits) {
      digits_[count_++] = piece[i];
    } else if (piece[i] != '0') {
      dropped_ = true;
    }
  }
  if (!fraction) point_ += static_cast<std::int64_t>(i - first);
  if (i > 0) anyDigit_ = true;
  return i;
}

void NumberScanner::Feed(std::string_view piece) {
  std::size_t i = 0;
  while (i < piece.size()) {
    const char c = piece[i];
    switch (state_) {
      case State::Blanks:
        if (c == ' ' || c == '\t') break;
        if (c == '+' || c == '-') {
          negative_ = c == '-';
          state_ = State::Sign;
          break;
        }
        [[fallthrough]];
      case State::Sign:
        if (IsDigit(c)) {
          state_ = State::Whole;
          continue;
        }
        state_ = c == '.' ? State::Fraction : State::Done;
        break;
      case State::Whole:
        if (IsDigit(c)) {
          i += Digits(piece.substr(i), false);
          continue;
        }
        state_ = c == '.' ? State::Fraction : (c == 'e' || c == 'E') ? State::ExponentMark : State::Done;
        break;
      case State::Fraction:
        if (IsDigit(c)) {
          i += Digits(piece.substr(i), true);
          continue;
        }
        // "." alone is no number, and so takes no exponent either.
        state_ = anyDigit_ && (c == 'e' || c == 'E') ? State::ExponentMark : State::Done;
        break;
      case State::ExponentMark:
        if (c == '+' || c == '-') {
          negativeExponent_ = c == '-';
          state_ = State::ExponentSign;
          break;
        }
        [[fallthrough]];
      case State::ExponentSign:
        // An exponent counts only when a digit follows its letter and sign:
        // "12e" and "12e+" are 12 followed by junk.
        state_ = IsDigit(c) ? State::Exponent : State::Done;
        if (state_ == State::Exponent) continue;
        break;
      case State::Exponent:
        if (!IsDigit(c)) {
          state_ = State::Done;
        } else if (exponent_ < kPowerBound) {
          exponent_ = exponent_ * 10 + (c - '0');
        }
        break;
      case State::Done:
        return;
    }
    ++i;
  }
}

std::int64_t NumberScanner::PowerOfTen() const {
  // exponent_ stays 0 unless digits followed the letter.
  const std::int64_t exponent = negativeExponent_ ? -exponent_ : exponent_;
  std::int64_t power = point_ + exponent;
  if (power > kPowerBound) power = kPowerBound;
  if (power < -kPowerBound) power = -kPowerBound;
  return power;
}

std::string NumberScanner::Canonical() const {
  if (!anyDigit_) return {};
  std::string text = negative_ ? "-0." : "0.";
  if (count_ == 0) return text + "0";
  text.append(digits_, count_);
  if (dropped_) text += '1';
  return text + "e" + std::to_string(PowerOfTen());
}

// The stand-in text spells the same number with no more than kMaxDigits + 1
// digits, and Val reads it as it reads any other: one reading of numbers.
double NumberScanner::Value() const { return Val(Canonical()); }

}  // namespace drav
