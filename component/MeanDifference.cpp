#include "component/MeanDifference.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "component/NormalMean.h"
#include "component/numeric/StudentDifference.h"

namespace BayesComponent {

namespace {

constexpr LogIntegral kUndefined{std::numeric_limits<double>::quiet_NaN(), true};

GroupRow Describe(const Moments& sample) {
  const double n = sample.Count();
  const double stdDev = n > 1 ? std::sqrt(sample.SumOfSquares() / (n - 1)) : kMissing;
  return {n, n > 0 ? Shown(sample.Mean()) : kMissing, n > 1 ? Shown(stdDev) : kMissing,
          n > 1 ? Shown(stdDev / std::sqrt(n)) : kMissing};
}

// Taken from one of the means, so that groups far from 0 keep the digits of their difference.
double DifferenceOf(const std::array<Moments, 2>& samples) {
  const double origin = samples[0].Mean();
  return samples[0].MeanMinus(origin) - samples[1].MeanMinus(origin);
}

}  // namespace

double MeanDifference::Group::SquaredError() const {
  return (IsGiven(fKnownVariance) ? fKnownVariance : fSumOfSquares / (fN - 1)) / fN;
}

MeanDifference::MeanDifference(const BSNSettings& settings, StatusList& statuses)
    : fSettings(settings),
      fStatuses(statuses),
      fVariances(KindOfVariances()),
      fQuadrature(QuadratureOf(settings)),
      fRandom(settings.GetRandomSeed()) {}

MeanDifference::Variances MeanDifference::KindOfVariances() const {
  const auto& variances = fSettings.GetDataVarVals();
  if (variances.size() == 2 && std::all_of(variances.begin(), variances.end(), IsGiven))
    return Variances::Known;
  return fSettings.GetEqualDataVar() ? Variances::Equal : Variances::Unequal;
}

void MeanDifference::Append(const std::array<Moments, 2>& samples, int slot, Data& data) {
  Groups groups;
  for (std::size_t i = 0; i < 2; ++i) {
    const double variance =
        fVariances == Variances::Known ? EntryOf(fSettings.GetDataVarVals(), i) : kMissing;
    groups[i] = {samples[i].Count(), samples[i].Mean(), samples[i].SumOfSquares(), variance};
    data.fGroups[i].Append(Describe(samples[i]));
  }
  TestRow row;
  std::unique_ptr<const Distribution> posterior;
  std::array<CurveSet, 2> curves;
  if (IsTestable(groups)) {
    const double difference = DifferenceOf(samples);
    row = Test(groups, difference);
    if (WantsPosterior(fSettings)) {
      posterior = Infer(groups, difference, slot);
      curves = {DrawGroup(groups, 0), DrawGroup(groups, 1)};
    }
  }
  data.fvVariables.push_back(slot);
  data.fvDifferences.push_back(row.fDifference);
  data.fvStdErrors.push_back(row.fStdError);
  data.fvTs.push_back(row.fT);
  data.fvDFs.push_back(row.fDF);
  data.fvSigs.push_back(row.fSig);
  data.fvBayesFactors.push_back(row.fBayesFactor);
  data.fPosterior.Append(Characterise(posterior.get(), fSettings.GetCILevel(), fStatuses));
  data.fPosteriorCurves.Append(posterior ? DrawPosterior(fSettings, *posterior) : Curve());
  for (std::size_t i = 0; i < 2; ++i) {
    data.fGroups[i].fLikelihoods.Append(curves[i].fLikelihood);
    data.fGroups[i].fPriors.Append(curves[i].fPrior);
  }
}

// One case in a group tells its mean but not its variance.
bool MeanDifference::IsTestable(const Groups& groups) {
  const double smaller = std::min(groups[0].fN, groups[1].fN);
  if (smaller < 2) fStatuses.Warn(kGroupTooSmall);
  if (fVariances == Variances::Known) return smaller > 0;
  if (smaller >= 2) ReportConstants(groups);
  return smaller >= 2;
}

void MeanDifference::ReportConstants(const Groups& groups) {
  const auto isConstant = [](const Group& group) { return group.fSumOfSquares == 0; };
  const auto nConstant = std::count_if(groups.begin(), groups.end(), isConstant);
  if (nConstant == 2) fStatuses.Warn(kBothGroupsConstant);
  if (nConstant == 1) fStatuses.Warn(kOneGroupConstant);
}

MeanDifference::TestRow MeanDifference::Test(const Groups& groups, double difference) {
  const double stdError = StdError(groups);
  TestRow row;
  row.fDifference = Shown(difference);
  row.fStdError = Shown(stdError);
  if (stdError == 0) return row;
  const double n1 = groups[0].fN;
  const double n2 = groups[1].fN;
  const MeanTest test{difference / stdError, n1 / (n1 + n2) * n2, DegreesOfFreedom(groups)};
  row.fDF = Shown(test.fDF);
  // Sums that left the range of a double.
  const bool isComputable = std::isfinite(stdError) && std::isfinite(test.fT);
  if (isComputable) {
    row.fT = test.fT;
    row.fSig = Shown(TwoSidedSignificance(test.fT, test.fDF));
  }
  if (WantsBayesFactor(fSettings)) {
    row.fBayesFactor =
        BayesFactorOf(isComputable ? LogBayesFactor(test, n1 + n2 - 2) : kUndefined, fStatuses);
  }
  return row;
}

double MeanDifference::StdError(const Groups& groups) const {
  if (fVariances != Variances::Equal) return std::sqrt(groups[0].SquaredError() + groups[1].SquaredError());
  const double pooled = (groups[0].fSumOfSquares + groups[1].fSumOfSquares) / DegreesOfFreedom(groups);
  return std::sqrt(pooled * (1 / groups[0].fN + 1 / groups[1].fN));
}

// For unequal variances: Welch (1938), Biometrika 29:350-362, and Satterthwaite (1946), Biometrics 2:110-114.
double MeanDifference::DegreesOfFreedom(const Groups& groups) const {
  if (fVariances == Variances::Known) return std::numeric_limits<double>::infinity();
  const double n1 = groups[0].fN;
  const double n2 = groups[1].fN;
  if (fVariances == Variances::Equal) return n1 + n2 - 2;
  // As shares of their sum, so that their squares stay in range.
  const double share = groups[0].SquaredError() / (groups[0].SquaredError() + groups[1].SquaredError());
  return 1 / (share * share / (n1 - 1) + (1 - share) * (1 - share) / (n2 - 1));
}

// With unequal variances t and its degrees of freedom are plugged into the formulas for a common variance.
// `pooledDF`: what the Pearson prior takes for known variances.
LogIntegral MeanDifference::LogBayesFactor(const MeanTest& test, double pooledDF) {
  const double first = fSettings.GetRegrComPar();
  switch (fSettings.GetRegrCompType()) {
    case BSNConst::JZS:
      return LogBayesFactorCauchy(test, 1);
    case BSNConst::Rouder:
      return LogBayesFactorCauchy(test, GivenOr(first, 1));
    case BSNConst::Gonen: {
      const double variance = GivenOr(fSettings.GetSecondGonenPar(), 1);
      return variance > 0 ? LogBF01NormalEffect(test, GivenOr(first, 0), variance, fQuadrature) : kUndefined;
    }
    case BSNConst::Hyper: {
      const double a = GivenOr(first, -0.75);
      const double df = std::isinf(test.fDF) ? pooledDF : test.fDF;
      return a > -1 && a <= -0.5 ? LogIntegral{LogBF01PearsonSix({test.fT, test.fN, df}, a), true}
                                 : kUndefined;
    }
    default:
      return kUndefined;
  }
}

LogIntegral MeanDifference::LogBayesFactorCauchy(const MeanTest& test, double scale) {
  if (!(scale > 0)) return kUndefined;
  if (fSettings.GetMethodType() == BSNConst::AGL) return LogBF01Cauchy(test, scale, fQuadrature);
  return {LogBF01Cauchy(test, scale, SamplesOf(fSettings), fRandom), true};
}

std::unique_ptr<const Distribution> MeanDifference::Infer(const Groups& groups, double difference, int slot) {
  ReportUnusableMeanPrior();
  switch (fVariances) {
    case Variances::Known:
      return InferWithKnownVariances(groups, difference);
    case Variances::Equal:
      return InferWithEqualVariances(groups, difference, slot);
    default:
      return InferWithUnequalVariances(groups, slot);
  }
}

std::shared_ptr<const NormalDistribution> MeanDifference::MeanPrior(std::size_t group) const {
  const bool isNormal = fSettings.GetMeanDistType() == BSNConst::Normal;
  if (fVariances != Variances::Known || !isNormal) return nullptr;
  const double means[] = {fSettings.GetMeanDistParam1(), fSettings.GetMeanDistParam2()};
  const double variances[] = {GivenOr(fSettings.GetMeanDistParam3(), 1),
                              GivenOr(fSettings.GetMeanDistParam4(), 1)};
  if (!(variances[0] > 0 && variances[1] > 0)) return nullptr;
  return std::make_shared<NormalDistribution>(GivenOr(means[group], 0), variances[group]);
}

void MeanDifference::ReportUnusableMeanPrior() {
  const bool isUsed = fSettings.GetMeanDistType() == BSNConst::Diffuse || MeanPrior(0);
  if (!isUsed) fStatuses.Warn(kPriorMadeDiffuse);
}

std::unique_ptr<const Distribution> MeanDifference::InferWithKnownVariances(const Groups& groups,
                                                                            double difference) const {
  const double errors[] = {groups[0].SquaredError(), groups[1].SquaredError()};
  if (!MeanPrior(0)) return std::make_unique<NormalDistribution>(difference, errors[0] + errors[1]);
  double means[2];
  double variances[2];
  for (std::size_t i = 0; i < 2; ++i) {
    const auto prior = MeanPrior(i);
    variances[i] = 1 / (1 / errors[i] + 1 / *prior->Variance());
    means[i] = variances[i] * (groups[i].fMean / errors[i] + *prior->Mean() / *prior->Variance());
  }
  return std::make_unique<NormalDistribution>(means[0] - means[1], variances[0] + variances[1]);
}

std::unique_ptr<const Distribution> MeanDifference::InferWithEqualVariances(const Groups& groups,
                                                                            double difference, int slot) {
  const VariancePrior prior = UsableVariancePrior();
  const double df = prior.fDF + groups[0].fN + groups[1].fN - 2;
  const double sum = prior.fSum + groups[0].fSumOfSquares + groups[1].fSumOfSquares;
  if (sum == 0) return nullptr;
  if (df <= 2) fStatuses.Warn(kGroupsTooFewCases, slot);
  if (df <= 0) return nullptr;
  const double squaredScale = sum / df * (1 / groups[0].fN + 1 / groups[1].fN);
  return std::make_unique<StudentDistribution>(df, difference, squaredScale);
}

// Each mean is Student with n - 3 degrees of freedom under diffuse priors; their difference is the Behrens-
// Fisher distribution.
std::unique_ptr<const Distribution> MeanDifference::InferWithUnequalVariances(const Groups& groups,
                                                                              int slot) {
  if (fSettings.GetPriorDistType() != BSNConst::Diffuse) fStatuses.Warn(kVariancePriorMadeDiffuse);
  const auto isConstant = [](const Group& group) { return group.fSumOfSquares == 0; };
  if (std::any_of(groups.begin(), groups.end(), isConstant)) return nullptr;
  const double smaller = std::min(groups[0].fN, groups[1].fN);
  if (smaller <= 5) fStatuses.Warn(kGroupsTooFewCases, slot);
  if (smaller <= 3) return nullptr;
  const auto meanOf = [](const Group& group) {
    const double df = group.fN - 3;
    return StudentDistribution(df, group.fMean, group.fSumOfSquares / df / group.fN);
  };
  return std::make_unique<StudentDifference>(meanOf(groups[0]), meanOf(groups[1]));
}

VariancePrior MeanDifference::UsableVariancePrior() {
  const std::optional<VariancePrior> prior = VariancePriorOf(fSettings);
  if (!prior) fStatuses.Warn(kPriorMadeDiffuse);
  return prior.value_or(kDiffuseVariance);
}

CurveSet MeanDifference::DrawGroup(const Groups& groups, std::size_t group) const {
  const Group& own = groups[group];
  const Density prior = PriorDensity(MeanPrior(group));
  switch (fVariances) {
    case Variances::Known:
      return DrawCurves(fSettings, MeanLikelihood(own.fN, own.fMean, own.fKnownVariance), nullptr, prior);
    case Variances::Equal: {
      const double allCases = groups[0].fN + groups[1].fN;
      const double sum = groups[0].fSumOfSquares + groups[1].fSumOfSquares;
      return DrawCurves(fSettings, MeanProfileLikelihood(own.fN, own.fMean, allCases, sum), nullptr, prior);
    }
    default:
      return DrawCurves(fSettings, MeanProfileLikelihood(own.fN, own.fMean, own.fN, own.fSumOfSquares),
                        nullptr, prior);
  }
}

}  // namespace BayesComponent
