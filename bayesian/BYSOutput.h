// Turns the results of a split into tables, and the run into notes.
#pragma once

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
  // The current split's tables. Its model must have been built without error.
  void DisplayOutput();

 private:
  // One column of a table: its group ("" for none; the credible interval has a group of its own), its label,
  // the format of a cell and the values, one for each row.
  enum class Group { None, Posterior, Interval };
  enum class Format { Count, Mean, StdDev, VarSquared, GeneralStat, Significance };
  struct Column {
    Group group;
    const char* label;
    Format format;
    const std::vector<double>* values;
    const char* note = "";  // a footnote of the column's label
  };

  // A table function and the results it belongs to.
  struct Step {
    BSNConst::ModelTypes model;
    BSNConst::DistTypes distribution;
    bool posterior;  // shown with posterior results, else with Bayes factors
    void (BYSOutput::*display)();
  };
  static const Step kSteps[];

  // BYSOutputOneSample.cpp
  void DisplayTTestOutput();
  void DisplayPostDistribution();

  // BYSOutputParts.cpp: what the tables of sample tests have in common.
  BpPivotTable OpenTable(const char* title);
  void FillTable(BpPivotTable& table, const std::vector<int>& slots, const std::vector<Column>& columns);
  BpFormatSpec GetFormat(Format format, const ZARQ_Variable& variable) const;
  BpCategory AddColumn(BpDimension& statistics, const Column& column) const;
  BpComposite GetIntervalLabel() const;
  void AddSeedNote(BpCategory& category) const;
  BpComposite GetPriorCaption() const;
  template <class Stats>
  const Stats& GetStats() const;

  ProcedureDataSource& fDataSource;
  BpProcedure* fpProcedure;
  const BYSValidSpecs& fSpecs;
  FacSTDictionary fChartDictionary;
  BYSFactory& fFactory;
  const MCBSN_850::BSNSettings& fStatSettings;
  const MCBSN_850::BSNSettings* fpCompSettings = nullptr;
  const MCBSN_850::BSNOutputStats* fpOutputStats = nullptr;
};
