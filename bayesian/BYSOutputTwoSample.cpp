// Tables of the related and the independent samples commands.
#include "bayesian/BYSOutputParts.h"

namespace {

constexpr const char* kSource = "BYSOutput";
constexpr int kMinColumnWidth = 12;

// Names of the Bayes factor methods by their code.
constexpr const char* kMethodNames[] = {"Siow", "Zellner", "Hyper-Prior", "Rouder", "Gonen"};

}  // namespace

std::vector<BYSOutput::Row> BYSOutput::MakePairRows(const std::vector<int>& first,
                                                    const std::vector<int>& second) const {
  std::vector<Row> rows;
  for (std::size_t i = 0; i < first.size(); ++i) {
    const ZARQ_Variable& one = GetSlotVariable(first[i]);
    const ZARQ_Variable& two = GetSlotVariable(second[i]);
    BpComposite label("^1 - ^2", true);
    label.Add(BpVariable(one, BpVariable::kLabelElseName));
    label.Add(BpVariable(two, BpVariable::kLabelElseName));
    label.Finish();
    rows.push_back({label, {&one, &two}});
  }
  return rows;
}

void BYSOutput::DisplayRelatedTTestOutput() {
  const auto& stats = GetStats<MCBSN_850::BSN2SampleRelatedOutputStats>();
  BpPivotTable table = OpenTable("Related-Sample T Test");
  BpComposite caption("Bayes Factor: Null...", true);
  caption.Finish();
  table.Caption(caption);
  std::vector<const char*> notes = GetBayesFactorNotes();
  notes.erase(notes.begin());
  FillTable(table, "Variable Pair", MakePairRows(stats.Get1ndRelatedList(), stats.Get2ndRelatedList()),
            {{Group::None, "N", Format::Count, &stats.GetNs()},
             {Group::None, "Mean Difference", Format::Mean, &stats.GetMeanDiffValues()},
             {Group::None, "Std. Deviation", Format::StdDev, &stats.GetStdDevs()},
             {Group::None, "Std. Error Mean", Format::StdDev, &stats.GetEMs()},
             {Group::None, "Bayes Factor", Format::GeneralStat, &stats.GetBayesFactors(), notes},
             {Group::None, "t", Format::GeneralStat, &stats.GetTValues()},
             {Group::None, "df", Format::Count, &stats.GetDFValues()},
             {Group::None, "Sig.(2-tailed)", Format::Significance, &stats.GetSigs()}});
}

void BYSOutput::DisplayRelatedPostDistribution() {
  const auto& stats = GetStats<MCBSN_850::BSN2SampleRelatedOutputStats>();
  BpPivotTable table =
      OpenTable("Posterior Distribution Characterization for Related-Sample Mean Difference");
  table.Caption(GetPriorCaption());
  std::vector<Column> columns = GetPosteriorColumns(
      Format::Mean, Format::VarSquared, "Variance", stats.GetModeValues(), stats.GetPostMeanValues(),
      stats.GetVarianceValues(), stats.GetLowerLimits(), stats.GetUpperLimits());
  columns.insert(columns.begin(), {Group::None, "N", Format::Count, &stats.GetNs()});
  FillTable(table, "Variables", MakePairRows(stats.Get1ndRelatedList(), stats.Get2ndRelatedList()), columns);
}

// Group 0 is the first value or lies below the cut point, group 1 is the second value or the rest.
BYSOutput::GroupValues BYSOutput::DecodeGroup(int group) const {
  GroupValues decoded;
  std::vector<double> vEndVals;
  std::vector<std::string> texts;
  bool isString = false;
  fFactory.GetInputAdapter()->DecodeBinRecValue(fpCompSettings->GetGroupVar(), group, isString,
                                                decoded.values, vEndVals, texts);
  if (fSpecs.GetGroupInfoElem().IsRange()) {
    BYS::Assert(vEndVals.size() == 2, kSource, "vEndVals.size() == 2");
    decoded.cut = group == 1 ? vEndVals.front() : vEndVals.back();
  } else {
    BYS::Assert(!decoded.values.empty(), kSource, "!vpObsVals.empty()");
  }
  return decoded;
}

