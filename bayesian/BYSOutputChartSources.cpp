// What the posterior charts of each model show: titles, axes and curves.
#include <sstream>

#include "bayesian/BYSOutputParts.h"

namespace {

using MCMath_850::MCRegrParameter;

constexpr const char* kSource = "BYSOutput";

ChartString FromKey(const char* key, const std::vector<ChartString>& arguments = {}) {
  return XUtility::ChartStringFromOLANG(key, arguments);
}

ChartString FromData(const std::string& text) {
  return XUtility::ChartStringFromLocalCodePage(text);
}

std::string RenderNumber(double value) {
  std::ostringstream stream;
  stream << value;
  return stream.str();
}

// A value by its label, else as it is.
ChartString FromValue(const OBS& value, const ZARQ_Variable& variable) {
  const std::string label = variable.GetValueLabel(value);
  if (!label.empty()) return FromData(label);
  return FromData(value.IsString() ? value.GetString() : RenderNumber(value.GetNumber()));
}

ChartString JoinPair(const ChartString& first, const ChartString& second) {
  return first + FromData(" - ") + second;
}

// Arguments and values of likelihood, prior and posterior.
struct ThreeCurves {
  const MCBSN_850::Values* data[6];
};

// Of records that name these curves alike.
template <class Stats>
ThreeCurves CurvesOf(const Stats& stats, std::size_t i) {
  return {{&stats.GetPlotArguments4Likelihoods()[i], &stats.GetPlotLikelihoods()[i],
           &stats.GetPlotArguments4Prior()[i], &stats.GetPlotPrior()[i],
           &stats.GetPlotArguments4Posterior()[i], &stats.GetPlotPosterior()[i]}};
}

}  // namespace

// `curves`: arguments and values of likelihood, prior and posterior.
BYSOutput::PosteriorChart BYSOutput::MakeThreeCurves(const ChartString& title, const char* axisTitle,
                                                     const MCBSN_850::Values* const (&curves)[6]) {
  return {
      title,
      axisTitle,
      {FromKey("Log Likelihood Function"), FromKey("Prior Distribution"), FromKey("Posterior Distribution")},
      {{"mulike", "likelihood", curves[0], curves[1]},
       {"muprior", "prior", curves[2], curves[3]},
       {"mupost", "posterior", curves[4], curves[5]}}};
}

std::vector<BYSOutput::PosteriorChart> BYSOutput::MakeNormalCharts() const {
  const auto& stats = GetStats<MCBSN_850::BSN1SampleNormOutputStats>();
  std::vector<PosteriorChart> charts;
  for (std::size_t i = 0; i < stats.GetVarIndices().size(); ++i)
    charts.push_back(
        MakeThreeCurves(GetVariableTitle(stats.GetVarIndices()[i]), "Mean", CurvesOf(stats, i).data));
  return charts;
}

std::vector<BYSOutput::PosteriorChart> BYSOutput::MakeBinomialCharts() const {
  const auto& stats = GetStats<MCBSN_850::BSN1SampleBinoOutputStats>();
  std::vector<PosteriorChart> charts;
  for (std::size_t i = 0; i < stats.GetVarIndices().size(); ++i) {
    const MCBSN_850::Values* arguments = &stats.GetPlotArguments()[i];
    charts.push_back(MakeThreeCurves(GetVariableTitle(stats.GetVarIndices()[i]), "Proportion",
                                     {arguments, &stats.GetPlotLikelihoods()[i], arguments,
                                      &stats.GetPlotPrior()[i], arguments, &stats.GetPlotPosterior()[i]}));
  }
  return charts;
}

std::vector<BYSOutput::PosteriorChart> BYSOutput::MakePoissonCharts() const {
  const auto& stats = GetStats<MCBSN_850::BSN1SamplePoisnOutputStats>();
  std::vector<PosteriorChart> charts;
  for (std::size_t i = 0; i < stats.GetVarIndices().size(); ++i)
    charts.push_back(
        MakeThreeCurves(GetVariableTitle(stats.GetVarIndices()[i]), "Rate", CurvesOf(stats, i).data));
  return charts;
}

std::vector<BYSOutput::PosteriorChart> BYSOutput::MakeRelatedCharts() const {
  const auto& stats = GetStats<MCBSN_850::BSN2SampleRelatedOutputStats>();
  std::vector<PosteriorChart> charts;
  for (std::size_t i = 0; i < stats.Get1ndRelatedList().size(); ++i)
    charts.push_back(MakeThreeCurves(
        JoinPair(GetChartName(stats.Get1ndRelatedList()[i]), GetChartName(stats.Get2ndRelatedList()[i])),
        "Mean Difference", CurvesOf(stats, i).data));
  return charts;
}

// Five panels: log likelihood and prior of either group's mean, posterior of the difference of the means.
std::vector<BYSOutput::PosteriorChart> BYSOutput::MakeIndependentCharts() const {
  const auto& stats = GetStats<MCBSN_850::BSN2SampleIndOutputStats>();
  const ChartString first = GetGroupChartLabel(0);
  const ChartString second = GetGroupChartLabel(1);
  const std::vector<ChartString> panelTitles = {
      FromKey("Log Likelihood^1", {first}), FromKey("Log Likelihood^1", {second}),
      FromKey("Prior Distribution^1", {first}), FromKey("Prior Distribution^1", {second}),
      FromKey("Posterior Distribution mean ^1", {GetDifferenceLabel(first, second)})};
  std::vector<PosteriorChart> charts;
  for (std::size_t i = 0; i < stats.GetPostVarIndices().size(); ++i)
    charts.push_back(
        {GetVariableTitle(stats.GetPostVarIndices()[i]),
         "Mean Difference",
         panelTitles,
         {{"mulike", "likelihood", &stats.GetPlotXArguments()[i], &stats.GetPlotXLikelihoods()[i]},
          {"mulike2", "likelihood2", &stats.GetPlotYArguments()[i], &stats.GetPlotYLikelihoods()[i]},
          {"muprior", "prior", &stats.GetPlotXPriorArguments()[i], &stats.GetPlotXPrior()[i]},
          {"muprior2", "prior2", &stats.GetPlotYPriorArguments()[i], &stats.GetPlotYPrior()[i]},
          {"mupost", "posterior", &stats.GetPlotArguments()[i], &stats.GetPlotPosterior()[i]}}});
  return charts;
}

