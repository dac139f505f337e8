// The posterior distribution charts: likelihood, prior and posterior of each test variable or pair.
#include <algorithm>
#include <iterator>
#include <optional>
#include <sstream>

#include "bayesian/BYSOutputParts.h"

namespace {

using MCBSN_850::Curves;

constexpr const char* kSource = "BYSOutput";
constexpr const char* kDataSource = "graphdataset";
constexpr const char* kOneSide = "bayes";
constexpr const char* kTwoSides = "bayes2side";

// A colour's place in the template, and the colour where the style has too few.
struct Colour {
  const char* placeholder;
  const char* fallback;
};
constexpr Colour kColours[] = {
    {"[likelihood]", "#ffc4e2"}, {"[prior]", "#d70033"}, {"[posterior]", "#cface3"}};

// Labels that every chart has: a place in the template and the key of its text.
struct Label {
  const char* placeholder;
  const char* key;
};
constexpr Label kLabels[] = {{"[Log Likelihood]", "Log Likelihood"},
                             {"[Log Likelihood1]", "Log Likelihood"},
                             {"[Likelihood]", "Likelihood"},
                             {"[Likelihood1]", "Likelihood"},
                             {"[Likelihood2]", "Likelihood"}};
constexpr const char* kPanelTitles[] = {"[Graph1 Title]", "[Graph2 Title]", "[Graph3 Title]",
                                        "[Graph4 Title]", "[Graph5 Title]"};

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

// The colours of a style, in file order: of each element the text from "#" to the next double quote.
std::vector<std::string> ReadColours(const std::string& style) {
  const std::string begin = "<setColor>";
  const std::string end = "</setColor>";
  std::vector<std::string> colours;
  for (std::size_t at = style.find(begin); at != std::string::npos; at = style.find(begin, at + 1)) {
    const std::string element = style.substr(at, style.find(end, at) - at);
    const std::size_t colour = element.find('#');
    if (colour == std::string::npos) continue;
    colours.push_back(element.substr(colour, element.find('"', colour) - colour));
  }
  return colours;
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
}

void FillColours(XViZTemplate& chart) {
  const std::vector<std::string> colours = ReadColours(FetchFile::fetch(OTemplate::Get(), true, true));
  const bool isFallback = colours.size() < std::size(kColours);
  std::string text = chart.getTemplateText();
  for (std::size_t i = 0; i < std::size(kColours); ++i)
    ReplaceAll(text, kColours[i].placeholder, isFallback ? kColours[i].fallback : colours[i]);
  chart.setTemplateText(text);
}

void AddSeries(VarDataProcessor& data, XViZTemplate& chart, const char* name,
               const std::vector<double>& values) {
  data.AddVariable(name);
  chart.addVariable(name);
  for (std::size_t row = 0; row < values.size(); ++row) data.SetVariableValue(name, row, values[row]);
}

std::vector<ChartString> GetCurveTitles() {
  return {FromKey("Log Likelihood Function"), FromKey("Prior Distribution"),
          FromKey("Posterior Distribution")};
}

}  // namespace

const BYSOutput::ChartSource BYSOutput::kChartSources[] = {
    {BSNConst::OneSample, BSNConst::Normal, kOneSide, &BYSOutput::MakeNormalCharts},
    {BSNConst::OneSample, BSNConst::Binomial, kOneSide, &BYSOutput::MakeBinomialCharts},
    {BSNConst::OneSample, BSNConst::Poisson, kOneSide, &BYSOutput::MakePoissonCharts},
    {BSNConst::Related, BSNConst::Normal, kOneSide, &BYSOutput::MakeRelatedCharts},
    {BSNConst::Independent, BSNConst::Normal, kTwoSides, &BYSOutput::MakeIndependentCharts},
};

void BYSOutput::CreatePosteriorChart() {
  BYS::Assert(fpOutputStats != nullptr, kSource, "output != 0");
  for (const ChartSource& source : kChartSources) {
    if (source.model == fpCompSettings->GetModelType() &&
        source.distribution == fpCompSettings->GetTestDistType())
      SendCharts(source, (this->*source.make)());
  }
}

