#include "host/output/NumberFormat.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cmath>

#include "platform/component/Common.h"

namespace BayesHost {
namespace {

struct Rule {
  int fDecimals;
  int fLeastDigits;  // significant digits below which the scientific notation takes over
  double fTooLarge;  // rounded value from which it takes over
};

constexpr double kExactIntegers = 1e15;  // beyond it a fixed notation would invent digits

Rule RuleOf(const BpFormatSpec& format) {
  const int own = format.fVariableDecimals;
  switch (format.fKind) {
    case BpFormatSpec::kCount:
      return {0, 0, kExactIntegers};
    case BpFormatSpec::kMean:
    case BpFormatSpec::kStdDev:
      return {own + 2, 1, kExactIntegers};
    case BpFormatSpec::kVarSquared:
      return {std::clamp(2 * own + 2, 3, 8), 3, kExactIntegers};
    case BpFormatSpec::kPercent:
    case BpFormatSpec::kResidual:
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
  return !std::isfinite(value) || value == MCCommon_850::MCMV::Missing();
}

std::string ShowNumber(double value, const BpFormatSpec& format) {
  if (IsMissing(value)) return ".";
  switch (format.fKind) {
    case BpFormatSpec::kSignificance:
      return ShowSignificance(value);
    case BpFormatSpec::kSigDigit:
      return fmt::format("{:.10g}", value == 0 ? 0.0 : value);
    case BpFormatSpec::kPercent:
      return ShowByRule(value, RuleOf(format)) + "%";
    default:
      return ShowByRule(value, RuleOf(format));
  }
}

}  // namespace BayesHost
