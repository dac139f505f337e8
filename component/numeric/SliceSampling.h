// A draw from a density that is known up to a factor, given a draw from it: the pair is a step of a Markov
// chain. R. M. Neal (2003), Slice sampling, Ann. Stat. 31:705-767, figures 3 and 5.
#pragma once

#include <cmath>

#include "component/numeric/RandomStream.h"

namespace BayesComponent {

// `lnF`: ln of the density, finite at x; `width` > 0: rough width of its peak.
template <class Function>
double SliceSample(const Function& lnF, double x, double width, RandomStream& random) {
  const double level = lnF(x) + std::log(random.Uniform());
  double left = x - width * random.Uniform();
  double right = left + width;
  while (lnF(left) > level) left -= width;
  while (lnF(right) > level) right += width;
  for (;;) {
    const double next = left + random.Uniform() * (right - left);
    if (lnF(next) >= level || next == x) return next;
    (next < x ? left : right) = next;
  }
}

}  // namespace BayesComponent
