// What the tables of sample tests have in common: layout, formats, the credible interval, the prior.
#include "bayesian/BYSOutput.h"

namespace {

// Categories stand in the order of their creation.
constexpr int kAsCreated = 2;

// Names of distributions by their code: of a variance or precision, and of a mean.
constexpr const char* kPriorDistNames[] = {
    "Normal",        "Binomial",   "Poisson",    "Chi-Square", "Inverse Chi-Square", "Gamma",
    "Inverse Gamma", "Jeffreys 2", "Jeffreys 4", "Diffuse",    "Multinomial"};
constexpr const char* kMeanDistNames[] = {
    "Normal",        "Binomial",   "Poisson",    "Chi-Square", "Inverse Chi-Square", "Inverse",
    "Inverse Gamma", "Jeffreys 2", "Jeffreys 4", "Diffuse",    "Multinomial"};

}  // namespace

BpPivotTable BYSOutput::OpenTable(const char* title) {
  return fpProcedure->PivotTable(BpString(title, true), BpString(title, true), true);
}

// Rows are the test variables behind the slots, columns as given.
void BYSOutput::FillTable(BpPivotTable& table, const std::vector<int>& slots,
                          const std::vector<Column>& columns) {
  BpDimension variables = table.Dimension(BpString("Variables", true), kAsCreated);
  variables.Position(BpDimension::kRows, 1, true, true);
  BpDimension statistics = table.Dimension(BpString("Statistics", true), kAsCreated);
  statistics.Position(BpDimension::kColumns, 1, true, true);
  for (std::size_t row = 0; row < slots.size(); ++row) {
    const ZARQ_Variable& variable = fDataSource.GetVariable(fSpecs.GetZARQVarIndex(slots[row]));
    variables.Category(BpVariable(variable, BpVariable::kLabelElseName));
    for (const Column& column : columns) {
      BpCategory category = AddColumn(statistics, column);
      category.Cell(BpNumber((*column.values)[row], GetFormat(column.format, variable)));
      if (row > 0 || *column.note == '\0') continue;
      BpComposite note(column.note, true);
      note.Finish();
      category.Note(BpAnnotation(note));
      AddSeedNote(category);
    }
  }
}

BpCategory BYSOutput::AddColumn(BpDimension& statistics, const Column& column) const {
  const BpString label(column.label, true);
  switch (column.group) {
    case Group::Posterior:
      return statistics.Group(BpString("Posterior", true), true, kAsCreated).Category(label);
    case Group::Interval:
      return statistics.Group(GetIntervalLabel(), true, kAsCreated).Category(label);
    default:
      return statistics.Category(label);
  }
}

BpFormatSpec BYSOutput::GetFormat(Format format, const ZARQ_Variable& variable) const {
  switch (format) {
    case Format::Count:
      return BpProcedure::Count();
    case Format::Mean:
      return BpProcedure::Mean({&variable});
    case Format::StdDev:
      return BpProcedure::StdDev({&variable});
    case Format::VarSquared:
      return BpProcedure::VarSquared({&variable});
    case Format::Significance:
      return BpProcedure::Significance();
    default:
      return BpProcedure::GeneralStat();
  }
}

BpComposite BYSOutput::GetIntervalLabel() const {
  BpComposite label("^1 Credible Interval", true);
  label.Add(BpNumber(fpCompSettings->GetCILevel(), BpProcedure::SigDigit()));
  label.Finish();
  return label;
}

// A Monte Carlo result can be repeated with its seed.
void BYSOutput::AddSeedNote(BpCategory& category) const {
  if (fpCompSettings->GetMethodType() != BSNConst::MCA) return;
  BpComposite note("Bayes Factor and MCA ^1...", true);
  note.Add(BpNumber(static_cast<double>(fpCompSettings->GetRandomSeed()), BpProcedure::Count()));
  note.Finish();
  category.Note(BpAnnotation(note));
}

BpComposite BYSOutput::GetPriorCaption() const {
  const BSNConst::DistTypes prior = fpCompSettings->GetPriorDistType();
  const bool onPrecision = prior == BSNConst::ChiSquare || prior == BSNConst::Gamma;
  BpComposite caption(onPrecision ? "^1 Prior on Precision ^2..." : "^1 Prior on Variance ^2...", true);
  caption.Add(BpString(kPriorDistNames[prior], true));
  caption.Add(BpString(kMeanDistNames[fpCompSettings->GetMeanDistType()], true));
  caption.Finish();
  return caption;
}
