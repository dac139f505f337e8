// What a command's text becomes in the statistical settings, through the real host.
#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "bayesian/BYSParser.h"
#include "bayesian/BYSValidSpecs.h"
#include "host/data/DataSet.h"
#include "host/output/CommandOutput.h"
#include "host/session/Session.h"
#include "support/TempData.h"

namespace BayesHost::ParsedCommands {

using MCBSN_850::BSNSettings;

inline constexpr double M = MCCommon_850::MCMV::Missing();

struct Parsed {
  bool ok = false;
  BSNSettings settings;
  std::vector<BYSValidSpecs::BinInfoElem> binInfo;
  BYSValidSpecs::BinInfoElem group;
  // PLOT: intercept, error variance, prediction.
  std::vector<bool> plots;
  // Log-linear: rows of a matrix of shapes, category order, PRINT.
  std::vector<std::vector<double>> shapeRows;
  bool ascending = true;
  bool suppressTable = false;
  std::vector<bool> cells;
  std::vector<bool> statistics;
  std::vector<std::string> messages;  // "error KEY" or "warning KEY"
};

struct Model {
  const char* name;
  const char* title;
  BSNConst::ModelTypes type;
};
inline const Model kOne{"BAYES ONESAMPLE", "Bayesian One-Sample", BSNConst::OneSample};
inline const Model kRelated{"BAYES RELATED", "Bayesian Related", BSNConst::Related};
inline const Model kIndependent{"BAYES INDEPENDENT", "Bayesian Independent", BSNConst::Independent};
inline const Model kCorrelation{"BAYES CORRELATION", "Bayesian Correlation", BSNConst::Correlation};
inline const Model kLogLinear{"BAYES LOGLINEAR", "Bayesian Loglinear", BSNConst::LogLinear};
inline const Model kRegression{"BAYES REGRESSION", "Bayesian Regression", BSNConst::Regression};
inline const Model kAnova{"BAYES ANOVA", "Bayesian ANOVA", BSNConst::Anova};

// x y z numeric, s a string, w a weight.
inline Parsed Parse(const Model& model, const std::string& body, bool weighted = false) {
  const BayesHost::TempData file("x,y,z,s,w\n1,2,3,a,1\n2,3,4,bb,2\n");
  BayesHost::Session session({});
  const BayesHost::Session::Use use(session);
  session.SetData(
      std::make_shared<BayesHost::DataSet>(file.GetFile(), BayesHost::DataSet::Limits{1U << 24U, 1}));
  if (weighted) session.GetData()->SetWeight(session.GetData()->FindVariable("w"));
  BayesHost::CommandText text;
  text.fSource = std::string(model.name) + " " + body + ".";
  text.fEnd = text.fSource.size();
  const auto output = std::make_shared<BayesHost::CommandOutput>(model.name, text.fSource, 1);
  session.BeginCommand(text, output);

  ZARQ_TokenSequence tokens(true);
  const ProcedureDataSource dataSource;
  BYSValidSpecs specs(dataSource, model.title);
  specs.GetStatSettingsPtr()->SetModelType(model.type, true);
  BYSParser parser(tokens, specs, dataSource, model.name, model.title);
  Parsed parsed;
  parsed.ok = parser.GetCommandSpecifications();
  parsed.settings = *specs.GetStatSettingsPtr();
  parsed.binInfo = specs.GetBinInfoElems();
  parsed.group = specs.GetGroupInfoElem();
  parsed.plots = {specs.GetPlotIntercept(), specs.GetPlotErrorVar(), specs.GetPlotBayesPred()};
  parsed.shapeRows = specs.GetShapeParamRows();
  parsed.ascending = specs.GetCategAscend();
  parsed.suppressTable = specs.GetPrintSuprTable();
  parsed.cells = specs.GetPrintCellOpts();
  parsed.statistics = specs.GetPrintStatOpts();
  for (const BayesHost::Item& item : output->GetItems()) {
    const auto& message = std::get<BayesHost::Message>(item.fContent);
    parsed.messages.push_back((message.fLevel == BayesHost::Message::Level::Error ? "error " : "warning ") +
                              message.fText.fKey);
  }
  return parsed;
}

// A setting in words, for tables of expectations.
inline std::string Show(const std::vector<double>& values) {
  std::ostringstream text;
  for (double value : values) {
    if (value == M) {
      text << "M ";
    } else {
      text << value << ' ';
    }
  }
  return text.str();
}
inline std::string Show(const std::vector<int>& values) {
  return Show(std::vector<double>(values.begin(), values.end()));
}
template <class... Numbers>
std::string ShowEach(Numbers... numbers) {
  return Show(std::vector<double>{static_cast<double>(numbers)...});
}

}  // namespace BayesHost::ParsedCommands
