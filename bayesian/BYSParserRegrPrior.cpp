// PRIOR of a regression or an analysis of variance: a reference prior, or a conjugate one of inverse gamma
// error variance and normal coefficients.
#include "bayesian/BYSParser.h"

namespace {

constexpr const char* kPrior = "PRIOR";

using Tokens = std::vector<ZARQ_Token>;

bool IsRowSeparator(const ZARQ_Token& token) {
  return token.GetOperatorCode() == ZARQ_Token::kRowSeparator;
}

// The rows of a list of values; the list without separators is one row.
std::vector<Tokens> SplitRows(const Tokens& values) {
  std::vector<Tokens> rows(1);
  for (const ZARQ_Token& value : values) {
    if (IsRowSeparator(value)) {
      rows.emplace_back();
    } else {
      rows.back().push_back(value);
    }
  }
  return rows;
}

std::string ShowRow(const Tokens& row) {
  std::string text;
  for (const ZARQ_Token& value : row) text += (text.empty() ? "" : " ") + value.GetText();
  return text;
}

// A list of 1, 3, 6 ... values without separators, cut into rows of 1, 2, 3 ... values. The last row is
// short when the list is not a triangle.
std::vector<Tokens> CutTriangle(const Tokens& values) {
  std::vector<Tokens> rows;
  for (const ZARQ_Token& value : values) {
    if (rows.empty() || rows.back().size() == rows.size()) rows.emplace_back();
    rows.back().push_back(value);
  }
  return rows;
}

}  // namespace

bool BYSParser::ProcessRegrPriorSubCom(const SubComObj& subcommand) {
  if (const ParamObj* type = subcommand.getParamObj("TYPE")) {
    fSettings.SetPriorType(type->isStringValueCase("CONJUGATE") ? BSNConst::Conjugate : BSNConst::Reference);
  }
  return CheckConjugateGiven(subcommand) && ReadPriorNumbers(subcommand) && ReadVMatrix(subcommand);
}

// A conjugate prior has no defaults beside its identity matrix.
bool BYSParser::CheckConjugateGiven(const SubComObj& subcommand) const {
  if (fSettings.GetPriorType() != BSNConst::Conjugate) return true;
  for (const char* name : {"SHAPEPARAM", "SCALEPARAM", "MEANVECTOR"}) {
    if (subcommand.getParamObj(name) != nullptr) continue;
    fMessage.GenericError("Param ^1 needed when param ^2 is ^3, subcom ^4 ...", name, "TYPE", "CONJUGATE",
                          kPrior);
    return false;
  }
  return true;
}

bool BYSParser::ReadPriorNumbers(const SubComObj& subcommand) {
  double shape = fMissing;
  double scale = fMissing;
  std::vector<double> means;
  if (const ParamObj* param = subcommand.getParamObj("SHAPEPARAM")) param->getNumberValue(shape);
  if (const ParamObj* param = subcommand.getParamObj("SCALEPARAM")) param->getNumberValue(scale);
  if (const ParamObj* param = subcommand.getParamObj("MEANVECTOR")) param->getNumberList(means);
  fSettings.SetPriorShape(shape);
  fSettings.SetPriorScale(scale);
  fSettings.SetPriorMeans(means);
  return true;
}

// The lower triangle, with its diagonal, of the matrix that scales the prior covariance of the coefficients.
// Whether it fits the model's parameters shows with the data.
bool BYSParser::ReadVMatrix(const SubComObj& subcommand) {
  const ParamObj* param = subcommand.getParamObj("VMATRIX");
  if (param == nullptr || param->isStringValueCase("IDENTITY")) return true;
  std::vector<Tokens> rows = SplitRows(param->getTokenList());
  if (rows.size() == 1) rows = CutTriangle(rows.front());
  std::vector<double> values;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].size() != i + 1 || !AllNumbers(rows[i])) {
      fMessage.GenericError("Lower triang bad, option ^1, param ^2, subcom ^3 ...", ShowRow(rows[i]),
                            "VMATRIX", kPrior);
      return false;
    }
    for (const ZARQ_Token& value : rows[i]) values.push_back(value.GetNumber());
    if (values.back() > 0) continue;
    fMessage.GenericError("Lower triang diag non-posit param ^1, subcom ^2 ...", "VMATRIX", kPrior);
    return false;
  }
  fSettings.SetPriorCovMatrix(values);
  return true;
}
