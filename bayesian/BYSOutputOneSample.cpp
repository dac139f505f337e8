// Tables of the one-sample command.
#include "bayesian/BYSOutputParts.h"

namespace {

constexpr const char* kSource = "BYSOutput";
constexpr int kSuccess = 1;
constexpr int kMinColumnWidth = 12;

}  // namespace

void BYSOutput::DisplayTTestOutput() {
  const auto& stats = GetStats<MCBSN_850::BSN1SampleNormOutputStats>();
  BpPivotTable table = OpenTable("One-Sample T Test");
  FillTable(
      table, "Variables", MakeVariableRows(stats.GetVarIndices()),
      {{Group::None, "N", Format::Count, &stats.GetNs()},
       {Group::None, "Mean", Format::Mean, &stats.GetMeanValues()},
       {Group::None, "Std. Deviation", Format::StdDev, &stats.GetStdDevs()},
       {Group::None, "Std. Error Mean", Format::StdDev, &stats.GetEMs()},
       {Group::None, "Bayes Factor", Format::GeneralStat, &stats.GetBayesFactors(), GetBayesFactorNotes()},
       {Group::None, "t", Format::GeneralStat, &stats.GetTValues()},
       {Group::None, "df", Format::Count, &stats.GetDFValues()},
       {Group::None, "Sig.(2-tailed)", Format::Significance, &stats.GetSigs()}});
}

void BYSOutput::DisplayPostDistribution() {
  const auto& stats = GetStats<MCBSN_850::BSN1SampleNormOutputStats>();
  BpPivotTable table = OpenTable("Posterior Distribution Characterization for One-Sample Mean");
  table.Caption(GetPriorCaption());
  std::vector<Column> columns = GetPosteriorColumns(
      Format::Mean, Format::VarSquared, "Variance", stats.GetModeValues(), stats.GetPostMeanValues(),
      stats.GetVarianceValues(), stats.GetLowerLimits(), stats.GetUpperLimits());
  columns.insert(columns.begin(), {Group::None, "N", Format::Count, &stats.GetNs()});
  FillTable(table, "Variables", MakeVariableRows(stats.GetVarIndices()), columns);
}

void BYSOutput::DisplayBFBinomial() {
  const auto& stats = GetStats<MCBSN_850::BSN1SampleBinoOutputStats>();
  BYS::Assert(!fSpecs.GetBinInfoElems().empty(), kSource, "!binInfoElems.empty()");
  BpPivotTable table = OpenTable("Bayes-Factor for Binomial Proportion Test");
  table.MinDataColumnWidth(kMinColumnWidth);
  BpComposite caption("Bayes Factor: Null...", true);
  caption.Finish();
  table.Caption(caption);
  const std::vector<int>& slots = stats.GetVarIndices();
  const auto cellNote = [&](std::size_t row) {
    if (!fFactory.GetInputAdapter()->HasObservedSuccess(slots[row])) return "Requested value(s) not found.";
    return stats.GetIsLogBayesFactor()[row] ? "Log Bayes Factor..." : "";
  };
  const std::vector<Column> columns{
      {Group::None, "N", Format::Count, &stats.GetNs()},
      {Group::Observed, "Successes", Format::Count, &stats.GetCat1Ns()},
      {Group::Observed, "Proportion", Format::GeneralStat, &stats.GetCat1Props()},
      {Group::None, "Bayes Factor", Format::GeneralStat, &stats.GetBayesFactors(), {}, {cellNote}}};
  const std::vector<Row> rows = MakeVariableRows(slots);
  BpDimension variables = AddDimension(table, BpString("Variables", true), BpDimension::kRows);
  BpDimension statistics = AddDimension(table, BpString("Statistics", true), BpDimension::kColumns);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    variables.Category(rows[i].label);
    AddSuccessCategory(statistics, slots[i]);
    FillCells(statistics, rows[i], i, columns);
  }
}

