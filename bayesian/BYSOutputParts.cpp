// What the tables of sample tests have in common: layout, formats, the credible interval, the prior.
#include "bayesian/BYSOutput.h"

namespace {

// Categories stand in the order of their creation.
constexpr int kAsCreated = 2;

constexpr const char* kSeedNote = "Bayes Factor and MCA ^1...";

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

BpDimension BYSOutput::AddDimension(BpPivotTable& table, const BpCellText& label, BpDimension::Place place,
                                    int index) const {
  BpDimension dimension = table.Dimension(label, kAsCreated);
  dimension.Position(place, index, true, true);
  return dimension;
}

const ZARQ_Variable& BYSOutput::GetSlotVariable(int slot) const {
  return fDataSource.GetVariable(fSpecs.GetZARQVarIndex(slot));
}

std::vector<BYSOutput::Row> BYSOutput::MakeVariableRows(const std::vector<int>& slots) const {
  std::vector<Row> rows;
  for (int slot : slots) {
    const ZARQ_Variable& variable = GetSlotVariable(slot);
    rows.push_back({BpVariable(variable, BpVariable::kLabelElseName), {&variable}});
  }
  return rows;
}

void BYSOutput::FillTable(BpPivotTable& table, const char* rowLabel, const std::vector<Row>& rows,
                          const std::vector<Column>& columns) const {
  BpDimension rowDimension = AddDimension(table, BpString(rowLabel, true), BpDimension::kRows);
  BpDimension statistics = AddDimension(table, BpString("Statistics", true), BpDimension::kColumns);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    rowDimension.Category(rows[i].label);
    FillCells(statistics, rows[i], i, columns);
  }
}

void BYSOutput::FillCells(BpDimension& statistics, const Row& row, std::size_t index,
                          const std::vector<Column>& columns) const {
  for (const Column& column : columns) {
    BpCategory category = AddColumn(statistics, column);
    category.Cell(BpNumber((*column.values)[index], GetFormat(column.format, row.variables)));
    for (const auto& note : column.cellNotes) {
      if (*note(index) != '\0') category.CellNote(MakeNote(note(index)));
    }
    if (index > 0) continue;
    for (const char* note : column.notes) category.Note(MakeNote(note));
  }
}

BpCategory BYSOutput::AddColumn(BpDimension& statistics, const Column& column) const {
  const auto group = [&](const BpCellText& text) { return statistics.Group(text, true, kAsCreated); };
  const BpString label(column.label, true);
  switch (column.group) {
    case Group::Posterior:
      return group(BpString("Posterior", true)).Category(label);
    case Group::Observed:
      return group(BpString("Observed", true)).Category(label);
    case Group::Counts:
      return group(BpString("counts", true)).Category(label);
    case Group::Interval:
      return group(fIntervalLabel).Category(label);
    default:
      return statistics.Category(label);
  }
}

BpFormatSpec BYSOutput::GetFormat(Format format, const std::vector<const ZARQ_Variable*>& variables) {
  switch (format) {
    case Format::Count:
      return BpProcedure::Count();
    case Format::Mean:
      return BpProcedure::Mean(variables);
    case Format::StdDev:
      return BpProcedure::StdDev(variables);
    case Format::VarSquared:
      return BpProcedure::VarSquared(variables);
    case Format::Significance:
      return BpProcedure::Significance();
    case Format::Correlation:
      return BpProcedure::Correlation();
    case Format::Coefficient:
      return BpProcedure::Coefficient();
    default:
      return BpProcedure::GeneralStat();
  }
}

// A Monte Carlo result can be repeated with its seed.
BpAnnotation BYSOutput::MakeNote(const char* key) const {
  BpComposite note(key, true);
  if (key == std::string(kSeedNote)) {
    note.Add(BpNumber(static_cast<double>(fpCompSettings->GetRandomSeed()), BpProcedure::Count()));
  }
  note.Finish();
  return BpAnnotation(note);
}

// The same for draws from a posterior distribution.
BpAnnotation BYSOutput::MakeSamplesNote() const {
  BpComposite note("Seed:^1 samples ^2", true);
  note.Add(BpNumber(static_cast<double>(fpCompSettings->GetRandomSeed()), BpProcedure::Count()));
  note.Add(BpNumber(static_cast<double>(fpCompSettings->GetPosteriorSamples()), BpProcedure::Count()));
  note.Finish();
  return BpAnnotation(note);
}

// Notes of a Bayes factor column of a test of normal means.
std::vector<const char*> BYSOutput::GetBayesFactorNotes() const {
  if (fpCompSettings->GetMethodType() == BSNConst::MCA) return {"Bayes Factor: Null...", kSeedNote};
  return {"Bayes Factor: Null..."};
}

std::vector<BYSOutput::Column> BYSOutput::GetPosteriorColumns(
    Format location, Format variance, const char* varianceLabel, const std::vector<double>& modes,
    const std::vector<double>& means, const std::vector<double>& variances, const std::vector<double>& lower,
    const std::vector<double>& upper) {
  return {{Group::Posterior, "Mode", location, &modes},
          {Group::Posterior, "Mean", location, &means},
          {Group::Posterior, varianceLabel, variance, &variances},
          {Group::Interval, "Lower Bound", location, &lower},
          {Group::Interval, "Upper Bound", location, &upper}};
}

BpComposite BYSOutput::MakeIntervalLabel(double level) {
  BpComposite label("^1 Credible Interval", true);
  label.Add(BpNumber(level, BpProcedure::SigDigit()));
  label.Finish();
  return label;
}

// Names the priors of the variance (or precision) and of the mean.
BpComposite BYSOutput::GetPriorText(const char* key) const {
  BpComposite text(key, true);
  text.Add(BpString(kPriorDistNames[fpCompSettings->GetPriorDistType()], true));
  text.Add(BpString(kMeanDistNames[fpCompSettings->GetMeanDistType()], true));
  text.Finish();
  return text;
}

BpComposite BYSOutput::GetPriorCaption() const {
  const BSNConst::DistTypes prior = fpCompSettings->GetPriorDistType();
  const bool onPrecision = prior == BSNConst::ChiSquare || prior == BSNConst::Gamma;
  return GetPriorText(onPrecision ? "^1 Prior on Precision ^2..." : "^1 Prior on Variance ^2...");
}
