#include "host/data/Dictionary.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "host/data/CsvCell.h"
#include "host/data/DataError.h"
#include "host/session/Session.h"

namespace BayesHost {

namespace {

using Json = nlohmann::json;
using Level = VariableState::Level;
using LabelledValues = std::vector<std::pair<OBS, std::string>>;

constexpr int kMostDecimals = 15;

struct TypeRow {
  std::string_view fName;
  Dictionary::Type fType;
};

constexpr std::array kTypes = {
    TypeRow{"number", Dictionary::Type::Number},  TypeRow{"integer", Dictionary::Type::Number},
    TypeRow{"year", Dictionary::Type::Number},    TypeRow{"boolean", Dictionary::Type::Boolean},
    TypeRow{"string", Dictionary::Type::Text},    TypeRow{"date", Dictionary::Type::Text},
    TypeRow{"time", Dictionary::Type::Text},      TypeRow{"datetime", Dictionary::Type::Text},
    TypeRow{"yearmonth", Dictionary::Type::Text}, TypeRow{"duration", Dictionary::Type::Text},
    TypeRow{"any", Dictionary::Type::AsFound},
};

// Something that doesn't fit, told without the place: the caller knows it.
struct Misfit {
  std::string fText;
};

std::string TakeString(const Json& object, const char* key) {
  const auto found = object.find(key);
  if (found == object.end()) return {};
  if (!found->is_string()) throw Misfit{fmt::format("\"{}\" is not a text. Write it in quotes.", key)};
  return found->get<std::string>();
}

OBS TakeValue(const Json& value) {
  if (value.is_string()) return OBS(value.get<std::string>());
  if (value.is_number()) return OBS(value.get<double>());
  if (value.is_boolean()) return OBS(value.get<bool>() ? 1.0 : 0.0);
  throw Misfit{fmt::format("{} is neither a number nor a text.", value.dump())};
}

// Both plain values and {"value": v, "label": "l"}.
LabelledValues TakeValues(const Json& object, const char* key) {
  LabelledValues values;
  const auto found = object.find(key);
  if (found == object.end()) return values;
  if (!found->is_array()) throw Misfit{fmt::format("\"{}\" is not a list. Write it in brackets.", key)};
  for (const Json& entry : *found) {
    if (!entry.is_object()) {
      values.emplace_back(TakeValue(entry), "");
      continue;
    }
    if (!entry.contains("value")) throw Misfit{fmt::format(R"(An entry of "{}" has no "value".)", key)};
    values.emplace_back(TakeValue(entry["value"]), TakeString(entry, "label"));
  }
  return values;
}

void TakeType(const Json& json, Dictionary::Field& field) {
  field.fTypeName = TakeString(json, "type");
  if (field.fTypeName.empty()) return;
  const auto known = std::find_if(kTypes.begin(), kTypes.end(),
                                  [&](const TypeRow& row) { return row.fName == field.fTypeName; });
  if (known == kTypes.end()) {
    throw Misfit{fmt::format(
        "The type \"{}\" is not known. Use number, integer, boolean, string, or one of the date and time "
        "types.",
        field.fTypeName)};
  }
  field.fType = known->fType;
}

void TakeDecimals(const Json& json, Dictionary::Field& field) {
  if (field.fTypeName == "integer" || field.fTypeName == "year") field.fDecimals = 0;
  const auto found = json.find("decimals");
  if (found == json.end()) return;
  const bool fits = found->is_number_unsigned() && found->get<unsigned>() <= kMostDecimals;
  if (!fits) throw Misfit{fmt::format("\"decimals\" is not a whole number from 0 to {}.", kMostDecimals)};
  field.fDecimals = found->get<int>();
}

void TakeLevel(const Json& json, Dictionary::Field& field) {
  if (field.fvCategories.empty()) return;
  const auto ordered = json.find("categoriesOrdered");
  field.fLevel = ordered != json.end() && *ordered == true ? Level::Ordinal : Level::Nominal;
}

void TakeField(const Json& json, const LabelledValues& missing, Dictionary::Field& field) {
  TakeType(json, field);
  TakeDecimals(json, field);
  field.fTitle = TakeString(json, "title");
  field.fvCategories = TakeValues(json, "categories");
  TakeLevel(json, field);
  field.fvMissing = json.contains("missingValues") ? TakeValues(json, "missingValues") : missing;
}

bool IsMissingWord(std::string_view text) {
  return ClassifyCell(text, '.') == CellKind::Missing;
}

}  // namespace

void Dictionary::Refuse(const std::string& field, const std::string& text) const {
  throw DataError({fFile.fName, 0, 0, {}}, field.empty() ? text : fmt::format("Field {}: {}", field, text));
}

// `byte`: where no JSON can go on as the text does.
void Dictionary::RefuseJson(const std::string& text, std::size_t byte) const {
  const std::size_t last = text.find_last_not_of(" \t\r\n", byte);
  if (last == std::string::npos) Refuse("", "The dictionary is empty. Expected {\"fields\": [...]}.");
  const SourcePlace place = FindPlace({fFile.fName, text, 0, text.size()}, last);
  throw DataError(
      {fFile.fName, static_cast<std::uint64_t>(place.fLine), 0, {}},
      fmt::format("This is not well-formed JSON: something is wrong at character {} of the line, or "
                  "just before. Correct it there.",
                  place.fColumn));
}

Dictionary::Dictionary(DataFile file) : fFile(std::move(file)) {
  CheckFile(fFile);
  std::ifstream stream(fFile.fPath, std::ios::binary);
  const std::string text(std::istreambuf_iterator<char>(stream), {});
  Field field;
  try {
    const Json json = Json::parse(text);
    if (!json.is_object() || !json.contains("fields") || !json["fields"].is_array())
      throw Misfit{"This is no table schema: it has no list \"fields\"."};
    const LabelledValues missing = TakeValues(json, "missingValues");
    for (const Json& entry : json["fields"]) {
      field = Field();
      field.fName = entry.is_object() ? TakeString(entry, "name") : "";
      if (field.fName.empty())
        throw Misfit{fmt::format(R"(Entry {} of "fields" has no "name".)", fFields.size() + 1)};
      TakeField(entry, missing, field);
      if (!fFields.emplace(field.fName, field).second) throw Misfit{"The field is described twice."};
    }
  } catch (const Json::parse_error& error) {
    RefuseJson(text, error.byte - 1);
  } catch (const Json::out_of_range&) {
    Refuse("", "A number is too large: the largest is about 1.8e308. Correct it.");
  } catch (const Misfit& misfit) {
    Refuse(field.fName, misfit.fText);
  }
}

// Reports and data may be JSON files as well.
std::optional<Dictionary> Dictionary::FindBeside(const DataFile& data) {
  const auto toJson = [](std::filesystem::path path) {
    if (path.extension() == ".gz") path.replace_extension();
    return path.replace_extension(".json");
  };
  const std::filesystem::path path = toJson(data.fPath);
  if (path == data.fPath || !std::filesystem::is_regular_file(path)) return std::nullopt;
  std::ifstream stream(path, std::ios::binary);
  const Json json = Json::parse(stream, nullptr, false);
  if (!json.is_discarded() && !(json.is_object() && json.contains("fields"))) return std::nullopt;
  return Dictionary({path, toJson(data.fName).string()});
}

const Dictionary::Field* Dictionary::Find(const std::string& variable) const {
  const auto found = fFields.find(variable);
  return found == fFields.end() ? nullptr : &found->second;
}

bool Dictionary::IsOf(const std::vector<std::string>& names) const {
  return !fFields.empty() && std::all_of(fFields.begin(), fFields.end(), [&](const auto& field) {
    return std::find(names.begin(), names.end(), field.first) != names.end();
  });
}

void Dictionary::CheckNames(const std::vector<std::string>& variables) const {
  for (const auto& [name, field] : fFields) {
    if (std::find(variables.begin(), variables.end(), name) != variables.end()) continue;
    Refuse(name, fmt::format("The data have no such variable; they have {}. Correct the name, or delete the "
                             "field.",
                             fmt::join(variables, ", ")));
  }
}

// A number may be written as a text, and the other way round.
OBS Dictionary::Convert(const Field& field, const OBS& value, bool toText) const {
  if (value.IsString() == toText) return value;
  if (toText) return OBS(fmt::format("{}", value.GetNumber()));
  const std::string& text = value.GetString();
  if (ClassifyCell(text, '.') != CellKind::Number)
    Refuse(field.fName,
           fmt::format("The category \"{}\" is not a number, but the variable is numeric.", text));
  return OBS(std::stod(text));
}

void Dictionary::AddMissing(const Field& field, VariableState& variable) const {
  for (const auto& [value, label] : field.fvMissing) {
    const bool isWord = value.IsString() && ClassifyCell(value.GetString(), '.') != CellKind::Number;
    if (isWord && (!variable.fIsString || IsMissingWord(value.GetString()))) continue;
    const OBS converted = Convert(field, value, variable.fIsString);
    variable.fvUserMissing.push_back(converted);
    if (!label.empty()) variable.fvValueLabels.emplace_back(converted, label);
  }
}

void Dictionary::Complete(VariableState& variable) const {
  const Field* const field = Find(variable.fName);
  if (field == nullptr) return;
  if (field->fType != Type::AsFound && (field->fType == Type::Text) != variable.fIsString) {
    Refuse(field->fName, fmt::format("The type is \"{}\", but the data file holds {}. Correct the type.",
                                     field->fTypeName, variable.fIsString ? "text" : "numbers"));
  }
  variable.fLabel = field->fTitle;
  if (field->fDecimals && !variable.fIsString)
    variable.fFormat.fDecimals = static_cast<std::uint8_t>(*field->fDecimals);
  if (field->fLevel) variable.fLevel = *field->fLevel;
  if (!field->fvCategories.empty()) variable.fvValueLabels.clear();
  for (const auto& [value, label] : field->fvCategories) {
    const OBS converted = Convert(*field, value, variable.fIsString);
    if (!label.empty()) variable.fvValueLabels.emplace_back(converted, label);
  }
  AddMissing(*field, variable);
}

std::vector<std::string> Dictionary::ListMissingWords(const std::string& variable) const {
  std::vector<std::string> words;
  const Field* const field = Find(variable);
  if (field == nullptr) return words;
  for (const auto& [value, label] : field->fvMissing) {
    if (!value.IsString() || ClassifyCell(value.GetString(), '.') == CellKind::Number) continue;
    if (!IsMissingWord(value.GetString())) words.push_back(value.GetString());
  }
  return words;
}

}  // namespace BayesHost
