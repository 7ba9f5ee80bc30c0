#pragma once
// What a command typed into Stata, as a log shows it after ". ", tells of
// the estimates in memory: whether it fits a model (and so replaces them),
// leaves them as they are, or cannot be told; and, for a fit whose output
// `quietly` hid, what its options say of its likelihood.
#include <string>
#include <string_view>

namespace drav::selection::fits {

enum class StataCommandKind {
  Estimation,  // fits a model: the estimates in memory are its
  Other,       // leaves the estimates in memory alone (estat, margins, summarize, dfuller, ...)
  Unknown,     // neither list holds it: a user's program, a command Drav does not know
};

struct StataCommand {
  std::string verb;         // as typed, after any prefix ("reg", "logit")
  std::string arguments;    // what follows the verb ("store m1" of "qui estimates store m1")
  std::string storeAs;      // "m1" of the prefix "eststo m1:", the name the fit is stored under
  bool quiet = false;       // under quietly (or capture): its output is not in the log
  StataCommandKind kind = StataCommandKind::Unknown;
  bool regress = false;     // regress: its df and AIC leave the residual variance out
  bool pseudo = false;      // vce(robust), vce(cluster ...), robust, cluster(), pweights
  bool restricted = false;  // reml
};

// The command after ". ", its prefixes taken off (quietly, noisily,
// capture, in any abbreviation Stata accepts, with or without a colon).
StataCommand ReadStataCommand(std::string_view command);

}  // namespace drav::selection::fits
