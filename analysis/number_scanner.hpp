#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace drav {

// Reads a number the way Val does from text that may arrive in pieces, and
// keeps only what decides its value: at most kMaxDigits significant digits,
// whether any non-zero digit was dropped behind them, and the power of ten.
// A number of a billion digits thus takes as little memory as one of five,
// and still gives the double nearest to what it spells: no double needs more
// than 767 significant digits to be rounded right, and a dropped non-zero
// tail only ever decides a tie, for which one extra non-zero digit stands.
class NumberScanner {
 public:
  static constexpr std::size_t kMaxDigits = 800;

  void Feed(std::string_view piece);

  // The double nearest to the number read, 0 when none stood at the start.
  // A number beyond the double range gives the largest finite double of its
  // sign, never an infinity: the statistics need finite values.
  double Value() const;

  // A short text that Val reads back to Value(); stands in for a number
  // field too long to keep.
  std::string Canonical() const;

 private:
  enum class State : std::uint8_t { Blanks, Sign, Whole, Fraction, ExponentMark, ExponentSign, Exponent, Done };

  // Takes the digits at the start of `piece`; returns how many it took.
  std::size_t Digits(std::string_view piece, bool fraction);
  std::int64_t PowerOfTen() const;

  State state_ = State::Blanks;
  bool negative_ = false;
  bool anyDigit_ = false;
  bool dropped_ = false;  // a non-zero digit fell behind kMaxDigits
  bool negativeExponent_ = false;
  std::size_t count_ = 0;  // significant digits held, the leading zeros gone
  std::int64_t point_ = 0;     // value = 0.digits_ x 10^(point_ + exponent)
  std::int64_t exponent_ = 0;  // as written; held below a bound far out of range
  char digits_[kMaxDigits];    // left unset: only the first count_ are read
};

}  // namespace drav