// With split files under a heading that names the split, unless the host arranges the splits itself.
void BYSOutput::SendCharts(const ChartSource& source, const ChartSet& set) const {
  const bool hasHeading = fDataSource.IsSplitFile() && !fDataSource.LaysOutSplits();
  BpComposite split("[%1 = %2:, ^1 = ^2:]1", true);
  split.Sublist();
  split.SplitList();
  split.EndSublist();
  split.Finish();
  std::optional<BpHeading> heading;
  for (std::size_t chart = 0; chart < set.titles.size(); ++chart) {
    if (!HasCurves(set, chart)) continue;
    if (hasHeading && !heading) heading = fpProcedure->Heading(split);
    SendChart(source.chartTemplate, set, chart);
  }
  if (heading) heading->Close();
}

bool BYSOutput::HasCurves(const ChartSet& set, std::size_t chart) {
  return std::any_of(set.curves.begin(), set.curves.end(),
                     [chart](const ChartCurve& curve) { return !(*curve.values)[chart].empty(); });
}

void BYSOutput::SendChart(const char* templateName, const ChartSet& set, std::size_t chart) const {
  XViZTemplate chartTemplate(STemplate::Get());
  chartTemplate.setTemplateInternalName(templateName);
  FillColours(chartTemplate);
  VarDataProcessor data(kDataSource);
  for (const ChartCurve& curve : set.curves) {
    if ((*curve.values)[chart].empty()) continue;
    AddSeries(data, chartTemplate, curve.argument, (*curve.arguments)[chart]);
    AddSeries(data, chartTemplate, curve.value, (*curve.values)[chart]);
  }
  AddLabels(chartTemplate, set, set.titles[chart]);
  XDocument document(chartTemplate.GetFilledText());
  document.setEditor(fSpecs.GetProcTitle());
  document.setLanguage();
  document.SetDescription(set.titles[chart]);
  document.SetChartData(data);
  document.applyCTemplate(templateName);
  document.SendChart();
}

void BYSOutput::AddLabels(XViZTemplate& chartTemplate, const ChartSet& set, const ChartString& title) {
  chartTemplate.addLabel("[XAXIS TITLE]", FromKey(set.axisTitle));
  chartTemplate.addLabel("[Graph Title]", title);
  for (const Label& label : kLabels) chartTemplate.addLabel(label.placeholder, FromKey(label.key));
  for (std::size_t i = 0; i < set.panelTitles.size(); ++i)
    chartTemplate.addLabel(kPanelTitles[i], set.panelTitles[i]);
}

// Records that name their likelihood, posterior and prior curves alike.
template <class Stats>
std::vector<BYSOutput::ChartCurve> BYSOutput::GetThreeCurves(const Stats& stats) {
  return {
      {"mulike", "likelihood", &stats.GetPlotArguments4Likelihoods(), &stats.GetPlotLikelihoods()},
      {"muprior", "prior", &stats.GetPlotArguments4Prior(), &stats.GetPlotPrior()},
      {"mupost", "posterior", &stats.GetPlotArguments4Posterior(), &stats.GetPlotPosterior()},
  };
}

BYSOutput::ChartSet BYSOutput::MakeNormalCharts() const {
  const auto& stats = GetStats<MCBSN_850::BSN1SampleNormOutputStats>();
  return {"Mean", GetVariableTitles(stats.GetVarIndices()), GetCurveTitles(), GetThreeCurves(stats)};
}

BYSOutput::ChartSet BYSOutput::MakeBinomialCharts() const {
  const auto& stats = GetStats<MCBSN_850::BSN1SampleBinoOutputStats>();
  const Curves& arguments = stats.GetPlotArguments();
  return {"Proportion",
          GetVariableTitles(stats.GetVarIndices()),
          GetCurveTitles(),
          {{"mulike", "likelihood", &arguments, &stats.GetPlotLikelihoods()},
           {"muprior", "prior", &arguments, &stats.GetPlotPrior()},
           {"mupost", "posterior", &arguments, &stats.GetPlotPosterior()}}};
}

