#include "component/numeric/StableLog.h"

#include <cmath>
#include <iterator>
#include <numbers>

namespace BayesComponent {

double StirlingRemainder(double x) {
  if (x < 16) {
    const double stirling = (x - 0.5) * std::log(x) - x + 0.5 * std::log(2 * std::numbers::pi);
    return std::lgamma(x) - stirling;
  }
  // B_2k / (2k (2k - 1) x^(2k-1)), k = 1 to 6; the next term is below 1e-17 from x = 16 on.
  constexpr double kTerms[] = {1.0 / 12, -1.0 / 360, 1.0 / 1260, -1.0 / 1680, 1.0 / 1188, -691.0 / 360360};
  double sum = 0;
  for (auto term = std::rbegin(kTerms); term != std::rend(kTerms); ++term) sum = sum / (x * x) + *term;
  return sum / x;
}

double Deviance(double x, double m) {
  if (x == 0) return m;
  // Sums of halves and tenths: x + m itself may leave the range of numbers.
  if (std::abs(x - m) >= 0.1 * x + 0.1 * m) return x * std::log(x / m) - (x - m);
  // Near x = m: a series in r = (x - m)/(x + m), from ln(x/m) = 2 atanh r.
  const double r = (0.5 * x - 0.5 * m) / (0.5 * x + 0.5 * m);
  double sum = (x - m) * r;
  double power = 2 * r * x;
  for (int k = 3;; k += 2) {
    power *= r * r;
    const double next = sum + power / k;
    if (!(std::abs(next - sum) > 0)) return sum;  // NaN too: an argument that isn't finite
    sum = next;
  }
}

double LogGammaHalfStep(double x) {
  if (x < 16) return std::lgamma(x) - std::lgamma(x + 0.5);
  // Stirling on both sides: (x - 1/2) ln x + 1/2 - x ln(x + 1/2).
  return 0.5 - 0.5 * std::log(x) - x * std::log1p(0.5 / x) + StirlingRemainder(x) -
         StirlingRemainder(x + 0.5);
}

}  // namespace BayesComponent