std::vector<BYSOutput::PosteriorChart> BYSOutput::MakeRegressionCharts() const {
  const auto& stats = GetStats<MCBSN_850::BSNMultiRegOutputStats>();
  const std::vector<MCRegrParameter>& regrParams = stats.GetRegrParameters();
  const MCMath_850::MCBitSet& redunBitSet = stats.GetRedundancy();
  BYS::Assert(regrParams.size() == redunBitSet.Size(), kSource, "regrParams.size() == redunBitSet.Size()");
  BYS::Assert(regrParams.size() == stats.GetVarCoeffBayesEstimations().size(), kSource,
              "regrParams.size() == bayesEstims.size()");
  std::vector<PosteriorChart> charts;
  for (std::size_t i = 0; i < regrParams.size(); ++i) {
    if (redunBitSet.IsIn(i) || !IsChartWanted(regrParams[i], i)) continue;
    charts.push_back(
        MakeThreeCurves(GetParameterTitle(regrParams[i]), "Coefficient",
                        {&stats.GetParamsArgumentsPlots4Likelihoods()[i], &stats.GetLikelihoodParamPlots()[i],
                         &stats.GetParamsArgumentsPlots4Prior()[i], &stats.GetPriorParamPlots()[i],
                         &stats.GetParamsArgumentsPlots4Posterior()[i], &stats.GetPosteriorParamPlots()[i]}));
  }
  if (fSpecs.GetPlotErrorVar())
    charts.push_back(
        MakeThreeCurves(FromKey("Variance of Error Terms"), "Variance",
                        {&stats.GetArgumentErrorVarPlot4Likelihoods(), &stats.GetLikelihoodErrorVarPlot(),
                         &stats.GetArgumentErrorVarPlot4Prior(), &stats.GetPriorErrorVarPlot(),
                         &stats.GetArgumentErrorVarPlot4Posterior(), &stats.GetPosteriorErrorVarPlot()}));
  if (fSpecs.GetPlotBayesPred())
    charts.push_back(
        MakeThreeCurves(FromKey("Predicted Values"), "Predicted Value",
                        {&stats.GetArgumentPredictedPlot4Likelihoods(), &stats.GetLikelihoodPredictedPlot(),
                         &stats.GetArgumentPredictedPlot4Prior(), &stats.GetPriorPredictedPlot(),
                         &stats.GetArgumentPredictedPlot4Posterior(), &stats.GetPosteriorPredictedPlot()}));
  return charts;
}

// The intercept comes first, and has a chart on request only.
bool BYSOutput::IsChartWanted(const MCRegrParameter& parameter, std::size_t iParam) const {
  if (!parameter.IsIntercept()) return true;
  BYS::Assert(iParam == 0, kSource, "iParam == 0");
  return fSpecs.GetPlotIntercept();
}

ChartString BYSOutput::GetParameterTitle(const MCRegrParameter& parameter) const {
  const int nCovars = parameter.GetNCovariates();
  const int nFacts = parameter.GetNFactors();
  if (parameter.IsIntercept()) return FromKey("(Intercept)");
  if (nCovars > 0) {
    BYS::Assert(nCovars == 1, kSource, "nCovars == 1");
    BYS::Assert(nFacts == 0, kSource, "nFacts == 0");
    return GetChartName(parameter.GetCovariates().front());
  }
  BYS::Assert(nCovars == 0, kSource, "nCovars == 0");
  BYS::Assert(nFacts == 1, kSource, "nFacts == 1");
  const int slot = parameter.GetFactors().front();
  const OBS* level =
      fFactory.GetInputAdapter()->DecodeRecordCatValue(slot, parameter.GetCategories().front());
  return GetChartName(slot) + FromData(" = ") + FromValue(*level, GetSlotVariable(slot));
}

ChartString BYSOutput::GetChartName(int slot) const {
  return FromData(GetSlotVariable(slot).GetName());
}

ChartString BYSOutput::GetVariableTitle(int slot) const {
  return FromKey("Plots for") + FromData(" ") + GetChartName(slot);
}

ChartString BYSOutput::GetGroupChartLabel(int group) const {
  const BYSValidSpecs::BinInfoElem& groupInfoElem = fSpecs.GetGroupInfoElem();
  const GroupValues decoded = DecodeGroup(group);
  if (groupInfoElem.IsRange())
    return FromKey(group == 0 ? "&lt;" : "&gt;=") + FromData(" " + RenderNumber(decoded.cut));
  BYS::Assert(groupInfoElem._strValues.size() == 2, kSource, "groupInfoElem._strValues.size() == 2");
  return FromValue(*decoded.values.front(), fDataSource.GetVariable(fStatSettings.GetGroupVar()));
}

// Relations stand in parentheses, so that they don't run into the minus sign.
ChartString BYSOutput::GetDifferenceLabel(const ChartString& first, const ChartString& second) const {
  if (!fSpecs.GetGroupInfoElem().IsRange()) return JoinPair(first, second);
  return FromData("(") + first + FromData(") - (") + second + FromData(")");
}
