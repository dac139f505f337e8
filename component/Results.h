// From a computed number to what a record may hold: finite, or missing with a status that says why.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "component/Records.h"
#include "component/SettingsView.h"
#include "component/StatusList.h"
#include "component/numeric/Distribution.h"
#include "component/numeric/GaussLobatto.h"

namespace BayesComponent {

// The value, or missing when it is not a finite number.
double Shown(double value);
double Shown(const std::optional<double>& value);

// A Bayes factor from its logarithm, held inside the range of the normal doubles. NaN is missing and raises
// kNumericFailure; an integral that didn't converge raises kIntegralNotConverged.
double BayesFactorOf(const LogIntegral& lnBayesFactor, StatusList& statuses);

// The same for a record that can show logarithms: beyond +-700 it holds the logarithm and kBayesFactorIsLog
// is raised.
void AppendBayesFactor(const LogIntegral& lnBayesFactor, LoggableColumns& columns, StatusList& statuses);
void AppendNoBayesFactor(LoggableColumns& columns);

// `level`: of the credible interval, in percent. All missing without a posterior; a number that left the
// range of a double is missing and raises kNumericFailure.
PosteriorRow Characterise(const Distribution* posterior, double level, StatusList& statuses);

using Density = std::function<double(double)>;

// A likelihood as a function of one parameter, the others at their conditional maximum.
struct Likelihood {
  // Natural logarithm; its maximum is 0.
  Density fLog;
  // Proportional to it. Null when it can't be normalised, or is degenerate: then there is nothing to draw.
  std::unique_ptr<const Distribution> fNormalised;
};

Density FlatPrior();
// The density of a distribution, or the flat prior for none.
Density PriorDensity(const std::shared_ptr<const Distribution>& prior);

// 201 equally spaced points over the central 99.9 % of posterior (may be null) and normalised likelihood;
// where plots aren't shown, those up to the first number of each curve.
CurveSet DrawCurves(const BSNSettings& settings, const Likelihood& likelihood, const Distribution* posterior,
                    const Density& prior);
Curve DrawPosterior(const BSNSettings& settings, const Distribution& posterior);

}  // namespace BayesComponent
