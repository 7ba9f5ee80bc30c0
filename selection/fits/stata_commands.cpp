#include "selection/fits/stata_commands.hpp"

#include <algorithm>
#include <array>

#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {
namespace {

// Whether `word` is `name` or an abbreviation of it Stata accepts: at least
// its first `least` letters.
bool Abbreviates(std::string_view word, std::string_view name, std::size_t least) {
  return word.size() >= least && word.size() <= name.size() && name.starts_with(word);
}

struct Verb {
  std::string_view name;
  std::size_t least;  // the shortest abbreviation
};

// Estimation commands a log of model comparisons holds: each replaces the
// estimates in memory.
constexpr std::array kEstimation = {
    Verb{"regress", 3},  Verb{"logit", 5},     Verb{"logistic", 8}, Verb{"probit", 6},   Verb{"cloglog", 7},
    Verb{"ologit", 6},   Verb{"oprobit", 7},   Verb{"mlogit", 6},   Verb{"mprobit", 7},  Verb{"clogit", 6},
    Verb{"poisson", 4},  Verb{"nbreg", 5},     Verb{"gnbreg", 6},   Verb{"zip", 3},      Verb{"zinb", 4},
    Verb{"tpoisson", 8}, Verb{"tnbreg", 6},    Verb{"glm", 3},      Verb{"tobit", 5},    Verb{"intreg", 6},
    Verb{"truncreg", 8}, Verb{"heckman", 7},   Verb{"arima", 5},    Verb{"arch", 4},     Verb{"arfima", 6},
    Verb{"mixed", 5},    Verb{"xtmixed", 7},   Verb{"meglm", 5},    Verb{"melogit", 7},  Verb{"meprobit", 8},
    Verb{"mepoisson", 9}, Verb{"menbreg", 7},  Verb{"xtreg", 5},    Verb{"xtlogit", 7},  Verb{"xtprobit", 8},
    Verb{"xtpoisson", 9}, Verb{"xtnbreg", 7},  Verb{"streg", 5},    Verb{"stcox", 5},    Verb{"sem", 3},
    Verb{"gsem", 4},     Verb{"fracreg", 7},   Verb{"betareg", 7},  Verb{"hetprobit", 9}, Verb{"scobit", 6},
    Verb{"biprobit", 8}, Verb{"gologit2", 8},  Verb{"slogit", 6},   Verb{"ml", 2},       Verb{"mean", 4},
    Verb{"proportion", 4}, Verb{"var", 3},     Verb{"ucm", 3},      Verb{"sspace", 6},   Verb{"dfactor", 7},
};

// Commands that leave the estimates in memory as they are, whatever they
// print: postestimation, tests and tables of the data. Some print "Number
// of obs" as an estimation does (margins, dfuller).
constexpr std::array kOther = {
    Verb{"estat", 5},      Verb{"estimates", 3},  Verb{"eststo", 6},    Verb{"esttab", 6},    Verb{"estout", 6},
    Verb{"fitstat", 7},    Verb{"predict", 7},    Verb{"margins", 7},   Verb{"marginsplot", 11}, Verb{"test", 4},
    Verb{"testparm", 8},   Verb{"lincom", 6},     Verb{"nlcom", 5},     Verb{"lrtest", 6},    Verb{"contrast", 8},
    Verb{"pwcompare", 9},  Verb{"summarize", 2},  Verb{"tabulate", 2},  Verb{"tabstat", 7},   Verb{"correlate", 3},
    Verb{"pwcorr", 6},     Verb{"describe", 1},   Verb{"list", 1},      Verb{"display", 2},   Verb{"generate", 1},
    Verb{"replace", 7},    Verb{"egen", 4},       Verb{"drop", 4},      Verb{"keep", 4},      Verb{"sort", 4},
    Verb{"tsset", 5},      Verb{"xtset", 5},      Verb{"use", 3},       Verb{"sysuse", 6},    Verb{"webuse", 6},
    Verb{"save", 4},       Verb{"log", 3},        Verb{"set", 3},       Verb{"label", 2},     Verb{"dfuller", 7},
    Verb{"pperron", 7},    Verb{"dfgls", 5},      Verb{"corrgram", 8},  Verb{"ac", 2},        Verb{"pac", 3},
    Verb{"wntestq", 7},    Verb{"tsline", 6},     Verb{"twoway", 3},    Verb{"graph", 2},     Verb{"scatter", 2},
    Verb{"histogram", 4},  Verb{"count", 3},      Verb{"matrix", 3},    Verb{"scalar", 6},    Verb{"local", 3},
    Verb{"global", 2},     Verb{"cd", 2},         Verb{"clear", 5},     Verb{"preserve", 8},  Verb{"restore", 7},
    Verb{"hausman", 7},    Verb{"vif", 3},       Verb{"ovtest", 6},    Verb{"hettest", 7},
};

template <std::size_t N>
bool Among(std::string_view word, const std::array<Verb, N>& verbs) {
  return std::any_of(verbs.begin(), verbs.end(), [&](const Verb& v) { return Abbreviates(word, v.name, v.least); });
}

// The options after the comma, and a weight in brackets, that make the
// likelihood a pseudolikelihood.
bool Robust(std::string_view command) {
  const std::size_t comma = command.find(',');
  const std::string_view options = comma == std::string_view::npos ? std::string_view() : command.substr(comma);
  for (const std::string_view word : Words(options)) {
    const std::string_view bare = word.starts_with(',') ? word.substr(1) : word;
    if (bare.starts_with("vce(r") || bare.starts_with("vce(cl") || bare == "robust" || bare == "r" ||
        bare.starts_with("cluster(") || bare.starts_with("cl(")) {
      return true;
    }
  }
  return command.find("[pw") != std::string_view::npos || command.find("[pweight") != std::string_view::npos;
}

}  // namespace

