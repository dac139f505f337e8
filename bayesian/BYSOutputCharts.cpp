// The posterior distribution charts: from a model's curves to chart documents.
#include <algorithm>
#include <iterator>
#include <optional>

#include "bayesian/BYSOutputParts.h"

namespace {

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

ChartString FromKey(const char* key) {
  return XUtility::ChartStringFromOLANG(key);
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

// The component leaves a curve that doesn't exist empty.
bool HasNumbers(const std::vector<double>& values) {
  return std::any_of(values.begin(), values.end(),
                     [](double value) { return value != ZARQ_DataSource::GetMissingValue(); });
}

void AddSeries(VarDataProcessor& data, XViZTemplate& chart, const std::string& name,
               const std::vector<double>& values) {
  data.AddVariable(name);
  chart.addVariable(name);
  for (std::size_t row = 0; row < values.size(); ++row) data.SetVariableValue(name, row, values[row]);
}

}  // namespace

const BYSOutput::ChartSource BYSOutput::kChartSources[] = {
    {BSNConst::OneSample, BSNConst::Normal, kOneSide, &BYSOutput::MakeNormalCharts},
    {BSNConst::OneSample, BSNConst::Binomial, kOneSide, &BYSOutput::MakeBinomialCharts},
    {BSNConst::OneSample, BSNConst::Poisson, kOneSide, &BYSOutput::MakePoissonCharts},
    {BSNConst::Related, BSNConst::Normal, kOneSide, &BYSOutput::MakeRelatedCharts},
    {BSNConst::Independent, BSNConst::Normal, kTwoSides, &BYSOutput::MakeIndependentCharts},
    {BSNConst::Correlation, BSNConst::Normal, kOneSide, &BYSOutput::MakeCorrelationCharts},
    {BSNConst::Regression, BSNConst::Normal, kOneSide, &BYSOutput::MakeRegressionCharts},
    {BSNConst::Anova, BSNConst::Normal, kOneSide, &BYSOutput::MakeRegressionCharts},
};

void BYSOutput::CreatePosteriorChart() {
  BYS::Assert(fpOutputStats != nullptr, kSource, "output != 0");
  for (const ChartSource& source : kChartSources) {
    if (source.model == fpCompSettings->GetModelType() &&
        source.distribution == fpCompSettings->GetTestDistType())
      SendCharts(source.chartTemplate, (this->*source.make)());
  }
}

// With split files under a heading that names the split, unless the host arranges the splits itself.
void BYSOutput::SendCharts(const char* templateName, const std::vector<PosteriorChart>& charts) const {
  const bool hasHeading = fDataSource.IsSplitFile() && !fDataSource.LaysOutSplits();
  BpComposite split("[%1 = %2:, ^1 = ^2:]1", true);
  split.Sublist();
  split.SplitList();
  split.EndSublist();
  split.Finish();
  std::optional<BpHeading> heading;
  for (const PosteriorChart& chart : charts) {
    if (!HasCurves(chart)) continue;
    if (hasHeading && !heading) heading = fpProcedure->Heading(split);
    SendChart(templateName, chart);
  }
  if (heading) heading->Close();
}

bool BYSOutput::HasCurves(const PosteriorChart& chart) {
  return std::any_of(chart.curves.begin(), chart.curves.end(),
                     [](const ChartCurve& curve) { return HasNumbers(*curve.values); });
}

void BYSOutput::SendChart(const char* templateName, const PosteriorChart& chart) const {
  XViZTemplate chartTemplate(fTemplateFolder);
  chartTemplate.setTemplateInternalName(templateName);
  VarDataProcessor data(kDataSource);
  for (const ChartCurve& curve : chart.curves) {
    if (!HasNumbers(*curve.values)) continue;
    AddSeries(data, chartTemplate, curve.argument, *curve.arguments);
    AddSeries(data, chartTemplate, curve.value, *curve.values);
  }
  if (XDocument::IsShown()) {
    FillColours(chartTemplate);
    AddLabels(chartTemplate, chart);
  }
  XDocument document(chartTemplate.GetFilledText());
  document.setEditor(fSpecs.GetProcTitle());
  document.setLanguage();
  document.SetDescription(chart.title);
  document.SetChartData(data);
  document.applyCTemplate(templateName);
  document.SendChart();
}

void BYSOutput::AddLabels(XViZTemplate& chartTemplate, const PosteriorChart& chart) {
  chartTemplate.addLabel("[XAXIS TITLE]", FromKey(chart.axisTitle));
  chartTemplate.addLabel("[Graph Title]", chart.title);
  for (const Label& label : kLabels) chartTemplate.addLabel(label.placeholder, FromKey(label.key));
  for (std::size_t i = 0; i < chart.panelTitles.size(); ++i)
    chartTemplate.addLabel(kPanelTitles[i], chart.panelTitles[i]);
}
