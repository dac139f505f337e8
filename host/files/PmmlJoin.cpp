#include "host/files/PmmlJoin.h"

#include <fmt/format.h>

#include <algorithm>
#include <ostream>
#include <pugixml.hpp>
#include <set>
#include <sstream>

#include "platform/component/Common.h"

namespace BayesHost {

namespace {

constexpr const char* kModel = "GeneralRegressionModel";
constexpr const char* kIndent = " ";

void Set(pugi::xml_node node, const char* attribute, const std::string& text) {
  node.append_attribute(attribute) = text.c_str();
}

std::string ToText(const OBS& value) {
  return value.IsString() ? value.GetString() : fmt::format("{}", value.GetNumber());
}

bool IsMissing(const OBS& value) {
  return value.IsString() ? value.GetString().empty() : value.GetNumber() == MCCommon_850::MCMV::Missing();
}

pugi::xml_node FindNamed(pugi::xml_node parent, const char* child, const std::string& name) {
  return parent.find_child_by_attribute(child, "name", name.c_str());
}

bool IsValid(pugi::xml_node value) {
  return std::string(value.attribute("property").as_string("valid")) == "valid";
}

void AddPredicate(pugi::xml_node parent, const SplitField& field, const OBS& value) {
  pugi::xml_node predicate = parent.append_child("SimplePredicate");
  Set(predicate, "field", field.fName);
  Set(predicate, "operator", IsMissing(value) ? "isMissing" : "equal");
  if (!IsMissing(value)) Set(predicate, "value", ToText(value));
}

void AddPredicates(pugi::xml_node segment, const std::vector<SplitField>& fields,
                   const std::vector<const OBS*>& values) {
  pugi::xml_node parent = segment;
  if (fields.size() > 1) {
    parent = segment.append_child("CompoundPredicate");
    Set(parent, "booleanOperator", "and");
  }
  for (std::size_t i = 0; i < fields.size(); ++i) AddPredicate(parent, fields[i], *values[i]);
}

std::string MakeFreeName(pugi::xml_node dictionary, const std::string& name) {
  std::string free = name + "_of_split";
  while (FindNamed(dictionary, "DataField", free)) free += '_';
  return free;
}

// Gives each value of the field that the split has to itself, and nothing to any other.
void AddLevelMap(pugi::xml_node transformations, pugi::xml_node field, const std::string& name) {
  pugi::xml_node derived = transformations.append_child("DerivedField");
  Set(derived, "name", name);
  Set(derived, "optype", "categorical");
  Set(derived, "dataType", field.attribute("dataType").value());
  pugi::xml_node map = derived.append_child("MapValues");
  Set(map, "outputColumn", "level");
  Set(map, "dataType", field.attribute("dataType").value());
  pugi::xml_node pair = map.append_child("FieldColumnPair");
  Set(pair, "field", field.attribute("name").value());
  Set(pair, "column", "value");
  pugi::xml_node table = map.append_child("InlineTable");
  for (const pugi::xml_node value : field.children("Value")) {
    if (!IsValid(value)) continue;
    pugi::xml_node row = table.append_child("row");
    for (const char* column : {"value", "level"}) {
      row.append_child(column).text().set(value.attribute("value").value());
    }
  }
}

// A level of another split is valid in the joined dictionary but no level of this model, which then has no
// prediction.
void MapLevels(pugi::xml_node dictionary, pugi::xml_node model) {
  if (!model.child("FactorList").child("Predictor")) return;
  pugi::xml_node transformations =
      model.insert_child_after("LocalTransformations", model.child("MiningSchema"));
  for (const pugi::xml_node predictor : model.child("FactorList").children("Predictor")) {
    const std::string field = predictor.attribute("name").value();
    const std::string name = MakeFreeName(dictionary, field);
    AddLevelMap(transformations, FindNamed(dictionary, "DataField", field), name);
    predictor.attribute("name") = name.c_str();
    for (const pugi::xml_node cell : model.child("PPMatrix").children("PPCell")) {
      if (field == cell.attribute("predictorName").value()) cell.attribute("predictorName") = name.c_str();
    }
  }
}

}  // namespace

struct PmmlJoin::Fields {
  pugi::xml_document fDocument;
  pugi::xml_node fHeader = fDocument.append_child("Header");
  pugi::xml_node fDictionary = fDocument.append_child("DataDictionary");
  pugi::xml_node fSchema = fDocument.append_child("MiningSchema");
  std::set<std::string> fKnown;  // values by field and property

