#include "host/charts/ChartTicks.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace BayesHost {
namespace {

// Below it a density looks like zero on any axis, and powers of ten near it can't be divided by.
constexpr double kTiny = 1e-290;
// Widths that this share of the bounds are noise of their last digits.
constexpr double kNoise = 1e-12;
// Of a step, so that a bound that is a tick but for its last digits counts as one.
constexpr double kSlack = 1e-9;
// Fixed labels up to this length need no shorter notation.
constexpr int kShortLabel = 8;

std::string ShowScientific(double value, int power) {
  if (value == 0) return "0";
  const int digits = std::max(0, static_cast<int>(std::floor(std::log10(std::abs(value)) + 1e-9)) - power);
  const std::string text = fmt::format("{:.{}e}", value, digits);
  const std::size_t e = text.find('e');
  return fmt::format("{}e{}", text.substr(0, e), std::stoi(text.substr(e + 1)));
}

int LongestOf(const std::vector<std::string>& labels) {
  std::size_t longest = 0;
  for (const std::string& label : labels) longest = std::max(longest, label.size());
  return static_cast<int>(longest);
}

std::vector<std::string> LabelsOf(const std::vector<double>& values, int power) {
  std::vector<std::string> fixed;
  std::vector<std::string> scientific;
  for (double value : values) {
    fixed.push_back(fmt::format("{:.{}f}", value, std::max(0, -power)));
    scientific.push_back(ShowScientific(value, power));
  }
  const int length = LongestOf(fixed);
  return length <= kShortLabel || length <= LongestOf(scientific) ? fixed : scientific;
}

}  // namespace

Interval Widen(double lower, double upper) {
  const double largest = std::max(std::abs(lower), std::abs(upper));
  const double width = upper - lower;
  if (width > kTiny && width > kNoise * largest) return {lower, upper};
  const double margin = largest > kTiny ? largest / 10 : 0.5;
  return {lower - margin, upper + margin};
}

Ticks::Ticks(const Interval& interval, int count, bool isRound) : fInterval(interval) {
  ChooseStep(interval.fUpper / count - interval.fLower / count);
  const double unit = GetValue(1);
  const double below = std::floor(interval.fLower / unit + kSlack);
  const double above = std::ceil(interval.fUpper / unit - kSlack);
  const double first = isRound ? below : std::ceil(interval.fLower / unit - kSlack);
  const double last = isRound ? above : std::floor(interval.fUpper / unit + kSlack);
  for (double i = first; i <= last; ++i) fvValues.push_back(GetValue(i));
  if (isRound) fInterval = {fvValues.front(), fvValues.back()};
  fvLabels = LabelsOf(fvValues, fPower);
}

// The one of 1, 2, 5 and 10 times a power of ten that is nearest to the width, in ratio.
void Ticks::ChooseStep(double width) {
  fPower = static_cast<int>(std::floor(std::log10(width)));
  const double mantissa = width / std::pow(10.0, fPower);
  const bool isNearTen = mantissa >= std::sqrt(50.0);
  fMantissa = isNearTen || mantissa < std::sqrt(2.0) ? 1 : mantissa < std::sqrt(10.0) ? 2 : 5;
  if (isNearTen) ++fPower;
}

int Ticks::GetLongestLabel() const {
  return LongestOf(fvLabels);
}

// Divides by the power of ten where that is exact, so that 0.3 is 3 / 10. Adding zero takes the sign off -0.
double Ticks::GetValue(double index) const {
  const double multiple = index * fMantissa;
  return (fPower < 0 ? multiple / std::pow(10.0, -fPower) : multiple * std::pow(10.0, fPower)) + 0.0;
}

}  // namespace BayesHost
