#include "component/numeric/DirichletMarginal.h"

#include <cmath>

#include "component/numeric/ContingencyTable.h"
#include "component/numeric/StableLog.h"

namespace BayesComponent {

// Stirling's formula on both sides leaves (a - 1/2) ln(1 + n/a) + n ln(1 + a/n) and its remainders.
double LogGammaMarginal(double count, double shape) {
  if (count == 0) return 0;
  return (shape - 0.5) * std::log1p(count / shape) + count * std::log1p(shape / count) +
         StirlingRemainder(count + shape) - StirlingRemainder(shape);
}

double LogDirichletMarginal(const std::vector<double>& counts, const std::vector<double>& shapes) {
  double sum = -LogGammaMarginal(SumOf(counts), SumOf(shapes));
  for (std::size_t i = 0; i < counts.size(); ++i) sum += LogGammaMarginal(counts[i], shapes[i]);
  return sum;
}

}  // namespace BayesComponent
