#include "selection/fits/fits_layout.hpp"

#include <cmath>
#include <memory>

namespace drav::selection::fits {

OutputTable FitsLayout(const std::vector<FitRecord>& records, bool derivations) {
  OutputTable out;
  out.rows = records.size();
  out.groups.push_back({"", 0, out.rows});
  const auto r = [&records](std::size_t i) -> const FitRecord& { return records[i]; };
  // The warnings cell points into text joined here, which the layout keeps.
  auto warnings = std::make_shared<std::vector<std::string>>();
  for (const FitRecord& record : records) {
    std::string joined;
    for (const std::string& w : record.warnings) joined.append(joined.empty() ? "" : "; ").append(w);
    warnings->push_back(std::move(joined));
  }
  const auto count = [](double value) { return std::isnan(value) ? Cell{} : CountCell(value); };
  out.columns.push_back({"model", "Model", "Model", 0, false, [r](std::size_t i) { return TextCell(r(i).model); }});
  out.columns.push_back({"source", "Source", "Source", 0, false, [r](std::size_t i) { return TextCell(r(i).source); }});
  out.columns.push_back({"line", "Line", "Line", 0, false, [r](std::size_t i) { return CountCell(double(r(i).line)); }});
  out.columns.push_back({"program", "Program", "Program", 0, false, [r](std::size_t i) { return TextCell(r(i).program); }});
  out.columns.push_back({"loglik", "logLik", "$\\log L$", 3, false, [r](std::size_t i) { return GivenCell(r(i).logLik); }});
  out.columns.push_back({"k", "K", "$K$", 0, false, [r, count](std::size_t i) { return count(r(i).k); }});
  out.columns.push_back({"n", "n", "$n$", 0, false, [r, count](std::size_t i) { return count(r(i).n); }});
  out.columns.push_back({"aic", "AIC", "AIC", 3, false, [r](std::size_t i) { return GivenCell(r(i).aic); }});
  out.columns.push_back({"bic", "BIC", "BIC", 3, false, [r](std::size_t i) { return GivenCell(r(i).bic); }});
  out.columns.push_back({"kind", "Kind", "Kind", 0, false, [r](std::size_t i) { return TextCell(Name(r(i).kind)); }});
  out.columns.push_back({"warnings", "Warnings", "Warnings", 0, false,
                         [warnings](std::size_t i) { return TextCell((*warnings)[i]); }});
  if (derivations) {
    out.columns.push_back({"derivation", "Derivation", "Derivation", 0, false,
                           [r](std::size_t i) { return TextCell(r(i).derivation); }});
  }
  out.rowsKey = "models";
  out.note = "AIC and BIC as the programs printed them; logLik, K and n as Drav reads them (--verbose: how).";
  return out;
}

}  // namespace drav::selection::fits
