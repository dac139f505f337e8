// Tables of the one-sample command.
#include "bayesian/BYSOutputParts.h"

void BYSOutput::DisplayTTestOutput() {
  const auto& stats = GetStats<MCBSN_850::BSN1SampleNormOutputStats>();
  BpPivotTable table = OpenTable("One-Sample T Test");
  FillTable(
      table, stats.GetVarIndices(),
      {{Group::None, "N", Format::Count, &stats.GetNs()},
       {Group::None, "Mean", Format::Mean, &stats.GetMeanValues()},
       {Group::None, "Std. Deviation", Format::StdDev, &stats.GetStdDevs()},
       {Group::None, "Std. Error Mean", Format::StdDev, &stats.GetEMs()},
       {Group::None, "Bayes Factor", Format::GeneralStat, &stats.GetBayesFactors(), "Bayes Factor: Null..."},
       {Group::None, "t", Format::GeneralStat, &stats.GetTValues()},
       {Group::None, "df", Format::Count, &stats.GetDFValues()},
       {Group::None, "Sig.(2-tailed)", Format::Significance, &stats.GetSigs()}});
}

void BYSOutput::DisplayPostDistribution() {
  const auto& stats = GetStats<MCBSN_850::BSN1SampleNormOutputStats>();
  BpPivotTable table = OpenTable("Posterior Distribution Characterization for One-Sample Mean");
  table.Caption(GetPriorCaption());
  FillTable(table, stats.GetVarIndices(),
            {{Group::None, "N", Format::Count, &stats.GetNs()},
             {Group::Posterior, "Mode", Format::Mean, &stats.GetModeValues()},
             {Group::Posterior, "Mean", Format::Mean, &stats.GetPostMeanValues()},
             {Group::Posterior, "Variance", Format::VarSquared, &stats.GetVarianceValues()},
             {Group::Interval, "Lower Bound", Format::Mean, &stats.GetLowerLimits()},
             {Group::Interval, "Upper Bound", Format::Mean, &stats.GetUpperLimits()}});
}