BYSOutput::ChartSet BYSOutput::MakePoissonCharts() const {
  const auto& stats = GetStats<MCBSN_850::BSN1SamplePoisnOutputStats>();
  return {"Rate", GetVariableTitles(stats.GetVarIndices()), GetCurveTitles(), GetThreeCurves(stats)};
}

BYSOutput::ChartSet BYSOutput::MakeRelatedCharts() const {
  const auto& stats = GetStats<MCBSN_850::BSN2SampleRelatedOutputStats>();
  ChartSet set{"Mean Difference", {}, GetCurveTitles(), GetThreeCurves(stats)};
  for (std::size_t i = 0; i < stats.Get1ndRelatedList().size(); ++i)
    set.titles.push_back(
        GetPairTitle(GetChartName(stats.Get1ndRelatedList()[i]), GetChartName(stats.Get2ndRelatedList()[i])));
  return set;
}

// Five panels: log likelihood and prior of either group's mean, posterior of the difference of the means.
BYSOutput::ChartSet BYSOutput::MakeIndependentCharts() const {
  const auto& stats = GetStats<MCBSN_850::BSN2SampleIndOutputStats>();
  const ChartString first = GetChartGroupLabel(0);
  const ChartString second = GetChartGroupLabel(1);
  return {"Mean Difference",
          GetVariableTitles(stats.GetPostVarIndices()),
          {FromKey("Log Likelihood^1", {first}), FromKey("Log Likelihood^1", {second}),
           FromKey("Prior Distribution^1", {first}), FromKey("Prior Distribution^1", {second}),
           FromKey("Posterior Distribution mean ^1", {GetDifferenceLabel(first, second)})},
          {{"mulike", "likelihood", &stats.GetPlotXArguments(), &stats.GetPlotXLikelihoods()},
           {"mulike2", "likelihood2", &stats.GetPlotYArguments(), &stats.GetPlotYLikelihoods()},
           {"muprior", "prior", &stats.GetPlotXPriorArguments(), &stats.GetPlotXPrior()},
           {"muprior2", "prior2", &stats.GetPlotYPriorArguments(), &stats.GetPlotYPrior()},
           {"mupost", "posterior", &stats.GetPlotArguments(), &stats.GetPlotPosterior()}}};
}

ChartString BYSOutput::GetChartName(int slot) const {
  return FromData(GetSlotVariable(slot).GetName());
}

std::vector<ChartString> BYSOutput::GetVariableTitles(const std::vector<int>& slots) const {
  std::vector<ChartString> titles;
  for (int slot : slots) titles.push_back(FromKey("Plots for") + FromData(" ") + GetChartName(slot));
  return titles;
}

ChartString BYSOutput::GetPairTitle(const ChartString& first, const ChartString& second) {
  return first + FromData(" - ") + second;
}

// Relations stand in parentheses, so that they don't run into the minus sign.
ChartString BYSOutput::GetDifferenceLabel(const ChartString& first, const ChartString& second) const {
  if (!fSpecs.GetGroupInfoElem().IsRange()) return GetPairTitle(first, second);
  return FromData("(") + first + FromData(") - (") + second + FromData(")");
}

ChartString BYSOutput::GetChartGroupLabel(int group) const {
  const BYSValidSpecs::BinInfoElem& groupInfoElem = fSpecs.GetGroupInfoElem();
  const GroupValues decoded = DecodeGroup(group);
  if (groupInfoElem.IsRange())
    return FromKey(group == 0 ? "&lt;" : "&gt;=") + FromData(" " + RenderNumber(decoded.cut));
  BYS::Assert(groupInfoElem._strValues.size() == 2, kSource, "groupInfoElem._strValues.size() == 2");
  const OBS& value = *decoded.values.front();
  const std::string label = fDataSource.GetVariable(fStatSettings.GetGroupVar()).GetValueLabel(value);
  if (!label.empty()) return FromData(label);
  return FromData(value.IsString() ? value.GetString() : RenderNumber(value.GetNumber()));
}
