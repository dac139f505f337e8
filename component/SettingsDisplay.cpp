// The developer's dump of a settings record.
#include <ostream>

#include "platform/component/Settings.h"

namespace MCBSN_850 {

namespace {

void Put(std::ostream& stream, double value) {
  if (value == MCCommon_850::MCMV::Missing()) {
    stream << "not given";
  } else {
    stream << value;
  }
}

void Put(std::ostream& stream, const BayesFTest& test) {
  stream << test.GetLabel() << (test.HasIntercept() ? " (intercept" : " (");
  for (const int variable : test.GetVariables()) stream << ' ' << variable;
  stream << ')';
}

template <class Value>
void Put(std::ostream& stream, const Value& value) {
  stream << value;
}

template <class Value>
void Put(std::ostream& stream, const std::vector<Value>& values) {
  for (const Value& value : values) {
    Put(stream, value);
    stream << ' ';
  }
}

template <auto Getter>
void Print(std::ostream& stream, const BSNSettings& settings) {
  Put(stream, (settings.*Getter)());
}

struct Line {
  const char* fName;
  void (*fPrint)(std::ostream&, const BSNSettings&);
};

constexpr Line kLines[] = {
    {"ModelType", Print<&BSNSettings::GetModelType>},
    {"AnalysType", Print<&BSNSettings::GetAnalysType>},
    {"TestDistType", Print<&BSNSettings::GetTestDistType>},
    {"CorrTest", Print<&BSNSettings::GetCorrTest>},
    {"MethodType", Print<&BSNSettings::GetMethodType>},
    {"CompareType", Print<&BSNSettings::GetCompareType>},
    {"EstBFType", Print<&BSNSettings::GetEstBFType>},
    {"FixType", Print<&BSNSettings::GetFixType>},
    {"RegrCompType", Print<&BSNSettings::GetRegrCompType>},
    {"RegrComPar", Print<&BSNSettings::GetRegrComPar>},
    {"DependentVar", Print<&BSNSettings::GetDependentVar>},
    {"FrequencyWeightVar", Print<&BSNSettings::GetFrequencyWeightVar>},
    {"RegrWeightVar", Print<&BSNSettings::GetRegrWeightVar>},
    {"FullModFactors", Print<&BSNSettings::GetFullModFactors>},
    {"FullModFactorSizes", Print<&BSNSettings::GetFullModFactorSizes>},
    {"FullModCovariates", Print<&BSNSettings::GetFullModCovariates>},
    {"Factors", Print<&BSNSettings::GetFactors>},
    {"FactorSizes", Print<&BSNSettings::GetFactorSizes>},
    {"Covariates", Print<&BSNSettings::GetCovariates>},
    {"2ndRelatedList", Print<&BSNSettings::Get2ndRelatedList>},
    {"GroupVar", Print<&BSNSettings::GetGroupVar>},
    {"PlotFactors", Print<&BSNSettings::GetPlotFactors>},
    {"PlotCovars", Print<&BSNSettings::GetPlotCovars>},
    {"PlotFactorCats", Print<&BSNSettings::GetPlotFactorCats>},
    {"NullValue", Print<&BSNSettings::GetNullValue>},
    {"NullValues", Print<&BSNSettings::GetNullValues>},
    {"DataVarVals", Print<&BSNSettings::GetDataVarVals>},
    {"AlterGValues", Print<&BSNSettings::GetAlterGValues>},
    {"SecondGonenPar", Print<&BSNSettings::GetSecondGonenPar>},
    {"Lambdas", Print<&BSNSettings::GetLambdas>},
    {"Regressors", Print<&BSNSettings::GetRegressors>},
    {"CorrCValue", Print<&BSNSettings::GetCorrCValue>},
    {"EqualDataVar", Print<&BSNSettings::GetEqualDataVar>},
    {"KappaValue", Print<&BSNSettings::GetKappaValue>},
    {"FTests", Print<&BSNSettings::GetFTests>},
    {"PriorType", Print<&BSNSettings::GetPriorType>},
    {"PriorParam1", Print<&BSNSettings::GetPriorParam1>},
    {"PriorParam2", Print<&BSNSettings::GetPriorParam2>},
    {"PriorDistType", Print<&BSNSettings::GetPriorDistType>},
    {"PriorDistParam1", Print<&BSNSettings::GetPriorDistParam1>},
    {"PriorDistParam2", Print<&BSNSettings::GetPriorDistParam2>},
    {"MeanDistType", Print<&BSNSettings::GetMeanDistType>},
    {"MeanDistParam1", Print<&BSNSettings::GetMeanDistParam1>},
    {"MeanDistParam2", Print<&BSNSettings::GetMeanDistParam2>},
    {"MeanDistParam3", Print<&BSNSettings::GetMeanDistParam3>},
    {"MeanDistParam4", Print<&BSNSettings::GetMeanDistParam4>},
    {"PriorShape", Print<&BSNSettings::GetPriorShape>},
    {"PriorScale", Print<&BSNSettings::GetPriorScale>},
    {"PriorMeans", Print<&BSNSettings::GetPriorMeans>},
    {"PriorCovMatrix", Print<&BSNSettings::GetPriorCovMatrix>},
    {"NullPrior1s", Print<&BSNSettings::GetNullPrior1s>},
    {"NullPrior2s", Print<&BSNSettings::GetNullPrior2s>},
    {"AlterPrior1s", Print<&BSNSettings::GetAlterPrior1s>},
    {"AlterPrior2s", Print<&BSNSettings::GetAlterPrior2s>},
    {"LogLinModel", Print<&BSNSettings::GetLogLinModel>},
    {"LogLinPriorType", Print<&BSNSettings::GetLogLinPriorType>},
    {"LogLinIntrinsicT", Print<&BSNSettings::GetLogLinIntrinsicT>},
    {"LogLinShapes", Print<&BSNSettings::GetLogLinShapes>},
    {"CILevel", Print<&BSNSettings::GetCILevel>},
    {"TolValue", Print<&BSNSettings::GetTolValue>},
    {"MaxIterations", Print<&BSNSettings::GetMaxIterations>},
    {"MCSamples", Print<&BSNSettings::GetMCSamples>},
    {"PosteriorSamples", Print<&BSNSettings::GetPosteriorSamples>},
    {"RandomSeed", Print<&BSNSettings::GetRandomSeed>},
    {"MissScope", Print<&BSNSettings::GetMissScope>},
    {"ComputeVarianceInScoring", Print<&BSNSettings::GetComputeVarianceInScoring>},
    {"MaxNPlots", Print<&BSNSettings::GetMaxNPlots>},
    {"MaxNPlotCategories", Print<&BSNSettings::GetMaxNPlotCategories>},
    {"PlotsShown", Print<&BSNSettings::GetPlotsShown>},
    {"MaxThreadNum", Print<&BSNSettings::GetMaxThreadNum>},
    {"MemCacheKB", Print<&BSNSettings::GetMemCacheKB>},
};

}  // namespace

void BSNSettings::Display(std::ostream& stream) const {
  for (const Line& line : kLines) {
    stream << line.fName << ": ";
    line.fPrint(stream, *this);
    stream << '\n';
  }
}

}  // namespace MCBSN_850
