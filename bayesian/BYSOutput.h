// Turns the results of a split into tables, and the run into notes.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bayesian/BYSFactory.h"
#include "bayesian/BYSValidSpecs.h"
#include "platform/component/OutputStats.h"
#include "platform/host/Charts.h"
#include "platform/host/Data.h"
#include "platform/host/Output.h"

// Lives for one run. Computes nothing: a number that it shows stands in a result record. Names of variables
// come from the statistical settings, whose indices are those of the dictionary.
class BYSOutput {
 public:
  // All must outlive the output.
  BYSOutput(ProcedureDataSource& dataSource, BpProcedure* procedure, const BYSValidSpecs* specs,
            BYSFactory* factory);
  ~BYSOutput();
  BYSOutput(const BYSOutput&) = delete;
  BYSOutput& operator=(const BYSOutput&) = delete;

  void AddToNotesTable();
  void CompleteNotesTable();
  // The current split's tables and charts. Its model must have been built without error.
  void DisplayOutput();

 private:
  // One row of a table: its label, and the variables whose print formats its numbers follow.
  struct Row {
    BpCellText label;
    std::vector<const ZARQ_Variable*> variables;
  };

  // One column of a table: its group ("Posterior", the credible interval), its label, the format of a cell
  // and the values, one for each row.
  enum class Group { None, Posterior, Interval, Observed, Counts };
  enum class Format { Count, Mean, StdDev, VarSquared, GeneralStat, Significance, Coefficient, Correlation };
  struct Column {
    Group group;
    const char* label;
    Format format;
    const std::vector<double>* values;
    // Keys of footnotes on the column's label.
    std::vector<const char*> notes = {};
    // Each gives the key of a footnote that a cell bears, "" for none; asked for each row.
    std::vector<std::function<const char*(std::size_t row)>> cellNotes = {};
  };

  // What makes one of the two groups of independent samples: given values, or a cut point.
  struct GroupValues {
    std::vector<const OBS*> values;
    double cut = 0;
  };

  // A table function, the results it shows and the analyses that show it.
  enum class When { Always, BayesFactor, Posterior };
  struct Step {
    BSNConst::ModelTypes model;
    BSNConst::DistTypes distribution;
    When when;
    void (BYSOutput::*display)();
  };
  static const Step kSteps[];
  bool IsWanted(When when) const;

  // BYSOutputOneSample.cpp
  void DisplayTTestOutput();
  void DisplayPostDistribution();
  void DisplayBFBinomial();
  void DisplayPostDistrBinomial();
  void DisplayBFPoisson();
  void DisplayPostDistrPoisson();
  void AddSuccessCategory(BpDimension& statistics, int slot) const;
  void AddPriorNote(BpPivotTable& table, const char* key, const char* defaultKey) const;

  // BYSOutputTwoSample.cpp
  void DisplayRelatedTTestOutput();
  void DisplayRelatedPostDistribution();
  void DisplayGroupIndep();
  void DisplatyBFIndep();
  void DisplayPostDistrIndep();
  std::vector<Row> MakePairRows(const std::vector<int>& first, const std::vector<int>& second) const;
  BpComposite GetGroupLabel(int group) const;
  GroupValues DecodeGroup(int group) const;

  // One curve of a chart: the names of its series, its arguments and its values.
  struct ChartCurve {
    const char* argument;
    const char* value;
    const MCBSN_850::Values* arguments;
    const MCBSN_850::Values* values;
  };
  struct PosteriorChart {
    ChartString title;
    const char* axisTitle;
    std::vector<ChartString> panelTitles;
    std::vector<ChartCurve> curves;
  };
  // The charts of a model's results, in the order shown.
  struct ChartSource {
    BSNConst::ModelTypes model;
    BSNConst::DistTypes distribution;
    const char* chartTemplate;
    std::vector<PosteriorChart> (BYSOutput::*make)() const;
  };
  static const ChartSource kChartSources[];

  // BYSOutputCharts.cpp
  void CreatePosteriorChart();
  void SendCharts(const char* templateName, const std::vector<PosteriorChart>& charts) const;
  void SendChart(const char* templateName, const PosteriorChart& chart) const;
  static bool HasCurves(const PosteriorChart& chart);
  static void AddLabels(XViZTemplate& chartTemplate, const PosteriorChart& chart);

  // BYSOutputChartSources.cpp
  std::vector<PosteriorChart> MakeNormalCharts() const;
  std::vector<PosteriorChart> MakeBinomialCharts() const;
  std::vector<PosteriorChart> MakePoissonCharts() const;
  std::vector<PosteriorChart> MakeRelatedCharts() const;
  std::vector<PosteriorChart> MakeIndependentCharts() const;
  std::vector<PosteriorChart> MakeCorrelationCharts() const;
  std::vector<PosteriorChart> MakeRegressionCharts() const;
  static PosteriorChart MakeThreeCurves(const ChartString& title, const char* axisTitle,
                                        const MCBSN_850::Values* const (&curves)[6]);
  bool IsChartWanted(const MCMath_850::MCRegrParameter& parameter, std::size_t iParam) const;
  ChartString GetChartName(int slot) const;
  ChartString GetVariableTitle(int slot) const;
  ChartString GetParameterTitle(const MCMath_850::MCRegrParameter& parameter) const;
  ChartString GetGroupChartLabel(int group) const;
  ChartString GetDifferenceLabel(const ChartString& first, const ChartString& second) const;

