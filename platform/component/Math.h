// Small records of mathematical results. Header only.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/Visibility.h"
#include "platform/component/Common.h"

namespace MCMath_850 {

// One parameter of a linear model: the intercept (no variable), a covariate's slope (one covariate) or the
// effect of a factor's level (one factor with its category code). Variables are record slots.
class BAYES_PLATFORM MCRegrParameter {
 public:
  MCRegrParameter() = default;
  static MCRegrParameter OfCovariate(int slot) {
    MCRegrParameter parameter;
    parameter.fvCovariates = {slot};
    return parameter;
  }
  static MCRegrParameter OfLevel(int slot, int category) {
    MCRegrParameter parameter;
    parameter.fvFactors = {slot};
    parameter.fvCategories = {category};
    return parameter;
  }

  bool IsIntercept() const { return fvFactors.empty() && fvCovariates.empty(); }
  int GetNFactors() const { return static_cast<int>(fvFactors.size()); }
  int GetNCovariates() const { return static_cast<int>(fvCovariates.size()); }
  const std::vector<int>& GetFactors() const { return fvFactors; }
  const std::vector<int>& GetCovariates() const { return fvCovariates; }
  // One code for each factor, in the order of the factors.
  const std::vector<int>& GetCategories() const { return fvCategories; }

 private:
  std::vector<int> fvFactors;
  std::vector<int> fvCovariates;
  std::vector<int> fvCategories;
};

// A chi-square or F test. What could not be computed is missing.
class BAYES_PLATFORM MCTestStats {
 public:
  MCTestStats() = default;
  MCTestStats(double statistic, double df, double df2, double significance)
      : fStatistic(statistic), fDF(df), fDF2(df2), fSignificance(significance) {}

  // The F or chi-square statistic.
  double GetWald() const { return fStatistic; }
  double GetDF() const { return fDF; }
  // Denominator degrees of freedom of an F test, missing for chi-square.
  double GetDF2() const { return fDF2; }
  double GetSig() const { return fSignificance; }

 private:
  double fStatistic = MCCommon_850::MCMV::Missing();
  double fDF = MCCommon_850::MCMV::Missing();
  double fDF2 = MCCommon_850::MCMV::Missing();
  double fSignificance = MCCommon_850::MCMV::Missing();
};

// A subset of the numbers from 0 up to its size.
class BAYES_PLATFORM MCBitSet {
 public:
  MCBitSet() = default;
  explicit MCBitSet(std::size_t size) : fvBits(size, false) {}

  std::size_t Size() const { return fvBits.size(); }
  // i < Size().
  bool IsIn(std::size_t i) const { return fvBits[i]; }
  void Insert(std::size_t i) { fvBits[i] = true; }
  void Remove(std::size_t i) { fvBits[i] = false; }

 private:
  std::vector<bool> fvBits;
};

}  // namespace MCMath_850
