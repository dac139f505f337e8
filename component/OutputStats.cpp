// The records as the platform hands them out: each getter gives one column.
#include <ostream>

#include "component/Records.h"
#include "component/SettingsView.h"

namespace MCBSN_850 {

namespace {

using BayesComponent::IsGiven;

template <class Column>
void WriteColumn(std::ostream& stream, const char* name, const Column& column) {
  stream << name << ':';
  for (const auto value : column) {
    if (IsGiven(value)) {
      stream << ' ' << value;
    } else {
      stream << " .";
    }
  }
  stream << '\n';
}

void WritePosterior(std::ostream& stream, const BayesComponent::PosteriorColumns& posterior) {
  WriteColumn(stream, "posterior mode", posterior.fvModes);
  WriteColumn(stream, "posterior mean", posterior.fvMeans);
  WriteColumn(stream, "posterior variance", posterior.fvVariances);
  WriteColumn(stream, "lower limit", posterior.fvLowers);
  WriteColumn(stream, "upper limit", posterior.fvUppers);
}

void WriteMeanTest(std::ostream& stream, const BayesComponent::MeanTestColumns& columns) {
  WriteColumn(stream, "N", columns.fvNs);
  WriteColumn(stream, "mean", columns.fvMeans);
  WriteColumn(stream, "standard deviation", columns.fvStdDevs);
  WriteColumn(stream, "standard error", columns.fvStdErrors);
  WriteColumn(stream, "t", columns.fvTs);
  WriteColumn(stream, "df", columns.fvDFs);
  WriteColumn(stream, "significance", columns.fvSigs);
  WriteColumn(stream, "Bayes factor", columns.fvBayesFactors);
  WritePosterior(stream, columns.fPosterior);
}

}  // namespace

BSNOutputStats::~BSNOutputStats() = default;

using Norm = BSN1SampleNormOutputStats;
using Related = BSN2SampleRelatedOutputStats;
using Bino = BSN1SampleBinoOutputStats;
using Poisn = BSN1SamplePoisnOutputStats;
using Ind = BSN2SampleIndOutputStats;

Norm::BSN1SampleNormOutputStats(std::shared_ptr<const Data> data) : fpData(std::move(data)) {}

// clang-format off
const Indices& Norm::GetVarIndices() const { return fpData->fvVariables; }
const Values& Norm::GetNs() const { return fpData->fvNs; }
const Values& Norm::GetMeanValues() const { return fpData->fvMeans; }
const Values& Norm::GetStdDevs() const { return fpData->fvStdDevs; }
const Values& Norm::GetEMs() const { return fpData->fvStdErrors; }
const Values& Norm::GetTValues() const { return fpData->fvTs; }
const Values& Norm::GetDFValues() const { return fpData->fvDFs; }
const Values& Norm::GetSigs() const { return fpData->fvSigs; }
const Values& Norm::GetBayesFactors() const { return fpData->fvBayesFactors; }
const Values& Norm::GetModeValues() const { return fpData->fPosterior.fvModes; }
const Values& Norm::GetPostMeanValues() const { return fpData->fPosterior.fvMeans; }
const Values& Norm::GetVarianceValues() const { return fpData->fPosterior.fvVariances; }
const Values& Norm::GetLowerLimits() const { return fpData->fPosterior.fvLowers; }
const Values& Norm::GetUpperLimits() const { return fpData->fPosterior.fvUppers; }
const Curves& Norm::GetPlotArguments4Likelihoods() const { return fpData->fCurves.fLikelihoods.fvArguments; }
const Curves& Norm::GetPlotLikelihoods() const { return fpData->fCurves.fLikelihoods.fvValues; }
const Curves& Norm::GetPlotArguments4Posterior() const { return fpData->fCurves.fPosteriors.fvArguments; }
const Curves& Norm::GetPlotPosterior() const { return fpData->fCurves.fPosteriors.fvValues; }
const Curves& Norm::GetPlotArguments4Prior() const { return fpData->fCurves.fPriors.fvArguments; }
const Curves& Norm::GetPlotPrior() const { return fpData->fCurves.fPriors.fvValues; }
// clang-format on

void Norm::Write(std::ostream& stream) const {
  WriteColumn(stream, "variable", fpData->fvVariables);
  WriteMeanTest(stream, *fpData);
}

Related::BSN2SampleRelatedOutputStats(std::shared_ptr<const Data> data) : fpData(std::move(data)) {}

// clang-format off
const Indices& Related::Get1ndRelatedList() const { return fpData->fvFirsts; }
const Indices& Related::Get2ndRelatedList() const { return fpData->fvSeconds; }
const Values& Related::GetNs() const { return fpData->fvNs; }
const Values& Related::GetMeanDiffValues() const { return fpData->fvMeans; }
const Values& Related::GetStdDevs() const { return fpData->fvStdDevs; }
const Values& Related::GetEMs() const { return fpData->fvStdErrors; }
const Values& Related::GetTValues() const { return fpData->fvTs; }
const Values& Related::GetDFValues() const { return fpData->fvDFs; }
const Values& Related::GetSigs() const { return fpData->fvSigs; }
const Values& Related::GetBayesFactors() const { return fpData->fvBayesFactors; }
const Values& Related::GetModeValues() const { return fpData->fPosterior.fvModes; }
const Values& Related::GetPostMeanValues() const { return fpData->fPosterior.fvMeans; }
const Values& Related::GetVarianceValues() const { return fpData->fPosterior.fvVariances; }
const Values& Related::GetLowerLimits() const { return fpData->fPosterior.fvLowers; }
const Values& Related::GetUpperLimits() const { return fpData->fPosterior.fvUppers; }
const Curves& Related::GetPlotArguments4Likelihoods() const { return fpData->fCurves.fLikelihoods.fvArguments; }
const Curves& Related::GetPlotLikelihoods() const { return fpData->fCurves.fLikelihoods.fvValues; }
const Curves& Related::GetPlotArguments4Posterior() const { return fpData->fCurves.fPosteriors.fvArguments; }
const Curves& Related::GetPlotPosterior() const { return fpData->fCurves.fPosteriors.fvValues; }
const Curves& Related::GetPlotArguments4Prior() const { return fpData->fCurves.fPriors.fvArguments; }
const Curves& Related::GetPlotPrior() const { return fpData->fCurves.fPriors.fvValues; }
// clang-format on

void Related::Write(std::ostream& stream) const {
  WriteColumn(stream, "first", fpData->fvFirsts);
  WriteColumn(stream, "second", fpData->fvSeconds);
  WriteMeanTest(stream, *fpData);
}

Bino::BSN1SampleBinoOutputStats(std::shared_ptr<const Data> data) : fpData(std::move(data)) {}

// clang-format off
const Indices& Bino::GetVarIndices() const { return fpData->fvVariables; }
const Values& Bino::GetNs() const { return fpData->fvNs; }
const Values& Bino::GetCat1Ns() const { return fpData->fvSuccesses; }
const Values& Bino::GetCat2Ns() const { return fpData->fvFailures; }
const Indices& Bino::GetCat1Indices() const { return fpData->fvSuccessCodes; }
const Values& Bino::GetCat1Props() const { return fpData->fvSuccessProportions; }
const Values& Bino::GetCat2Props() const { return fpData->fvFailureProportions; }
const Values& Bino::GetBayesFactors() const { return fpData->fBayesFactors.fvValues; }
const Flags& Bino::GetIsLogBayesFactor() const { return fpData->fBayesFactors.fvAreLogs; }
const Values& Bino::GetModeValues() const { return fpData->fPosterior.fvModes; }
const Values& Bino::GetMeanValues() const { return fpData->fPosterior.fvMeans; }
const Values& Bino::GetVarianceValues() const { return fpData->fPosterior.fvVariances; }
const Values& Bino::GetLowerLimits() const { return fpData->fPosterior.fvLowers; }
const Values& Bino::GetUpperLimits() const { return fpData->fPosterior.fvUppers; }
const Curves& Bino::GetPlotArguments() const { return fpData->fCurves.fLikelihoods.fvArguments; }
const Curves& Bino::GetPlotLikelihoods() const { return fpData->fCurves.fLikelihoods.fvValues; }
const Curves& Bino::GetPlotPosterior() const { return fpData->fCurves.fPosteriors.fvValues; }
const Curves& Bino::GetPlotPrior() const { return fpData->fCurves.fPriors.fvValues; }
// clang-format on

void Bino::Write(std::ostream& stream) const {
  WriteColumn(stream, "variable", fpData->fvVariables);
  WriteColumn(stream, "N", fpData->fvNs);
  WriteColumn(stream, "successes", fpData->fvSuccesses);
  WriteColumn(stream, "Bayes factor", fpData->fBayesFactors.fvValues);
  WritePosterior(stream, fpData->fPosterior);
}

Poisn::BSN1SamplePoisnOutputStats(std::shared_ptr<const Data> data) : fpData(std::move(data)) {}

// clang-format off
const Indices& Poisn::GetVarIndices() const { return fpData->fvVariables; }
const Values& Poisn::GetNs() const { return fpData->fvNs; }
const Values& Poisn::GetMinCnts() const { return fpData->fvSmallest; }
const Values& Poisn::GetMaxCnts() const { return fpData->fvLargest; }
const Values& Poisn::GetBayesFactors() const { return fpData->fBayesFactors.fvValues; }
const Flags& Poisn::GetIsLogBayesFactor() const { return fpData->fBayesFactors.fvAreLogs; }
const Values& Poisn::GetModeValues() const { return fpData->fPosterior.fvModes; }
const Values& Poisn::GetMeanValues() const { return fpData->fPosterior.fvMeans; }
const Values& Poisn::GetVarianceValues() const { return fpData->fPosterior.fvVariances; }
const Values& Poisn::GetLowerLimits() const { return fpData->fPosterior.fvLowers; }
const Values& Poisn::GetUpperLimits() const { return fpData->fPosterior.fvUppers; }
const Curves& Poisn::GetPlotArguments4Likelihoods() const { return fpData->fCurves.fLikelihoods.fvArguments; }
const Curves& Poisn::GetPlotLikelihoods() const { return fpData->fCurves.fLikelihoods.fvValues; }
const Curves& Poisn::GetPlotArguments4Posterior() const { return fpData->fCurves.fPosteriors.fvArguments; }
const Curves& Poisn::GetPlotPosterior() const { return fpData->fCurves.fPosteriors.fvValues; }
const Curves& Poisn::GetPlotArguments4Prior() const { return fpData->fCurves.fPriors.fvArguments; }
const Curves& Poisn::GetPlotPrior() const { return fpData->fCurves.fPriors.fvValues; }
// clang-format on

void Poisn::Write(std::ostream& stream) const {
  WriteColumn(stream, "variable", fpData->fvVariables);
  WriteColumn(stream, "N", fpData->fvNs);
  WriteColumn(stream, "smallest count", fpData->fvSmallest);
  WriteColumn(stream, "largest count", fpData->fvLargest);
  WriteColumn(stream, "Bayes factor", fpData->fBayesFactors.fvValues);
  WritePosterior(stream, fpData->fPosterior);
}

Ind::BSN2SampleIndOutputStats(std::shared_ptr<const Data> data) : fpData(std::move(data)) {}

// clang-format off
const Indices& Ind::GetGroupStatsVarIndices() const { return fpData->fvVariables; }
const Values& Ind::GetGroup1StatsNs() const { return fpData->fGroups[0].fvNs; }
const Values& Ind::GetGroup1MeanValues() const { return fpData->fGroups[0].fvMeans; }
const Values& Ind::GetGroup1StdDevs() const { return fpData->fGroups[0].fvStdDevs; }
const Values& Ind::GetGroup1EMs() const { return fpData->fGroups[0].fvStdErrors; }
const Values& Ind::GetGroup2StatsNs() const { return fpData->fGroups[1].fvNs; }
const Values& Ind::GetGroup2MeanValues() const { return fpData->fGroups[1].fvMeans; }
const Values& Ind::GetGroup2StdDevs() const { return fpData->fGroups[1].fvStdDevs; }
const Values& Ind::GetGroup2EMs() const { return fpData->fGroups[1].fvStdErrors; }
const Values& Ind::GetMeanDiffValues() const { return fpData->fvDifferences; }
const Values& Ind::GetPStdEDDevs() const { return fpData->fvStdErrors; }
const Values& Ind::GetTValues() const { return fpData->fvTs; }
const Values& Ind::GetDFValues() const { return fpData->fvDFs; }
const Values& Ind::GetSigs() const { return fpData->fvSigs; }
const Values& Ind::GetBayesFactors() const { return fpData->fvBayesFactors; }
const Indices& Ind::GetPostVarIndices() const { return fpData->fvVariables; }
const Values& Ind::GetModeValues() const { return fpData->fPosterior.fvModes; }
const Values& Ind::GetPostMeanValues() const { return fpData->fPosterior.fvMeans; }
const Values& Ind::GetVarianceValues() const { return fpData->fPosterior.fvVariances; }
const Values& Ind::GetLowerLimits() const { return fpData->fPosterior.fvLowers; }
const Values& Ind::GetUpperLimits() const { return fpData->fPosterior.fvUppers; }
const Curves& Ind::GetPlotXArguments() const { return fpData->fGroups[0].fLikelihoods.fvArguments; }
const Curves& Ind::GetPlotXLikelihoods() const { return fpData->fGroups[0].fLikelihoods.fvValues; }
const Curves& Ind::GetPlotXPriorArguments() const { return fpData->fGroups[0].fPriors.fvArguments; }
const Curves& Ind::GetPlotXPrior() const { return fpData->fGroups[0].fPriors.fvValues; }
const Curves& Ind::GetPlotYArguments() const { return fpData->fGroups[1].fLikelihoods.fvArguments; }
const Curves& Ind::GetPlotYLikelihoods() const { return fpData->fGroups[1].fLikelihoods.fvValues; }
const Curves& Ind::GetPlotYPriorArguments() const { return fpData->fGroups[1].fPriors.fvArguments; }
const Curves& Ind::GetPlotYPrior() const { return fpData->fGroups[1].fPriors.fvValues; }
const Curves& Ind::GetPlotArguments() const { return fpData->fPosteriorCurves.fvArguments; }
const Curves& Ind::GetPlotPosterior() const { return fpData->fPosteriorCurves.fvValues; }
// clang-format on

void Ind::Write(std::ostream& stream) const {
  WriteColumn(stream, "variable", fpData->fvVariables);
  WriteColumn(stream, "N of group 1", fpData->fGroups[0].fvNs);
  WriteColumn(stream, "N of group 2", fpData->fGroups[1].fvNs);
  WriteColumn(stream, "mean difference", fpData->fvDifferences);
  WriteColumn(stream, "standard error", fpData->fvStdErrors);
  WriteColumn(stream, "t", fpData->fvTs);
  WriteColumn(stream, "df", fpData->fvDFs);
  WriteColumn(stream, "significance", fpData->fvSigs);
  WriteColumn(stream, "Bayes factor", fpData->fvBayesFactors);
  WritePosterior(stream, fpData->fPosterior);
}

}  // namespace MCBSN_850
