// The correlation record as the platform hands it out.
#include <ostream>

#include "component/CorrelationRecord.h"
#include "component/SettingsView.h"

namespace MCBSN_850 {

using Corr = BSNPearsonCorrelationOutputStats;

Corr::BSNPearsonCorrelationOutputStats(std::shared_ptr<const Data> data) : fpData(std::move(data)) {}

// clang-format off
const std::vector<std::pair<int, int>>& Corr::GetVarPairIndices() const { return fpData->fvPairs; }
const Values& Corr::GetPearsonCorrelation() const { return fpData->fvCoefficients; }
const Values& Corr::GetBayesFactor() const { return fpData->fBayesFactors.fvValues; }
const Flags& Corr::GetIsLogBayesFactor() const { return fpData->fBayesFactors.fvAreLogs; }
const Flags& Corr::GetIndIntegralFailed() const { return fpData->fvAreEstimates; }
const Values& Corr::GetVarN() const { return fpData->fvVariableNs; }
const Values& Corr::GetVarPairN() const { return fpData->fvPairNs; }
const Values& Corr::GetPosteriorMode() const { return fpData->fPosterior.fvModes; }
const Values& Corr::GetPosteriorMean() const { return fpData->fPosterior.fvMeans; }
const Values& Corr::GetPosteriorVariance() const { return fpData->fPosterior.fvVariances; }
const Values& Corr::GetPosteriorLowerBound() const { return fpData->fPosterior.fvLowers; }
const Values& Corr::GetPosteriorUpperBound() const { return fpData->fPosterior.fvUppers; }
const Curves& Corr::GetPlotXAxis() const { return fpData->fCurves.fLikelihoods.fvArguments; }
const Curves& Corr::GetPlotLogLikelihood() const { return fpData->fCurves.fLikelihoods.fvValues; }
const Curves& Corr::GetPlotPosterior() const { return fpData->fCurves.fPosteriors.fvValues; }
const Curves& Corr::GetPlotPrior() const { return fpData->fCurves.fPriors.fvValues; }
// clang-format on

void Corr::Write(std::ostream& stream) const {
  const auto write = [&stream](const char* name, double value) {
    stream << ' ' << name << ' ';
    if (BayesComponent::IsGiven(value)) {
      stream << value;
    } else {
      stream << '.';
    }
  };
  for (std::size_t i = 0; i < fpData->fvPairs.size(); ++i) {
    stream << "pair " << fpData->fvPairs[i].first << ' ' << fpData->fvPairs[i].second << ':';
    write("N", fpData->fvPairNs[i]);
    write("coefficient", fpData->fvCoefficients[i]);
    write("Bayes factor", fpData->fBayesFactors.fvValues[i]);
    write("posterior mode", fpData->fPosterior.fvModes[i]);
    write("mean", fpData->fPosterior.fvMeans[i]);
    write("variance", fpData->fPosterior.fvVariances[i]);
    write("lower", fpData->fPosterior.fvLowers[i]);
    write("upper", fpData->fPosterior.fvUppers[i]);
    stream << '\n';
  }
}

}  // namespace MCBSN_850
