#include <nlohmann/json.hpp>

#include "host/charts/ChartData.h"
#include "host/charts/SvgChart.h"
#include "host/output/CommandOutput.h"
#include "host/output/HostKeys.h"
#include "host/output/NumberFormat.h"
#include "host/output/StringTable.h"
#include "host/session/Session.h"

using Json = nlohmann::ordered_json;

struct XDocument::State {
  bool fIsEmpty = false;  // there is nothing to send
  Json fDocument;
  std::string fTitle;
  std::string fTemplate;
};

namespace {

constexpr const char* kLanguage = "en";

// One object for each row, as the document's grammar wants it.
Json RowsOf(const VarDataProcessor::State& data) {
  Json rows = Json::array();
  for (std::size_t row = 0; row < data.CountRows(); ++row) {
    Json values = Json::object();
    for (const auto& [name, column] : data.fvColumns) {
      const bool isKnown = row < column.size() && !BayesHost::IsMissing(column[row]);
      values[name] = isKnown ? Json(column[row]) : Json(nullptr);
    }
    rows.push_back(std::move(values));
  }
  return rows;
}

bool IsWanted(BayesHost::ChartUse use) {
  return BayesHost::Session::Current().GetOptions().Wants(use);
}

// A document that goes beyond what can be drawn here is still a chart: other tools draw it.
std::string DrawOrWarn(const std::string& document, const std::string& title) {
  try {
    return BayesHost::SvgChart::Draw(document);
  } catch (const BayesHost::ChartError& error) {
    BayesHost::Message message;
    message.fLevel = BayesHost::Message::Level::Warning;
    message.fText = BayesHost::ShowKey(BayesHost::kHostChartNotDrawn, {title, error.what()});
    BayesHost::Session::Current().GetOutput().AddMessage(std::move(message));
    return "";
  }
}

}  // namespace

bool XDocument::IsShown() {
  return IsWanted(BayesHost::ChartUse::Document);
}

XDocument::XDocument(const std::string& text)
    : fpState(new State{text.empty(), text.empty() ? Json::object() : Json::parse(text), {}, {}}) {}
XDocument::~XDocument() = default;

void XDocument::setEditor(const std::string& procedure) {
  fpState->fDocument["usermeta"]["procedure"] = procedure;
}

void XDocument::setLanguage() {
  fpState->fDocument["usermeta"]["language"] = kLanguage;
}

void XDocument::SetDescription(const ChartString& title) {
  fpState->fTitle = title.GetText();
  fpState->fDocument["description"] = title.GetText();
}

void XDocument::SetChartData(const VarDataProcessor& data) {
  if (!IsShown()) return;
  fpState->fDocument["datasets"][data.GetState().fDataSource] = RowsOf(data.GetState());
}

void XDocument::applyCTemplate(const std::string& name) {
  fpState->fTemplate = name;
  fpState->fDocument["usermeta"]["template"] = name;
}

void XDocument::SendChart() {
  if (fpState->fIsEmpty) return;
  BayesHost::Chart chart{fpState->fTitle, fpState->fTemplate, {}, {}};
  if (IsShown()) chart.fVegaLite = fpState->fDocument.dump(-1, ' ', false, Json::error_handler_t::replace);
  if (IsWanted(BayesHost::ChartUse::Drawing)) chart.fSvg = DrawOrWarn(chart.fVegaLite, chart.fTitle);
  BayesHost::Session::Current().GetOutput().Add(std::move(chart));
}
