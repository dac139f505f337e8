#include "component/numeric/RandomStream.h"

#include <boost/random/normal_distribution.hpp>

namespace BayesComponent {

double RandomStream::Normal() {
  return boost::random::normal_distribution<double>()(fEngine);
}

}  // namespace BayesComponent
