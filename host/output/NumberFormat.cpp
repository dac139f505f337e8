#include "host/output/NumberFormat.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>

namespace BayesHost {
namespace {

struct Rule {
  int fDecimals;
  int fLeastDigits;  // significant digits below which the scientific notation takes over
  double fTooLarge;  // rounded value from which it takes over
};

constexpr double kExactIntegers = 1e15;  // beyond it a fixed notation would invent digits

Rule RuleOf(const NumberFormat& format) {
  const int own = format.fVariableDecimals;
  switch (format.fKind) {
    case NumberFormat::Kind::Count:
      return {0, 0, kExactIntegers};
    case NumberFormat::Kind::Mean:
    case NumberFormat::Kind::StdDev:
      return {own + 2, 1, kExactIntegers};
    case NumberFormat::Kind::VarSquared:
      return {std::clamp(2 * own + 2, 3, 8), 3, kExactIntegers};
    case NumberFormat::Kind::Percent:
    case NumberFormat::Kind::Residual:
      return {1, 1, kExactIntegers};
    default:
      return {3, 3, 1e6};
  }
}

int SignificantDigits(const std::string& fixed) {
  const auto first = std::find_if(fixed.begin(), fixed.end(), [](char c) { return c >= '1' && c <= '9'; });
  return static_cast<int>(std::count_if(first, fixed.end(), [](char c) { return std::isdigit(c) != 0; }));
}

std::string ShowByRule(double value, const Rule& rule) {
  const std::string fixed = fmt::format("{:.{}f}", value, rule.fDecimals);
  const int digits = SignificantDigits(fixed);
  const bool tooLarge = std::abs(value) + 0.5 * std::pow(10.0, -rule.fDecimals) >= rule.fTooLarge;
  if (value != 0 && (tooLarge || digits < rule.fLeastDigits)) return fmt::format("{:.3e}", value);
  return digits == 0 && fixed.front() == '-' ? fixed.substr(1) : fixed;
}

std::string ShowSignificance(double value) {
  return value < 0.001 ? "<.001" : fmt::format("{:.3f}", value);
}

}  // namespace

bool IsMissing(double value) {
  return !std::isfinite(value) || value == std::numeric_limits<double>::lowest();
}

std::string NumberFormat::Show(double value) const {
  if (IsMissing(value)) return ".";
  switch (fKind) {
    case Kind::Significance:
      return ShowSignificance(value);
    case Kind::SigDigit:
      return fmt::format("{:.10g}", value == 0 ? 0.0 : value);
    case Kind::Percent:
      return ShowByRule(value, RuleOf(*this)) + "%";
    default:
      return ShowByRule(value, RuleOf(*this));
  }
}

}  // namespace BayesHost
