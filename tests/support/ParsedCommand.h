// What a command's text becomes in the statistical settings, through the real host.
#pragma once

#include <gtest/gtest.h>
#include <memory>

#include <functional>
#include <span>
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

// One command read by the module's parser, and what belongs to its run while the object lives.
class CommandRun {
 public:
  CommandRun(const Model& model, const std::string& body, const std::string& csv)
      : fData(csv), fSession({}), fUse(fSession), fModel(model) {
    const DataSet::Limits limits{1U << 24U, 1};
    fSession.SetData(std::make_shared<DataSet>(fData.GetFile(), limits));
    CommandText text;
    text.fSource = std::string(model.name) + " " + body + ".";
    text.fEnd = text.fSource.size();
    fpOutput = std::make_shared<CommandOutput>(model.name, text.fSource, 1);
    fSession.BeginCommand(text, fpOutput);
  }

  DataSet& GetData() { return *fSession.GetData(); }

  // Once. True: the command was accepted and the specifications are filled.
  bool Read() {
    ZARQ_TokenSequence tokens(true);
    fpSpecs = std::make_unique<BYSValidSpecs>(fDataSource, fModel.title);
    fpSpecs->GetStatSettingsPtr()->SetModelType(fModel.type, true);
    return BYSParser(tokens, *fpSpecs, fDataSource, fModel.name, fModel.title).GetCommandSpecifications();
  }
  BYSValidSpecs& GetSpecs() { return *fpSpecs; }
  ProcedureDataSource& GetDataSource() { return fDataSource; }

  // "error KEY" or "warning KEY", in the order shown.
  std::vector<std::string> GetMessages() const {
    std::vector<std::string> messages;
    for (const Item& item : fpOutput->GetItems()) {
      const auto* message = std::get_if<Message>(&item.fContent);
      if (message == nullptr) continue;
      const bool isError = message->fLevel == Message::Level::Error;
      messages.push_back((isError ? "error " : "warning ") + message->fText.fKey);
    }
    return messages;
  }

 private:
  TempData fData;
  Session fSession;
  Session::Use fUse;
  const Model& fModel;
  std::shared_ptr<CommandOutput> fpOutput;
  ProcedureDataSource fDataSource;
  std::unique_ptr<BYSValidSpecs> fpSpecs;
};

// x y z numeric, s a string, w a weight.
inline Parsed Parse(const Model& model, const std::string& body, bool weighted = false) {
  CommandRun run(model, body, "x,y,z,s,w\n1,2,3,a,1\n2,3,4,bb,2\n");
  if (weighted) run.GetData().SetWeight(run.GetData().FindVariable("w"));
  Parsed parsed;
  parsed.ok = run.Read();
  const BYSValidSpecs& specs = run.GetSpecs();
  parsed.settings = *specs.GetStatSettingsPtr();
  parsed.binInfo = specs.GetBinInfoElems();
  parsed.group = specs.GetGroupInfoElem();
  parsed.plots = {specs.GetPlotIntercept(), specs.GetPlotErrorVar(), specs.GetPlotBayesPred()};
  parsed.shapeRows = specs.GetShapeParamRows();
  parsed.ascending = specs.GetCategAscend();
  parsed.suppressTable = specs.GetPrintSuprTable();
  parsed.cells = specs.GetPrintCellOpts();
  parsed.statistics = specs.GetPrintStatOpts();
  parsed.messages = run.GetMessages();
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

// What a command's settings hold, by a function that puts it in words; no message.
struct SettingRow {
  const Model& model;
  std::string body;
  std::function<std::string(const BSNSettings&)> read;
  std::string expected;
};
inline void ExpectSettings(std::span<const SettingRow> rows) {
  for (const SettingRow& row : rows) {
    const Parsed parsed = Parse(row.model, row.body);
    EXPECT_TRUE(parsed.ok) << row.body;
    EXPECT_EQ(parsed.messages, std::vector<std::string>{}) << row.body;
    EXPECT_EQ(row.read(parsed.settings), row.expected) << row.model.name << " " << row.body;
  }
}

// The one message that a command draws, and whether it goes on.
struct MessageRow {
  const Model& model;
  std::string body;
  bool ok;
  std::string message;
};
inline void ExpectMessages(std::span<const MessageRow> rows) {
  for (const MessageRow& row : rows) {
    const Parsed parsed = Parse(row.model, row.body);
    EXPECT_EQ(parsed.ok, row.ok) << row.body;
    EXPECT_EQ(parsed.messages, std::vector<std::string>{row.message}) << row.body;
  }
}

// A command of weighted data that the host refuses, in one message of its own.
struct RefusalRow {
  const Model& model;
  std::string body;
};
inline void ExpectHostRefusals(std::span<const RefusalRow> rows) {
  for (const RefusalRow& row : rows) {
    const Parsed parsed = Parse(row.model, row.body, true);
    EXPECT_FALSE(parsed.ok) << row.body;
    ASSERT_EQ(parsed.messages.size(), 1U) << row.body;
    EXPECT_EQ(parsed.messages[0].substr(0, 11), "error Host ") << row.body;
  }
}

}  // namespace BayesHost::ParsedCommands