  void Take(pugi::xml_node root);
  void TakeField(pugi::xml_node field);
  void AddSplitField(const SplitField& field);
};

void PmmlJoin::Fields::Take(pugi::xml_node root) {
  if (!fHeader.first_child()) {
    for (const pugi::xml_node child : root.child("Header").children()) fHeader.append_copy(child);
    Set(fHeader, "description", root.child("Header").attribute("description").value());
  }
  for (const pugi::xml_node field : root.child("DataDictionary").children("DataField")) TakeField(field);
  for (const pugi::xml_node field : root.child(kModel).child("MiningSchema").children("MiningField")) {
    if (!FindNamed(fSchema, "MiningField", field.attribute("name").value())) fSchema.append_copy(field);
  }
}

void PmmlJoin::Fields::TakeField(pugi::xml_node field) {
  const std::string name = field.attribute("name").value();
  pugi::xml_node known = FindNamed(fDictionary, "DataField", name);
  if (!known) {
    known = fDictionary.append_copy(field);
    known.remove_children();
  }
  for (const pugi::xml_node value : field.children("Value")) {
    const std::string key =
        name + '\n' + value.attribute("property").value() + '\n' + value.attribute("value").value();
    if (fKnown.insert(key).second) known.append_copy(value);
  }
}

void PmmlJoin::Fields::AddSplitField(const SplitField& field) {
  if (FindNamed(fDictionary, "DataField", field.fName)) return;
  pugi::xml_node entry = fDictionary.append_child("DataField");
  Set(entry, "name", field.fName);
  if (!field.fLabel.empty()) Set(entry, "displayName", field.fLabel);
  Set(entry, "optype", "categorical");
  Set(entry, "dataType", field.fIsString ? "string" : "double");
  for (const auto& [value, label] : field.fvValues) {
    pugi::xml_node node = entry.append_child("Value");
    Set(node, "value", ToText(value));
    if (!label.empty()) Set(node, "displayValue", label);
  }
  pugi::xml_node used = fSchema.append_child("MiningField");
  Set(used, "name", field.fName);
  Set(used, "usageType", "active");
}

PmmlJoin::PmmlJoin(std::vector<SplitField> fields)
    : fvSplitFields(std::move(fields)), fpFields(std::make_unique<Fields>()) {}
PmmlJoin::~PmmlJoin() = default;

bool PmmlJoin::Add(const std::string& document, const std::vector<const OBS*>& splitValues) {
  pugi::xml_document split;
  const bool whole = split.load_string(document.c_str());
  const pugi::xml_node root = split.child("PMML");
  if (!whole || !root) return false;
  pugi::xml_node model = root.child(kModel);
  if (!model) return true;
  fpFields->Take(root);
  MapLevels(root.child("DataDictionary"), model);
  pugi::xml_document joined;
  pugi::xml_node segment = joined.append_child("Segment");
  Set(segment, "id", std::to_string(++fSegments));
  AddPredicates(segment, fvSplitFields, splitValues);
  segment.append_copy(model);
  std::ostringstream text;
  segment.print(text, kIndent, pugi::format_indent | pugi::format_no_declaration, pugi::encoding_utf8, 3);
  Spool(text.str());
  return true;
}

void PmmlJoin::Spool(const std::string& text) {
  fModels.Write(fBytes, text.data(), text.size());
  fBytes += text.size();
}

void PmmlJoin::Write(std::ostream& stream) {
  for (const SplitField& field : fvSplitFields) fpFields->AddSplitField(field);
  const auto print = [&](pugi::xml_node node, unsigned depth) {
    node.print(stream, kIndent, pugi::format_indent, pugi::encoding_utf8, depth);
  };
  stream << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<PMML xmlns=\"http://www.dmg.org/PMML-4_4\" version=\"4.4\">\n";
  print(fpFields->fHeader, 1);
  print(fpFields->fDictionary, 1);
  stream << " <MiningModel functionName=\"regression\" algorithmName=\"One model for each split\">\n";
  print(fpFields->fSchema, 2);
  stream << "  <Segmentation multipleModelMethod=\"selectFirst\">\n";
  std::string buffer(std::size_t{1} << 16, '\0');
  for (std::uint64_t done = 0; done < fBytes; done += buffer.size()) {
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(buffer.size(), fBytes - done));
    fModels.Read(done, buffer.data(), count);
    stream.write(buffer.data(), static_cast<std::streamsize>(count));
  }
  stream << "  </Segmentation>\n </MiningModel>\n</PMML>\n";
}

}  // namespace BayesHost
