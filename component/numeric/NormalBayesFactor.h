// Bayes factors for normal means, as natural logarithms of null over alternative (BF01) or the reverse
// (BF10).
#pragma once

#include "component/numeric/GaussLobatto.h"
#include "component/numeric/RandomStream.h"

namespace BayesComponent {

// A test statistic with what it is worth: t (or z, with infinite fDF), the effective number of cases N, for
// which t = sqrt(N) times the estimated effect size, and the degrees of freedom.
struct MeanTest {
  double fT;
  double fN;
  double fDF;
};

// ln BF10 for an effect size that is normal with mean 0 and variance g >= 0 under the alternative, the scale
// having the prior 1/sigma^2 under both. Rouder, Speckman, Sun, Morey & Iverson (2009), Psychon. Bull. Rev.
// 16:225-237: the integrand of eq. (1) over the prior of g, in its limit for a known variance at infinite
// fDF.
double LogBF10GivenG(const MeanTest& test, double g);

// ln BF01 with g ~ inverse gamma (1/2, scale^2/2), a Cauchy effect size of that scale > 0: eq. (1) there.
LogIntegral LogBF01Cauchy(const MeanTest& test, double scale, const GaussLobatto& quadrature);

// The same as a mean over `samples` >= 1 draws of g.
double LogBF01Cauchy(const MeanTest& test, double scale, int samples, RandomStream& random);

// ln BF01 with an effect size that is normal with this mean and variance > 0 under the alternative.
// Gonen, Johnson, Lu & Westfall (2005), Am. Stat. 59:252-257.
LogIntegral LogBF01NormalEffect(const MeanTest& test, double mean, double variance,
                                const GaussLobatto& quadrature);

// ln BF01 under a Pearson type VI prior of g with -1 < a <= -1/2; the fN of the test plays no part.
// Wang & Liu (2016), Am. Stat. 70:195-201. NaN unless fDF > 2a + 2, finite.
double LogBF01PearsonSix(const MeanTest& test, double a);

}  // namespace BayesComponent
