// Inference on a proportion or a rate: the part that binomial and Poisson tests share.
#pragma once

#include <memory>

#include "component/Records.h"
#include "component/Results.h"
#include "component/SettingsView.h"
#include "component/StatusList.h"
#include "component/numeric/CountBayesFactor.h"

namespace BayesComponent {

// What was observed: successes or the sum of counts, in `fN` cases.
struct CountSample {
  double fTotal;
  double fN;
};

// A family of counts with its conjugate priors; a prior's two numbers are those of ConjugatePrior.
class CountModel {
 public:
  virtual ~CountModel() = default;
  virtual ConjugatePrior JeffreysPrior() const = 0;
  // Whether a number can be the parameter under a point null hypothesis.
  virtual bool IsNullValue(double value) const = 0;
  virtual ConjugatePrior Update(const ConjugatePrior& prior, const CountSample& sample) const = 0;
  // Needs a proper prior.
  virtual std::unique_ptr<const Distribution> DistributionOf(const ConjugatePrior& prior) const = 0;
  // The density of a prior up to a factor, improper ones included.
  virtual Density KernelOf(const ConjugatePrior& prior) const = 0;
  virtual Likelihood LikelihoodOf(const CountSample& sample) const = 0;
  virtual double LogBF01(const CountSample& sample, double nullValue,
                         const ConjugatePrior& alternative) const = 0;
  virtual double LogBF01(const CountSample& sample, const ConjugatePrior& null,
                         const ConjugatePrior& alternative) const = 0;
};

// Where one test's results go.
struct CountColumns {
  LoggableColumns& fBayesFactors;
  PosteriorColumns& fPosterior;
  CurveSetColumns& fCurves;
};

class CountInference {
 public:
  CountInference(const BSNSettings& settings, const CountModel& model, StatusList& statuses);

  // Adds a row with everything that the settings ask for.
  void Append(const CountSample& sample, std::size_t test, CountColumns columns);

 private:
  void AppendBayesFactorOf(const CountSample& sample, std::size_t test, LoggableColumns& columns);
  double LogBayesFactor(const CountSample& sample, std::size_t test) const;
  ConjugatePrior Prior();
  Density DensityOf(const ConjugatePrior& prior) const;

  const BSNSettings& fSettings;
  const CountModel& fModel;
  StatusList& fStatuses;
};

}  // namespace BayesComponent
