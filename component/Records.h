// The contents of the result records. Analyses fill them row by row; the platform's classes hand them out.
#pragma once

#include <array>
#include <cstddef>

#include "platform/component/OutputStats.h"

namespace BayesComponent {

using MCBSN_850::Curves;
using MCBSN_850::Flags;
using MCBSN_850::Indices;
using MCBSN_850::Values;

// One chart: values over arguments, none when there is nothing to draw.
struct Curve {
  Values fArguments;
  Values fValues;
};

// A posterior in five numbers, each missing where it doesn't exist.
struct PosteriorRow {
  double fMode;
  double fMean;
  double fVariance;
  double fLower;
  double fUpper;
};

struct PosteriorColumns {
  Values fvModes;
  Values fvMeans;
  Values fvVariances;
  Values fvLowers;
  Values fvUppers;
  void Append(const PosteriorRow& row);
};

struct CurveColumns {
  Curves fvArguments;
  Curves fvValues;
  void Append(const Curve& curve);
};

// Likelihood, posterior and prior of one quantity.
struct CurveSet {
  Curve fLikelihood;
  Curve fPosterior;
  Curve fPrior;
};

struct CurveSetColumns {
  CurveColumns fLikelihoods;
  CurveColumns fPosteriors;
  CurveColumns fPriors;
  void Append(const CurveSet& curves);
};

// A test of one mean, or of the mean of differences.
struct MeanTestRow {
  double fN;
  double fMean;
  double fStdDev;
  double fStdError;
  double fT;
  double fDF;
  double fSig;
  double fBayesFactor;
};

// A Bayes factor, or its natural logarithm where the flag is set.
struct LoggableColumns {
  Values fvValues;
  Flags fvAreLogs;
};

struct MeanTestColumns {
  Values fvNs;
  Values fvMeans;
  Values fvStdDevs;
  Values fvStdErrors;
  Values fvTs;
  Values fvDFs;
  Values fvSigs;
  Values fvBayesFactors;
  PosteriorColumns fPosterior;
  CurveSetColumns fCurves;
  void Append(const MeanTestRow& row);
};

// One group's description of its variable, with the curves of its mean.
struct GroupRow {
  double fN;
  double fMean;
  double fStdDev;
  double fStdError;
};

struct GroupColumns {
  Values fvNs;
  Values fvMeans;
  Values fvStdDevs;
  Values fvStdErrors;
  CurveColumns fLikelihoods;
  CurveColumns fPriors;
  void Append(const GroupRow& row);
};

}  // namespace BayesComponent

namespace MCBSN_850 {

struct BSN1SampleNormOutputStats::Data : BayesComponent::MeanTestColumns {
  Indices fvVariables;
};

struct BSN2SampleRelatedOutputStats::Data : BayesComponent::MeanTestColumns {
  Indices fvFirsts;
  Indices fvSeconds;
};

struct BSN1SampleBinoOutputStats::Data {
  Indices fvVariables;
  Values fvNs;
  Values fvSuccesses;
  Values fvFailures;
  Indices fvSuccessCodes;
  Values fvSuccessProportions;
  Values fvFailureProportions;
  BayesComponent::LoggableColumns fBayesFactors;
  BayesComponent::PosteriorColumns fPosterior;
  BayesComponent::CurveSetColumns fCurves;
};

struct BSN1SamplePoisnOutputStats::Data {
  Indices fvVariables;
  Values fvNs;
  Values fvSmallest;
  Values fvLargest;
  BayesComponent::LoggableColumns fBayesFactors;
  BayesComponent::PosteriorColumns fPosterior;
  BayesComponent::CurveSetColumns fCurves;
};

struct BSN2SampleIndOutputStats::Data {
  Indices fvVariables;
  std::array<BayesComponent::GroupColumns, 2> fGroups;
  Values fvDifferences;
  Values fvStdErrors;
  Values fvTs;
  Values fvDFs;
  Values fvSigs;
  Values fvBayesFactors;
  BayesComponent::PosteriorColumns fPosterior;
  BayesComponent::CurveColumns fPosteriorCurves;
};

}  // namespace MCBSN_850
