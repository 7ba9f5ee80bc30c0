#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

std::string_view Name(LikelihoodKind kind) {
  switch (kind) {
    case LikelihoodKind::ML: return "ML";
    case LikelihoodKind::REML: return "REML";
    case LikelihoodKind::Pseudo: return "pseudo";
    case LikelihoodKind::ConstantsDropped: return "constants dropped";
    case LikelihoodKind::Scaled: return "scaled";
    case LikelihoodKind::None: return "none";
  }
  return "unknown";
}

}  // namespace drav::selection::fits
