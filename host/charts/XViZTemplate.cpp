#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "host/output/HostKeys.h"
#include "host/output/StringTable.h"
#include "host/session/Session.h"
#include "platform/host/Charts.h"

using Json = nlohmann::ordered_json;

struct XViZTemplate::State {
  std::string fFolder;
  std::string fName;
  std::string fText;
  std::set<std::string> fSeries;
  std::vector<std::pair<std::string, std::string>> fvLabels;
};

namespace {

constexpr const char* kCompositions[] = {"layer", "vconcat", "hconcat"};

constexpr const char* kNoDocument = "{}";

// A run fills few templates, each for every variable and split.
const Json& ParseTemplate(const std::string& text) {
  thread_local std::map<std::string, Json> parsed;
  const auto [known, isNew] = parsed.try_emplace(text);
  if (isNew) known->second = Json::parse(text, nullptr, false);
  return known->second;
}

using Labels = std::vector<std::pair<std::string, std::string>>;

// One walk along the text: what a label brings in is never looked at again. Case matters.
std::string FillLabels(const std::string& text, const Labels& labels) {
  std::string filled;
  for (std::size_t at = 0; at < text.size();) {
    const auto label = std::find_if(labels.begin(), labels.end(), [&](const auto& candidate) {
      return text.compare(at, candidate.first.size(), candidate.first) == 0;
    });
    filled += label == labels.end() ? text.substr(at, 1) : label->second;
    at += label == labels.end() ? 1 : label->first.size();
  }
  return filled;
}

void FillLabels(Json& json, const Labels& labels) {
  if (json.is_string()) json = FillLabels(json.get<std::string>(), labels);
  if (json.is_structured())
    for (Json& child : json) FillLabels(child, labels);
}

bool HasAllSeries(const Json& spec, const std::set<std::string>& series) {
  const auto encoding = spec.find("encoding");
  if (encoding == spec.end() || !encoding->is_object()) return true;
  return std::all_of(encoding->begin(), encoding->end(), [&](const Json& channel) {
    return !channel.is_object() || !channel.contains("field") ||
           series.count(channel.value("field", "")) != 0;
  });
}

// The charts or panels that a chart is composed of; null when it is one itself.
template <class AnyJson>
AnyJson* FindParts(AnyJson& spec) {
  for (const char* composition : kCompositions) {
    const auto found = spec.find(composition);
    if (found != spec.end() && found->is_array()) return &*found;
  }
  return nullptr;
}

// False: nothing of the chart or panel is left when series that it doesn't have are left out.
bool HasCurves(const Json& spec, const std::set<std::string>& series) {
  if (!spec.is_object()) return true;
  if (!HasAllSeries(spec, series)) return false;
  const Json* const parts = FindParts(spec);
  return parts == nullptr ||
         std::any_of(parts->begin(), parts->end(), [&](const Json& part) { return HasCurves(part, series); });
}

void KeepSeries(Json& spec, const std::set<std::string>& series) {
  Json* const parts = spec.is_object() ? FindParts(spec) : nullptr;
  if (parts == nullptr) return;
  Json kept = Json::array();
  for (Json& part : *parts) {
    if (!HasCurves(part, series)) continue;
    KeepSeries(part, series);
    kept.push_back(std::move(part));
  }
  *parts = std::move(kept);
}

}  // namespace

XViZTemplate::XViZTemplate(std::string folder) : fpState(new State{std::move(folder), {}, {}, {}, {}}) {}
XViZTemplate::~XViZTemplate() = default;

void XViZTemplate::setTemplateInternalName(const std::string& name) {
  fpState->fName = name;
  fpState->fText = FetchFile::fetch(fpState->fFolder + "/" + name + ".vl.json", true, true);
}

const std::string& XViZTemplate::getTemplateText() const {
  return fpState->fText;
}

void XViZTemplate::setTemplateText(const std::string& text) {
  fpState->fText = text;
}

void XViZTemplate::addVariable(const std::string& series) {
  fpState->fSeries.insert(series);
}

void XViZTemplate::addLabel(const std::string& placeholder, const ChartString& text) {
  fpState->fvLabels.emplace_back(placeholder, text.GetText());
}

std::string XViZTemplate::GetFilledText() const {
  if (fpState->fText.empty()) return "";
  const Json& parsed = ParseTemplate(fpState->fText);
  if (!parsed.is_object()) {
    BayesHost::Session::Current().StoreError(
        BayesHost::ShowKey(BayesHost::kHostChartTemplate, {fpState->fName}).fText);
    return "";
  }
  if (!HasCurves(parsed, fpState->fSeries)) return "";
  if (!XDocument::IsShown()) return kNoDocument;
  Json document = parsed;
  KeepSeries(document, fpState->fSeries);
  FillLabels(document, fpState->fvLabels);
  return document.dump(-1, ' ', false, Json::error_handler_t::replace);
}
