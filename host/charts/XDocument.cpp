#include <nlohmann/json.hpp>

#include "host/charts/ChartData.h"
#include "host/charts/SvgChart.h"
#include "host/output/CommandOutput.h"
#include "host/output/HostKeys.h"
#include "host/output/NumberFormat.h"
#include "host/output/StringTable.h"
#include "host/session/Session.h"

using Json = nlohmann::ordered_json;

// The document itself is made when it is sent, and only where it is shown.
struct XDocument::State {
  std::string fText;  // empty: there is nothing to send
  std::string fProcedure;
  bool fNamesLanguage = false;
  std::string fTitle;
  std::string fTemplate;
  std::string fDataSource;
  Json fRows;

  Json MakeDocument();  // takes the rows
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

Json XDocument::State::MakeDocument() {
  Json document = Json::parse(fText);
  if (!fProcedure.empty()) document["usermeta"]["procedure"] = fProcedure;
  if (fNamesLanguage) document["usermeta"]["language"] = kLanguage;
  if (!fTemplate.empty()) document["usermeta"]["template"] = fTemplate;
  if (!fTitle.empty()) document["description"] = fTitle;
  if (!fDataSource.empty()) document["datasets"][fDataSource] = std::move(fRows);
  return document;
}

bool XDocument::IsShown() {
  return IsWanted(BayesHost::ChartUse::Document);
}

XDocument::XDocument(const std::string& text) : fpState(new State) {
  fpState->fText = text;
}
XDocument::~XDocument() = default;

void XDocument::setEditor(const std::string& procedure) {
  fpState->fProcedure = procedure;
}

void XDocument::setLanguage() {
  fpState->fNamesLanguage = true;
}

void XDocument::SetDescription(const ChartString& title) {
  fpState->fTitle = title.GetText();
}

void XDocument::SetChartData(const VarDataProcessor& data) {
  if (!IsShown()) return;
  fpState->fDataSource = data.GetState().fDataSource;
  fpState->fRows = RowsOf(data.GetState());
}

void XDocument::applyCTemplate(const std::string& name) {
  fpState->fTemplate = name;
}

void XDocument::SendChart() {
  if (fpState->fText.empty()) return;
  BayesHost::Chart chart{fpState->fTitle, fpState->fTemplate, {}, {}};
  if (IsShown()) {
    chart.fVegaLite = fpState->MakeDocument().dump(-1, ' ', false, Json::error_handler_t::replace);
  }
  if (IsWanted(BayesHost::ChartUse::Drawing)) chart.fSvg = DrawOrWarn(chart.fVegaLite, chart.fTitle);
  BayesHost::Session::Current().GetOutput().Add(std::move(chart));
}