StataCommand ReadStataCommand(std::string_view command) {
  StataCommand c;
  std::vector<std::string_view> words = Words(command);
  // Prefixes, in any order: quietly, noisily and capture; and those that
  // end with a colon ("svy:", "xi:", "by sex:", "eststo m1:"), the verb after
  // the last of them. A survey's weights make a pseudolikelihood.
  std::size_t at = 0;
  bool survey = false;
  while (at < words.size()) {
    std::string_view word = words[at];
    if (word.ends_with(':')) word.remove_suffix(1);
    const bool quietly = Abbreviates(word, "quietly", 3);
    const bool capture = Abbreviates(word, "capture", 3);
    if (quietly || capture || Abbreviates(word, "noisily", 3)) {
      c.quiet = c.quiet || quietly || capture;
      ++at;
      continue;
    }
    const auto colon = std::find_if(words.begin() + static_cast<std::ptrdiff_t>(at), words.end(),
                                    [](std::string_view w) { return w.ends_with(':'); });
    if (colon == words.end()) break;
    const auto last = static_cast<std::size_t>(colon - words.begin());
    survey = survey || words[at].starts_with("svy");
    if (words[at] == "eststo" && last == at + 1) c.storeAs = words[last].substr(0, words[last].size() - 1);
    at = last + 1;
  }
  if (at == words.size()) return c;
  c.verb = std::string(words[at]);
  const auto after = static_cast<std::size_t>(words[at].data() - command.data()) + words[at].size();
  c.arguments = std::string(command.substr(after));
  if (c.verb.ends_with(',')) c.verb.pop_back();
  c.kind = Among(c.verb, kEstimation) ? StataCommandKind::Estimation
           : Among(c.verb, kOther)    ? StataCommandKind::Other
                                      : StataCommandKind::Unknown;
  c.regress = Abbreviates(c.verb, "regress", 3);
  c.pseudo = survey || Robust(command);
  const std::size_t comma = command.find(',');
  if (comma != std::string_view::npos) {
    for (const std::string_view word : Words(command.substr(comma + 1))) {
      if (word == "reml" || word == "reml," || word.starts_with("reml(")) c.restricted = true;
    }
  }
  return c;
}

}  // namespace drav::selection::fits