// What counted as a success: the values, or the cut point. Empty for a variable that the split has no value
// of.
void BYSOutput::AddSuccessCategory(BpDimension& statistics, int slot) const {
  std::vector<const OBS*> vpObsVals;
  std::vector<double> vEndVals;
  std::vector<std::string> texts;
  bool isString = false;
  const BYSProcAdapter& adapter = *fFactory.GetInputAdapter();
  BpCategory category = statistics.Category(BpString("Success Category", true));
  if (!adapter.HasBinValues(slot)) return;
  adapter.DecodeBinRecValue(slot, kSuccess, isString, vpObsVals, vEndVals, texts);
  const ZARQ_Variable& variable = GetSlotVariable(slot);
  if (vpObsVals.empty()) {
    BYS::Assert(vEndVals.size() == 2, kSource, "vEndVals.size() == 2");
    BpComposite range(">= ^1", true);
    range.Add(BpDataValue(OBS(vEndVals.front()), variable));
    range.Finish();
    return category.Cell(range);
  }
  BpComposite values("= [%1:, ^1:]1", true);
  values.Sublist();
  for (const OBS* value : vpObsVals) values.Add(BpDataValue(*value, variable));
  values.EndSublist();
  values.Finish();
  category.Cell(values);
}

void BYSOutput::DisplayPostDistrBinomial() {
  const auto& stats = GetStats<MCBSN_850::BSN1SampleBinoOutputStats>();
  BpPivotTable table = OpenTable("Posterior Distribution Characterization for Binomial Inference");
  AddPriorNote(table, "Prior on Binomial ^1 ^2...", "Prior on Binomial by default ...");
  FillTable(table, "Variables", MakeVariableRows(stats.GetVarIndices()),
            GetPosteriorColumns(Format::GeneralStat, Format::GeneralStat, "Var.", stats.GetModeValues(),
                                stats.GetMeanValues(), stats.GetVarianceValues(), stats.GetLowerLimits(),
                                stats.GetUpperLimits()));
}

void BYSOutput::DisplayBFPoisson() {
  const auto& stats = GetStats<MCBSN_850::BSN1SamplePoisnOutputStats>();
  BpPivotTable table = OpenTable("Bayes-Factor for Poisson Rate Test");
  const auto cellNote = [&](std::size_t row) {
    return stats.GetIsLogBayesFactor()[row] ? "Log Bayes Factor..." : "";
  };
  FillTable(table, "Variables", MakeVariableRows(stats.GetVarIndices()),
            {{Group::None, "N", Format::Count, &stats.GetNs()},
             {Group::Counts, "min.", Format::Count, &stats.GetMinCnts()},
             {Group::Counts, "max.", Format::Count, &stats.GetMaxCnts()},
             {Group::None,
              "Bayes Factor",
              Format::GeneralStat,
              &stats.GetBayesFactors(),
              {"Bayes Factor: Null..."},
              {cellNote}}});
}

void BYSOutput::DisplayPostDistrPoisson() {
  const auto& stats = GetStats<MCBSN_850::BSN1SamplePoisnOutputStats>();
  BpPivotTable table = OpenTable("Posterior Distribution Characterization for Poisson Inference");
  AddPriorNote(table, "Prior for Poisson ^1 ^2...", "Prior for Poisson by default ...");
  FillTable(table, "Variables", MakeVariableRows(stats.GetVarIndices()),
            GetPosteriorColumns(Format::Mean, Format::VarSquared, "Var.", stats.GetModeValues(),
                                stats.GetMeanValues(), stats.GetVarianceValues(), stats.GetLowerLimits(),
                                stats.GetUpperLimits()));
}

// Numbers that weren't given are Jeffreys' prior.
void BYSOutput::AddPriorNote(BpPivotTable& table, const char* key, const char* defaultKey) const {
  const double param1 = fpCompSettings->GetPriorParam1();
  const double param2 = fpCompSettings->GetPriorParam2();
  if (param1 == ZARQ_DataSource::GetMissingValue()) return table.Note(MakeNote(defaultKey));
  BpComposite note(key, true);
  note.Add(BpNumber(param1, BpProcedure::SigDigit()));
  note.Add(BpNumber(param2, BpProcedure::SigDigit()));
  note.Finish();
  table.Note(BpAnnotation(note));
}
