// Where charts get their templates, style and texts from.
#include <array>
#include <fstream>
#include <iterator>

#include "host/output/HostKeys.h"
#include "host/output/SharePath.h"
#include "host/output/StringTable.h"
#include "host/session/Session.h"
#include "platform/host/Charts.h"

namespace {

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
}

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

// The user's own style first.
std::string OTemplate::Get() {
  const std::string& own = BayesHost::Session::Current().GetOptions().fChartStyle;
  return own.empty() ? (BayesHost::GetSharePath() / "charts" / "style.xml").string() : own;
}

std::string STemplate::Get() {
  return (BayesHost::GetSharePath() / "charts").string();
}

// Every chart of a run fetches the same files.
std::string FetchFile::fetch(const std::string& path, bool asText, bool required) {
  BayesHost::Session& session = BayesHost::Session::Current();
  const auto [known, isNew] = session.GetFileTexts().try_emplace(path);
  if (isNew) known->second = ReadFile(path);
  if (known->second.empty() && required)
    session.StoreError(BayesHost::ShowKey(BayesHost::kHostChartFile, {path}).fText);
  std::string text = known->second;
  if (asText) ReplaceAll(text, "\r\n", "\n");
  return text;
}

// The references of markup stand in keys that were made for a template in markup.
ChartString XUtility::ChartStringFromOLANG(const std::string& key,
                                           const std::vector<ChartString>& arguments) {
  constexpr std::array<std::pair<std::string_view, std::string_view>, 3> kReferences{
      {{"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}}};
  std::string pattern = BayesHost::StringTable::English().Find(key);
  for (const auto& [reference, character] : kReferences) ReplaceAll(pattern, reference, character);
  BayesHost::Arguments texts;
  for (const ChartString& argument : arguments) texts.emplace_back(argument.GetText());
  return ChartString(BayesHost::FillPlaceholders(pattern, texts));
}

ChartString XUtility::ChartStringFromLocalCodePage(const std::string& text) {
  return ChartString(text);
}
