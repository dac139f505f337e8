// Tables of the analysis of variance, and the part of them that regression shares.
#include "bayesian/BYSOutputParts.h"

void BYSOutput::FillAnova(BpDimension& rows, BpDimension& statistics, const char* const (&labels)[3],
                          const std::vector<double>& anova) {
  struct Place {
    int row;
    const char* column;
    Format format;
  };
  // In the order of the record's numbers.
  static constexpr Place kPlaces[] = {{0, "Sum of Squares", Format::GeneralStat},
                                      {0, "df", Format::Count},
                                      {0, "Mean Square", Format::GeneralStat},
                                      {0, "F", Format::GeneralStat},
                                      {0, "Sig.", Format::Significance},
                                      {1, "Sum of Squares", Format::GeneralStat},
                                      {1, "df", Format::Count},
                                      {1, "Mean Square", Format::GeneralStat},
                                      {2, "Sum of Squares", Format::GeneralStat},
                                      {2, "df", Format::Count}};
  std::size_t i = 0;
  for (const Place& place : kPlaces) {
    rows.Category(BpString(labels[place.row], true));
    statistics.Category(BpString(place.column, true)).Cell(BpNumber(anova[i], GetFormat(place.format, {})));
    ++i;
  }
}

void BYSOutput::DisplayBFAnova() {
  static constexpr const char* kRows[] = {"Between Groups", "Within Groups", "Total"};
  const auto& stats = GetStats<MCBSN_850::BSNMultiRegOutputStats>();
  BpPivotTable table = OpenTable("ANOVA");
  BpDimension rows =
      AddDimension(table, BpVariable(GetDependent(), BpVariable::kLabelElseName), BpDimension::kRows);
  BpDimension statistics = AddDimension(table, BpString("Statistics", true), BpDimension::kColumns);
  FillAnova(rows, statistics, kRows, stats.GetAnova());
  if (stats.GetBayesFactor() == 0.0) return;
  rows.Category(BpString(kRows[0], true));
  BpCategory bayesFactor = statistics.Category(BpString("Bayes Factor", true));
  bayesFactor.Cell(BpNumber(stats.GetBayesFactor(), BpProcedure::GeneralStat()));
  bayesFactor.Note(BpAnnotation(GetRegrMethodText("Bayes factor: ^1")));
}
