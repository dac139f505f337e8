// What INFERENCE and ESTBF say about correlations.
#include "bayesian/BYSParser.h"

namespace {

constexpr double kHalfOfTheData = 0.5;
constexpr long kDefaultPlots = 10;

}  // namespace

// The coefficient, the power c of the prior (1 - rho^2)^c, and how many pairs get charts.
void BYSParser::ReadCorrelation(const SubComObj& subcommand) {
  if (const ParamObj* param = subcommand.getParamObj("CORR")) {
    fSettings.SetCorrTest(param->isStringValueCase("SPEARMAN")  ? BSNConst::Spearman
                          : param->isStringValueCase("KENDALL") ? BSNConst::Kendall
                                                                : BSNConst::Pearson);
  }
  if (const ParamObj* param = subcommand.getParamObj("CVALUE")) {
    double power = 0;
    param->getNumberValue(power);
    fSettings.SetCorrCValue(power);
  }
  if (const ParamObj* param = subcommand.getParamObj("MAXPLOTS")) {
    long plots = kDefaultPlots;
    param->getIntegerValue(plots);
    fSettings.SetMaxNPlots(static_cast<int>(plots));
  }
}

void BYSParser::ReadCorrelationBF(const SubComObj& subcommand) {
  if (const ParamObj* param = subcommand.getParamObj("NULLVALUE")) {
    double nullValue = 0;
    param->getNumberValue(nullValue);
    fSettings.SetNullValue(nullValue);
  }
  const ParamObj* param = subcommand.getParamObj("TYPE");
  std::string keyword;
  Tokens values;
  if (param == nullptr || !param->getStringAndQual(keyword, values)) return;
  const bool fraction = keyword == "FRACTION";
  fSettings.SetEstBFType(fraction ? BSNConst::EstFraction : BSNConst::EstJZS);
  fSettings.SetRegrComPar(!fraction        ? fMissing
                          : values.empty() ? kHalfOfTheData
                                           : values.front().GetNumber());
}