  // BYSOutputCorrelation.cpp
  void DisplayBFCorrel();
  void DisplayDistrCorrel();
  void FillCorrelations(BpPivotTable& table, const std::vector<Column>& columns) const;

  // BYSOutputLogLinear.cpp
  void DisplayLogLinearOutput();
  void DisplayCaseSummaryLogLinear();
  void DisplayCrossTabLogLinear();
  void DisplayTestOfIndLogLinear();
  void DisplayPosteriorLogLinear();
  void AnnotLogLinFix(BpPivotTable& table) const;
  const ZARQ_Variable& GetTableVariable(int factor) const;
  BpComposite GetFactorLabel(const char* key, int factor) const;
  BpDataValue GetLevel(int factor, int code) const;
  BpComposite GetCrossLabel(const char* key) const;
  void SelectLevel(BpDimension& dimension, int factor, int level) const;
  void FillCrossing(BpDimension& statistics, std::size_t row, std::size_t column) const;
  void AnnotBayesFactor(BpCategory& category) const;
  BpComposite GetInteractionLabel(int row, int column) const;
  void FillInteraction(BpDimension& statistics, const MCBSN_850::BayesEstimation& estimation) const;

  // BYSOutputRegression.cpp
  void DisplayAnovaReg();
  void DisplayBFReg();
  void DisplayEstCoefReg();
  void DisplayEstVarErrReg();
  void DisplayPreRespReg();
  void DisplayFtestReg();
  void DisplayFtest(const MCBSN_850::BayesFTest& test, const MCMath_850::MCTestStats& result, int number);
  void AnnotRegrDepend(BpPivotTable& table) const;
  void AnnotRegrWeight(BpPivotTable& table) const;
  void AnnotRegrModel(BpPivotTable& table) const;
  void AnnotRegrModelFromPattern(BpPivotTable& table, const char* pattern) const;
  void AnnotRegrMethod(BpPivotTable& table) const;
  void AnnotRegrPrior(BpPivotTable& table) const;
  BpAnnotation GetPredictionNote(const std::vector<double>& point) const;
  BpComposite GetRegrMethodText(const char* key) const;
  const ZARQ_Variable& GetDependent() const;
  std::vector<const ZARQ_Variable*> GetPredictors() const;

  // BYSOutputAnova.cpp
  void DisplayBFAnova();
  // The rows regression, residual and total of an analysis of variance, under these labels.
  static void FillAnova(BpDimension& rows, BpDimension& statistics, const char* const (&labels)[3],
                        const std::vector<double>& anova);

  // BYSOutputParts.cpp: what the tables of sample tests have in common.
  BpPivotTable OpenTable(const char* title);
  BpDimension AddDimension(BpPivotTable& table, const BpCellText& label, BpDimension::Place place,
                           int index = 1) const;
  const ZARQ_Variable& GetSlotVariable(int slot) const;
  std::vector<Row> MakeVariableRows(const std::vector<int>& slots) const;
  void FillTable(BpPivotTable& table, const char* rowLabel, const std::vector<Row>& rows,
                 const std::vector<Column>& columns) const;
  void FillCells(BpDimension& statistics, const Row& row, std::size_t index,
                 const std::vector<Column>& columns) const;
  BpCategory AddColumn(BpDimension& statistics, const Column& column) const;
  static BpFormatSpec GetFormat(Format format, const std::vector<const ZARQ_Variable*>& variables);
  BpAnnotation MakeNote(const char* key) const;
  BpAnnotation MakeSamplesNote() const;
  std::vector<const char*> GetBayesFactorNotes() const;
  static BpComposite MakeIntervalLabel(double level);
  static std::vector<Column> GetPosteriorColumns(Format location, Format variance, const char* varianceLabel,
                                                 const std::vector<double>& modes,
                                                 const std::vector<double>& means,
                                                 const std::vector<double>& variances,
                                                 const std::vector<double>& lower,
                                                 const std::vector<double>& upper);
  BpComposite GetPriorText(const char* key) const;
  BpComposite GetPriorCaption() const;
  template <class Stats>
  const Stats& GetStats() const;

  ProcedureDataSource& fDataSource;
  BpProcedure* fpProcedure;
  const BYSValidSpecs& fSpecs;
  FacSTDictionary fChartDictionary;
  const std::string fTemplateFolder;
  BYSFactory& fFactory;
  const MCBSN_850::BSNSettings& fStatSettings;
  const BpComposite fIntervalLabel;
  const MCBSN_850::BSNSettings* fpCompSettings = nullptr;
  const MCBSN_850::BSNOutputStats* fpOutputStats = nullptr;
};