BpComposite BYSOutput::GetGroupLabel(int group) const {
  const GroupValues decoded = DecodeGroup(group);
  const ZARQ_Variable& variable = fDataSource.GetVariable(fStatSettings.GetGroupVar());
  if (fSpecs.GetGroupInfoElem().IsRange()) {
    BpComposite range(group == 1 ? ">= ^1" : "< ^1", true);
    range.Add(BpDataValue(OBS(decoded.cut), variable));
    range.Finish();
    return range;
  }
  BpComposite values("= [%1:, ^1:]1", true);
  values.Sublist();
  for (const OBS* value : decoded.values) values.Add(BpDataValue(*value, variable));
  values.EndSublist();
  values.Finish();
  return values;
}

void BYSOutput::DisplayGroupIndep() {
  const auto& stats = GetStats<MCBSN_850::BSN2SampleIndOutputStats>();
  const std::vector<Column> groups[] = {
      {{Group::None, "N", Format::Count, &stats.GetGroup1StatsNs()},
       {Group::None, "Mean", Format::Mean, &stats.GetGroup1MeanValues()},
       {Group::None, "Std. Deviation", Format::StdDev, &stats.GetGroup1StdDevs()},
       {Group::None, "Std. Error Mean", Format::StdDev, &stats.GetGroup1EMs()}},
      {{Group::None, "N", Format::Count, &stats.GetGroup2StatsNs()},
       {Group::None, "Mean", Format::Mean, &stats.GetGroup2MeanValues()},
       {Group::None, "Std. Deviation", Format::StdDev, &stats.GetGroup2StdDevs()},
       {Group::None, "Std. Error Mean", Format::StdDev, &stats.GetGroup2EMs()}}};
  BpPivotTable table = OpenTable("Group Statistics");
  table.MinDataColumnWidth(kMinColumnWidth);
  const BpVariable groupVariable(fDataSource.GetVariable(fStatSettings.GetGroupVar()),
                                 BpVariable::kLabelElseName);
  BpDimension variables = AddDimension(table, BpString("variables", true), BpDimension::kRows, 1);
  BpDimension groupDimension = AddDimension(table, groupVariable, BpDimension::kRows, 2);
  BpDimension statistics = AddDimension(table, BpString("statistics", true), BpDimension::kColumns);
  const std::vector<Row> rows = MakeVariableRows(stats.GetGroupStatsVarIndices());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    variables.Category(rows[i].label);
    for (int group = 0; group < 2; ++group) {
      groupDimension.Category(GetGroupLabel(group));
      FillCells(statistics, rows[i], i, groups[group]);
    }
  }
}

void BYSOutput::DisplatyBFIndep() {
  const auto& stats = GetStats<MCBSN_850::BSN2SampleIndOutputStats>();
  BpComposite title("Bayes-Factor Independent-Sample Test ^1", true);
  title.Add(BpString(kMethodNames[fpCompSettings->GetRegrCompType()], true));
  title.Finish();
  BpPivotTable table =
      fpProcedure->PivotTable(title, BpString("Bayes-Factor Independent-Sample Test", true), true);
  table.Note(MakeNote(fpCompSettings->GetEqualDataVar() ? "Assume equal..." : "Assume unequal..."));
  FillTable(table, "Variables", MakeVariableRows(stats.GetGroupStatsVarIndices()),
            {{Group::None, "Mean Difference", Format::Mean, &stats.GetMeanDiffValues()},
             {Group::None, "Pooled Std. Error Difference", Format::StdDev, &stats.GetPStdEDDevs()},
             {Group::None,
              "Bayes Factor",
              Format::GeneralStat,
              &stats.GetBayesFactors(),
              {"Bayes Factor: Null..."}},
             {Group::None, "t", Format::GeneralStat, &stats.GetTValues()},
             {Group::None, "df", Format::Count, &stats.GetDFValues()},
             {Group::None, "Sig.(2-tailed)", Format::Significance, &stats.GetSigs()}});
}

void BYSOutput::DisplayPostDistrIndep() {
  const auto& stats = GetStats<MCBSN_850::BSN2SampleIndOutputStats>();
  BpPivotTable table = OpenTable("Posterior Distribution Characterization for Independent-Sample Mean");
  table.Note(BpAnnotation(GetPriorText("Prior for Variance ^1 ^2")));
  FillTable(table, "Variables", MakeVariableRows(stats.GetPostVarIndices()),
            GetPosteriorColumns(Format::Mean, Format::VarSquared, "Variance", stats.GetModeValues(),
                                stats.GetPostMeanValues(), stats.GetVarianceValues(), stats.GetLowerLimits(),
                                stats.GetUpperLimits()));
}
