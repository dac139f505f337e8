#include "host/output/JsonReport.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/output/JsonWriter.h"
#include "host/output/NumberFormat.h"
#include "host/output/TableLayout.h"

namespace BayesHost {
namespace {

using Json = nlohmann::ordered_json;

void WriteItems(const ItemList& items, JsonWriter& json);

void WriteNumber(std::optional<double> value, JsonWriter& json) {
  if (!value || IsMissing(*value))
    json.Null();
  else
    json.Value(*value);
}

void WriteValue(const DataValue& value, JsonWriter& json) {
  if (const double* const number = std::get_if<double>(&value))
    WriteNumber(*number, json);
  else
    json.Value(std::get<std::string>(value));
}

void WriteSeed(const std::optional<std::uint64_t>& seed, JsonWriter& json) {
  json.Key("seed");
  if (seed)
    json.Value(*seed);
  else
    json.Null();
}

void WriteLetters(const TableLayout& layout, std::span<const int> notes, JsonWriter& json) {
  json.Key("footnotes");
  json.BeginArray();
  for (const int note : layout.GetNoteOrder())
    if (std::find(notes.begin(), notes.end(), note) != notes.end()) json.Value(layout.GetLetter(note));
  json.End();
}

void WriteFootnotes(const PivotTable& table, const TableLayout& layout, JsonWriter& json) {
  json.Key("footnotes");
  json.BeginArray();
  for (const int note : layout.GetNoteOrder()) {
    const Footnote& footnote = table.GetFootnotes()[static_cast<std::size_t>(note)];
    json.BeginObject();
    json.Member("id", layout.GetLetter(note));
    json.Member("key", footnote.GetText().fKey);
    json.Member("text", footnote.GetText().fText);
    if (footnote.fOnTable) json.Member("table", true);
    json.End();
  }
  json.End();
}

void WriteCategories(const Dimension& dimension, const std::vector<int>& indices, const TableLayout& layout,
                     JsonWriter& json) {
  json.Key("categories");
  json.BeginArray();
  for (const int index : indices) {
    const Category& category = dimension.fvCategories[static_cast<std::size_t>(index)];
    const ShownText& label = category.GetLabel();
    json.BeginObject();
    json.Member("text", label.fText);
    if (!label.fVariable.empty()) json.Member("variable", label.fVariable);
    if (label.fValue) {
      json.Key("value");
      WriteValue(*label.fValue, json);
    }
    if (!category.fvNotes.empty()) WriteLetters(layout, category.fvNotes, json);
    if (category.fIsGroup) WriteCategories(dimension, category.fvChildren, layout, json);
    json.End();
  }
  json.End();
}

void WriteDimensions(const PivotTable& table, const TableLayout& layout, JsonWriter& json) {
  static constexpr const char* kRoles[] = {"row", "column", "layer"};
  json.Key("dimensions");
  json.BeginArray();
  for (const Dimension& dimension : table.GetDimensions()) {
    json.BeginObject();
    json.Member("label", dimension.GetLabel().fText);
    json.Member("role", kRoles[static_cast<int>(dimension.fRole)]);
    WriteCategories(dimension, dimension.fvTop, layout, json);
    json.End();
  }
  json.End();
}

// A line of an axis and its labels: they are written with each cell of the line.
struct LabelledLine {
  const TableLayout::Line& fLine;
  std::vector<std::string> fvLabels;
};

std::vector<LabelledLine> LabelLines(const TableLayout& layout, const TableLayout::Axis& axis) {
  std::vector<LabelledLine> lines;
  for (const auto& line : axis.fvLines) lines.push_back({line, layout.GetLabels(axis, line)});
  return lines;
}

void WriteCell(const TableLayout& layout, const LabelledLine& layer, const LabelledLine& row,
               const LabelledLine& column, const Cell& cell, JsonWriter& json) {
  json.BeginObject();
  json.Key("at");
  json.BeginArray();
  int dimension = 0;
  for (const int category : layout.GetAddress(layer.fLine, row.fLine, column.fLine))
    json.Value(layout.GetLeafIndex(dimension++, category));
  json.End();
  json.Members("row", row.fvLabels);
  json.Members("column", column.fvLabels);
  json.Members("layer", layer.fvLabels);
  if (!cell.fIsWritten || cell.fNumber) {
    json.Key("value");
    WriteNumber(cell.fNumber, json);
  }
  json.Member("text", cell.fText);
  WriteLetters(layout, cell.fNotes, json);
  json.End();
}

void WriteCells(const TableLayout& layout, JsonWriter& json) {
  const auto layers = LabelLines(layout, layout.GetLayers());
  const auto rows = LabelLines(layout, layout.GetRows());
  const auto columns = LabelLines(layout, layout.GetColumns());
  json.Key("cells");
  json.BeginArray();
  for (const auto& layer : layers)
    for (const auto& row : rows)
      for (const auto& column : columns)
        if (const auto cell = layout.FindCell(layer.fLine, row.fLine, column.fLine))
          WriteCell(layout, layer, row, column, *cell, json);
  json.End();
}

void WriteContent(const Notes& notes, JsonWriter& json) {
  json.Member("type", "notes");
  json.Key("entries");
  json.BeginArray();
  for (const NoteEntry& entry : notes.fvEntries) {
    json.BeginObject();
    json.Member("section", entry.fSection);
    json.Member("label", entry.fLabel.fText);
    json.Member("text", entry.fText.fText);
    json.End();
  }
  json.End();
}

void WriteContent(const Message& message, JsonWriter& json) {
  json.Member("type", "message");
  json.Member("level", message.fLevel == Message::Level::Error ? "error" : "warning");
  json.Member("key", message.fText.fKey);
  json.Member("text", message.fText.fText);
  json.Members("arguments", message.fText.fvArguments);
  if (message.fLine == 0) return;
  json.Member("line", message.fLine);
  json.Member("column", message.fColumn);
}

void WriteContent(const Heading& heading, JsonWriter& json) {
  json.Member("type", "heading");
  json.Member("text", heading.fText.fText);
  WriteItems(heading.fItems, json);
}

void WriteContent(const std::shared_ptr<PivotTable>& table, JsonWriter& json) {
  const TableLayout layout(*table);
  json.Member("type", "table");
  json.Member("title", table->GetTitle().fText);
  json.Member("subtype", table->GetSubtype().fText);
  if (table->GetCaption()) json.Member("caption", table->GetCaption()->fText);
  WriteFootnotes(*table, layout, json);
  WriteDimensions(*table, layout, json);
  WriteCells(layout, json);
}

// A document of another maker, value by value.
void WriteTree(const Json& tree, JsonWriter& json) {
  switch (tree.type()) {
    case Json::value_t::object:
      json.BeginObject();
      for (const auto& [key, value] : tree.items()) {
        json.Key(key);
        WriteTree(value, json);
      }
      return json.End();
    case Json::value_t::array:
      json.BeginArray();
      for (const Json& element : tree) WriteTree(element, json);
      return json.End();
    case Json::value_t::string:
      return json.Value(tree.get_ref<const std::string&>());
    case Json::value_t::boolean:
      return json.Value(tree.get<bool>());
    case Json::value_t::number_float:
      return json.Value(tree.get<double>());
    case Json::value_t::number_integer:
      return json.Value(tree.get<std::int64_t>());
    case Json::value_t::number_unsigned:
      return json.Value(tree.get<std::uint64_t>());
    default:
      return json.Null();
  }
}

void WriteContent(const Chart& chart, JsonWriter& json) {
  json.Member("type", "chart");
  json.Member("title", chart.fTitle);
  json.Member("template", chart.fTemplate);
  json.Key("vegaLite");
  WriteTree(Json::parse(chart.fVegaLite), json);
}

void WriteSplit(const std::vector<SplitValue>& split, JsonWriter& json) {
  json.Key("split");
  json.BeginArray();
  for (const SplitValue& value : split) {
    json.BeginObject();
    json.Member("variable", value.fVariable);
    json.Key("value");
    WriteValue(value.fValue, json);
    json.End();
  }
  json.End();
}

void WriteItems(const ItemList& items, JsonWriter& json) {
  json.Key("items");
  json.BeginArray();
  for (const Item& item : items) {
    json.BeginObject();
    std::visit([&](const auto& content) { WriteContent(content, json); }, item.fContent);
    if (!item.GetSplit().empty()) WriteSplit(item.GetSplit(), json);
    json.End();
  }
  json.End();
}

void WriteRun(const ReportHead& head, JsonWriter& json) {
  json.Key("run");
  json.BeginObject();
  json.Member("program", head.fProgram);
  json.Member("version", head.fVersion);
  WriteSeed(head.fSeed, json);
  json.Key("data");
  if (head.fData) {
    json.BeginObject();
    json.Member("file", head.fData->fFile);
    json.Member("bytes", head.fData->fBytes);
    json.Member("cases", head.fData->fCases);
    json.Member("variables", head.fData->fVariables);
    if (head.fData->fFingerprint) json.Member("fingerprint", *head.fData->fFingerprint);
    json.End();
  } else {
    json.Null();
  }
  json.End();
}

void WriteCommand(const CommandOutput& command, JsonWriter& json) {
  json.BeginObject();
  json.Member("command", command.GetName());
  json.Member("text", command.GetText());
  json.Member("line", command.GetLine());
  json.Member("status", command.IsFailed() ? "failed" : "ok");
  WriteSeed(command.GetSeed(), json);
  WriteItems(command.GetItems(), json);
  json.End();
}

}  // namespace

void JsonReport::Write(const Report& report, std::ostream& out) {
  JsonWriter json(out);
  json.BeginObject();
  json.Member("schema", "bayes-report/1");
  WriteRun(report.fHead, json);
  json.Key("commands");
  json.BeginArray();
  for (const auto& command : report.fvCommands) WriteCommand(*command, json);
  json.End();
  json.End();
  out << '\n';
}

}  // namespace BayesHost
