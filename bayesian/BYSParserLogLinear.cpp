// The log-linear command: its table, the model and prior of the Bayes factor, and what is printed.
#include <algorithm>

#include "bayesian/BYSParser.h"

namespace {

constexpr int kTrainingTablesOfTotal = 500;
constexpr int kTrainingTablesOfMargin = 5000;

// A keyword of PRINT and the place of its option.
struct PrintOption {
  const char* keyword;
  std::size_t option;
};
constexpr PrintOption kCells[] = {{"OBSERVED", 0}, {"ROW", 1}, {"COLUMN", 2}, {"EXPECTED", 3}, {"TOTAL", 4}};
constexpr PrintOption kStatistics[] = {{"CHISQ", 0}, {"LRT", 1}};

template <std::size_t N>
void SelectOptions(const ParamObj& param, const PrintOption (&table)[N], std::vector<bool>& options) {
  std::vector<std::string> keywords;
  param.getUpStringList(keywords);
  for (const std::string& keyword : keywords) {
    for (const PrintOption& row : table) {
      if (keyword == row.keyword || keyword == "ALL") options[row.option] = true;
    }
  }
}

}  // namespace

bool BYSParser::ProcessTableSubCom(const SubComObj& subcommand) {
  Tokens names;
  subcommand.getExportParamObj()->getCrossVarList(names);
  if (!fTableVars.ValidateVariables(names) || !fTableVars.CheckCommonVars(fWeightVar)) return false;
  if (fTableVars.GetNValidVars() != 2) {
    ParamNeed2VarNames("TABLE", subcommand.getName());
    return false;
  }
  fSettings.SetFactors(fTableVars.GetVariables());
  return true;
}

// The grammar lets TABLE be left out, but there is nothing to analyse without it.
bool BYSParser::CheckTableGiven() {
  if (!IsModel(BSNConst::LogLinear) || fTableVars.GetNValidVars() == 2) return true;
  fMessage.GenericError("Loglin two factors ...");
  return false;
}

bool BYSParser::ReadLogLinear(const SubComObj& subcommand) {
  if (const ParamObj* param = subcommand.getParamObj("MODEL")) {
    fSettings.SetLogLinModel(param->isStringValueCase("POISSON")         ? BSNConst::Poisson
                             : param->isStringValueCase("NONPARAMETRIC") ? BSNConst::Nonparametric
                                                                         : BSNConst::Multinomial);
  }
  if (const ParamObj* param = subcommand.getParamObj("FIX_MARGIN")) {
    const BSNConst::FixType fixed = param->isStringValueCase("COLUMN") ? BSNConst::FixColumn
                                    : param->isStringValueCase("ROW")  ? BSNConst::FixRow
                                                                       : BSNConst::FixTotal;
    fSettings.SetFixType(fixed);
    fSettings.SetLogLinIntrinsicT(fixed == BSNConst::FixTotal ? kTrainingTablesOfTotal
                                                              : kTrainingTablesOfMargin);
  }
  if (const ParamObj* param = subcommand.getParamObj("PRIOR_TYPE")) {
    fSettings.SetLogLinPriorType(param->isStringValueCase("MIXTURE_DIRICHLET")
                                     ? BSNConst::PriorMixtureDirichlet
                                 : param->isStringValueCase("INTRINSIC") ? BSNConst::PriorIntrinsic
                                                                         : BSNConst::PriorConjugate);
  }
  if (!ReadShapes(subcommand)) return false;
  ReadScaleAndLambdas(subcommand);
  return true;
}

// The rate parameter of the prior on a Poisson model's cells, and the precisions of a mixture or a process.
void BYSParser::ReadScaleAndLambdas(const SubComObj& subcommand) {
  if (const ParamObj* param = subcommand.getParamObj("SCALEPARAM")) {
    double scale = fMissing;  // stands for DATA: one that suits the data
    param->getNumberValue(scale);
    fSettings.SetPriorScale(scale);
  }
  if (const ParamObj* param = subcommand.getParamObj("LAMBDAS")) {
    std::vector<double> lambdas;
    if (param->getNumberList(lambdas)) fSettings.SetLambdas(lambdas);
  }
}

// One shape for all cells, or a matrix with a shape for each.
bool BYSParser::ReadShapes(const SubComObj& subcommand) {
  const ParamObj* param = subcommand.getParamObj("SHAPEPARAMS");
  if (param == nullptr) return true;
  std::vector<std::vector<double>> rows;
  if (!ReadShapeRows(param->getTokenList(), subcommand.getName(), rows)) return false;
  std::vector<double> shapes;
  for (const std::vector<double>& row : rows) shapes.insert(shapes.end(), row.begin(), row.end());
  if (shapes.size() > 1) fSpecs.GetShapeParamRows() = rows;
  fSettings.SetLogLinShapes(shapes);
  return true;
}

bool BYSParser::ReadShapeRows(const Tokens& values, const std::string& subcommand,
                              std::vector<std::vector<double>>& rows) const {
  rows.assign(1, {});
  bool numbers = true;
  for (const ZARQ_Token& token : values) {
    if (token.GetOperatorCode() == ZARQ_Token::kRowSeparator) {
      rows.emplace_back();
      continue;
    }
    numbers = numbers && token.IsNumber();
    if (numbers && !RequirePositive(token.GetNumber(), "SHAPEPARAMS", subcommand)) return false;
    rows.back().push_back(token.GetNumber());
  }
  const bool rectangular = std::all_of(rows.begin(), rows.end(), [&](const std::vector<double>& row) {
    return row.size() == rows.front().size();
  });
  if (numbers && rectangular) return true;
  fMessage.GenericError("Rectangular bad, param ^1, subcom ^2 ...", "SHAPEPARAMS", subcommand);
  return false;
}

// A PRINT without STATISTICS selects no statistic; one without CELLS leaves the cells as they were.
bool BYSParser::ProcessPrintSubCom(const SubComObj& subcommand) {
  const ParamObj* suppress = subcommand.getParamObj("SUPPRESS_TABLE");
  if (suppress != nullptr) fSpecs.SetPrintSuprTable(suppress->isStringValueCase("TRUE"));
  if (const ParamObj* cells = subcommand.getParamObj("CELLS")) {
    fSpecs.GetPrintCellOpts().assign(std::size(kCells), false);
    SelectOptions(*cells, kCells, fSpecs.GetPrintCellOpts());
  }
  fSpecs.GetPrintStatOpts().assign(std::size(kStatistics), false);
  if (const ParamObj* statistics = subcommand.getParamObj("STATISTICS")) {
    SelectOptions(*statistics, kStatistics, fSpecs.GetPrintStatOpts());
  }
  return true;
}
