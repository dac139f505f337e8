// Tables of the correlation command: squares of variables, with the statistics of a pair where they cross.
#include "bayesian/BYSOutputParts.h"

namespace {

// Names of the coefficients by their code.
constexpr const char* kCoefficients[] = {"Pearson Correlation", "Spearman Correlation",
                                         "Kendall Correlation"};

}  // namespace

void BYSOutput::DisplayBFCorrel() {
  const auto& stats = GetStats<MCBSN_850::BSNPearsonCorrelationOutputStats>();
  const BSNConst::CorrTests test = fpCompSettings->GetCorrTest();
  BpPivotTable table = OpenTable("Bayes Factor Inference on Pairwise Correlations");
  table.Note(MakeNote("Bayes Factor: Null..."));
  if (test != BSNConst::Pearson) table.Note(MakeNote("Rank Bayes Factor ..."));
  if (test == BSNConst::Spearman) table.Note(MakeSamplesNote());
  const auto logNote = [&](std::size_t pair) {
    return stats.GetIsLogBayesFactor()[pair] ? "Log Bayes Factor..." : "";
  };
  const auto failedNote = [&](std::size_t pair) {
    return stats.GetIndIntegralFailed()[pair] ? "Numer method not conv BF ..." : "";
  };
  FillCorrelations(
      table,
      {{Group::None, kCoefficients[test], Format::Correlation, &stats.GetPearsonCorrelation()},
       {Group::None, "Bayes Factor", Format::GeneralStat, &stats.GetBayesFactor(), {}, {logNote, failedNote}},
       {Group::None, "N", Format::Count, &stats.GetVarPairN()}});
}

void BYSOutput::DisplayDistrCorrel() {
  const auto& stats = GetStats<MCBSN_850::BSNPearsonCorrelationOutputStats>();
  const BSNConst::CorrTests test = fpCompSettings->GetCorrTest();
  BpPivotTable table = OpenTable("Posterior Distribution Characterization for Pairwise Correlations");
  BpComposite prior("Assume reference^1", true);
  prior.Add(BpNumber(fpCompSettings->GetCorrCValue(), BpProcedure::SigDigit()));
  prior.Finish();
  table.Note(BpAnnotation(prior));
  if (test != BSNConst::Pearson) table.Note(MakeNote("Latent correlation ..."));
  if (test == BSNConst::Spearman) table.Note(MakeSamplesNote());
  FillCorrelations(table,
                   {{Group::Posterior, "Mode", Format::Correlation, &stats.GetPosteriorMode()},
                    {Group::Posterior, "Mean", Format::Correlation, &stats.GetPosteriorMean()},
                    {Group::Posterior, "Variance", Format::Correlation, &stats.GetPosteriorVariance()},
                    {Group::Interval, "Lower Bound", Format::GeneralStat, &stats.GetPosteriorLowerBound()},
                    {Group::Interval, "Upper Bound", Format::GeneralStat, &stats.GetPosteriorUpperBound()},
                    {Group::None, "N", Format::Count, &stats.GetVarPairN()}});
}

// A pair stands on both sides of the diagonal, which shows each variable's own count. Labels come first, so
// that they keep their order whichever crossing is filled first.
void BYSOutput::FillCorrelations(BpPivotTable& table, const std::vector<Column>& columns) const {
  const auto& stats = GetStats<MCBSN_850::BSNPearsonCorrelationOutputStats>();
  const auto& varPairs = stats.GetVarPairIndices();
  const std::vector<Row> rows = MakeVariableRows(fpCompSettings->GetCovariates());
  BpDimension variables = AddDimension(table, BpString("variables", true), BpDimension::kRows, 1);
  BpDimension statistics = AddDimension(table, BpString("Statistics", true), BpDimension::kRows, 2);
  BpDimension partners = AddDimension(table, BpString("variables", true), BpDimension::kColumns);
  for (const Column& column : columns) AddColumn(statistics, column);
  const auto fill = [&](std::size_t row, std::size_t partner, std::size_t index,
                        const std::vector<Column>& shown) {
    variables.Category(rows[row].label);
    partners.Category(rows[partner].label);
    FillCells(statistics, rows[row], index, shown);
  };
  for (std::size_t i = 0; i < rows.size(); ++i) {
    fill(i, i, i, {{Group::None, "N", Format::Count, &stats.GetVarN()}});
  }
  for (std::size_t pairInd = 0; pairInd < stats.GetPearsonCorrelation().size(); ++pairInd) {
    BYS::Assert(pairInd < varPairs.size(), "BYSOutput", "pairInd < varPairs.size()");
    const auto first = static_cast<std::size_t>(varPairs[pairInd].first);
    const auto second = static_cast<std::size_t>(varPairs[pairInd].second);
    fill(first, second, pairInd, columns);
    fill(second, first, pairInd, columns);
  }
}
