#include "host/output/JsonReport.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/output/NumberFormat.h"
#include "host/output/TableLayout.h"

namespace BayesHost {
namespace {

using Json = nlohmann::ordered_json;

Json ItemsOf(const ItemList& items);

Json NumberOf(double value) {
  return IsMissing(value) ? Json(nullptr) : Json(value);
}

Json ValueOf(const DataValue& value) {
  return std::holds_alternative<double>(value) ? NumberOf(std::get<double>(value))
                                               : Json(std::get<std::string>(value));
}

template <typename T>
Json OptionalOf(const std::optional<T>& value) {
  return value ? Json(*value) : Json(nullptr);
}

Json LettersOf(const TableLayout& layout, std::span<const int> notes) {
  Json letters = Json::array();
  for (const int note : layout.GetNoteOrder())
    if (std::find(notes.begin(), notes.end(), note) != notes.end()) letters.push_back(layout.GetLetter(note));
  return letters;
}

Json FootnotesOf(const PivotTable& table, const TableLayout& layout) {
  Json footnotes = Json::array();
  for (const int note : layout.GetNoteOrder()) {
    const Footnote& footnote = table.GetFootnotes()[static_cast<std::size_t>(note)];
    Json entry{
        {"id", layout.GetLetter(note)}, {"key", footnote.GetText().fKey}, {"text", footnote.GetText().fText}};
    if (footnote.fOnTable) entry["table"] = true;
    footnotes.push_back(std::move(entry));
  }
  return footnotes;
}

Json CategoriesOf(const Dimension& dimension, const std::vector<int>& indices, const TableLayout& layout) {
  Json categories = Json::array();
  for (const int index : indices) {
    const Category& category = dimension.fvCategories[static_cast<std::size_t>(index)];
    Json entry{{"text", category.GetLabel().fText}};
    if (!category.GetLabel().fVariable.empty()) entry["variable"] = category.GetLabel().fVariable;
    if (category.GetLabel().fValue) entry["value"] = ValueOf(*category.GetLabel().fValue);
    if (!category.fvNotes.empty()) entry["footnotes"] = LettersOf(layout, category.fvNotes);
    if (category.fIsGroup) entry["categories"] = CategoriesOf(dimension, category.fvChildren, layout);
    categories.push_back(std::move(entry));
  }
  return categories;
}

Json DimensionsOf(const PivotTable& table, const TableLayout& layout) {
  static constexpr const char* kRoles[] = {"row", "column", "layer"};
  Json dimensions = Json::array();
  for (const Dimension& dimension : table.GetDimensions())
    dimensions.push_back({{"label", dimension.GetLabel().fText},
                          {"role", kRoles[static_cast<int>(dimension.fRole)]},
                          {"categories", CategoriesOf(dimension, dimension.fvTop, layout)}});
  return dimensions;
}

Json CellOf(const TableLayout& layout, const TableLayout::Line& layer, const TableLayout::Line& row,
            const TableLayout::Line& column, const Cell& cell) {
  Json at = Json::array();
  const PivotTable::Address& address = layout.GetAddress(layer, row, column);
  for (std::size_t i = 0; i < address.size(); ++i)
    at.push_back(layout.GetLeafIndex(static_cast<int>(i), address[i]));
  Json entry{{"at", std::move(at)},
             {"row", layout.GetLabels(layout.GetRows(), row)},
             {"column", layout.GetLabels(layout.GetColumns(), column)},
             {"layer", layout.GetLabels(layout.GetLayers(), layer)}};
  if (!cell.fIsWritten || cell.fNumber)
    entry["value"] = cell.fNumber ? NumberOf(*cell.fNumber) : Json(nullptr);
  entry["text"] = cell.fText;
  entry["footnotes"] = LettersOf(layout, cell.fNotes);
  return entry;
}

Json CellsOf(const TableLayout& layout) {
  Json cells = Json::array();
  for (const auto& layer : layout.GetLayers().fvLines)
    for (const auto& row : layout.GetRows().fvLines)
      for (const auto& column : layout.GetColumns().fvLines)
        if (const auto cell = layout.FindCell(layer, row, column))
          cells.push_back(CellOf(layout, layer, row, column, *cell));
  return cells;
}

Json ContentOf(const Notes& notes) {
  Json entries = Json::array();
  for (const NoteEntry& entry : notes.fvEntries)
    entries.push_back(
        {{"section", entry.fSection}, {"label", entry.fLabel.fText}, {"text", entry.fText.fText}});
  return {{"type", "notes"}, {"entries", std::move(entries)}};
}

Json ContentOf(const Message& message) {
  Json content{{"type", "message"},
               {"level", message.fLevel == Message::Level::Error ? "error" : "warning"},
               {"key", message.fText.fKey},
               {"text", message.fText.fText},
               {"arguments", message.fText.fvArguments}};
  if (message.fLine > 0) {
    content["line"] = message.fLine;
    content["column"] = message.fColumn;
  }
  return content;
}

Json ContentOf(const Heading& heading) {
  return {{"type", "heading"}, {"text", heading.fText.fText}, {"items", ItemsOf(heading.fItems)}};
}

Json ContentOf(const std::shared_ptr<PivotTable>& table) {
  const TableLayout layout(*table);
  Json content{{"type", "table"}, {"title", table->GetTitle().fText}, {"subtype", table->GetSubtype().fText}};
  if (table->GetCaption()) content["caption"] = table->GetCaption()->fText;
  content["footnotes"] = FootnotesOf(*table, layout);
  content["dimensions"] = DimensionsOf(*table, layout);
  content["cells"] = CellsOf(layout);
  return content;
}

Json ContentOf(const Chart& chart) {
  return {{"type", "chart"},
          {"title", chart.fTitle},
          {"template", chart.fTemplate},
          {"vegaLite", Json::parse(chart.fVegaLite)}};
}

Json ItemOf(const Item& item) {
  Json content = std::visit([](const auto& kind) { return ContentOf(kind); }, item.fContent);
  if (item.GetSplit().empty()) return content;
  Json split = Json::array();
  for (const SplitValue& value : item.GetSplit())
    split.push_back({{"variable", value.fVariable}, {"value", ValueOf(value.fValue)}});
  content["split"] = std::move(split);
  return content;
}

Json ItemsOf(const ItemList& items) {
  Json array = Json::array();
  for (const Item& item : items) array.push_back(ItemOf(item));
  return array;
}

Json RunOf(const ReportHead& head) {
  Json run{{"program", head.fProgram}, {"version", head.fVersion}, {"seed", OptionalOf(head.fSeed)}};
  Json data;
  if (head.fData) {
    data = {{"file", head.fData->fFile},
            {"bytes", head.fData->fBytes},
            {"cases", head.fData->fCases},
            {"variables", head.fData->fVariables}};
    if (head.fData->fFingerprint) data["fingerprint"] = *head.fData->fFingerprint;
  }
  run["data"] = std::move(data);
  return run;
}

// Without its items.
Json CommandOf(const CommandOutput& command) {
  return {{"command", command.GetName()},
          {"text", command.GetText()},
          {"line", command.GetLine()},
          {"status", command.IsFailed() ? "failed" : "ok"},
          {"seed", OptionalOf(command.GetSeed())}};
}

// What is left of `room` beside a lower bound of the text's length; negative once it can't fit.
std::ptrdiff_t RoomBeside(const Json& json, std::ptrdiff_t room) {
  constexpr std::ptrdiff_t kQuotes = 2;
  if (json.is_string()) return room - kQuotes - std::ssize(json.get_ref<const std::string&>());
  if (!json.is_structured()) return room - 1;
  room -= 1;  // brackets and commas are at least one more than the elements
  for (const auto& element : json.items()) {
    if (room < 0) break;
    if (json.is_object()) room -= kQuotes + std::ssize(element.key());
    room = RoomBeside(element.value(), room - 1);
  }
  return room;
}

constexpr std::size_t kLineLength = 160;

void Print(const Json& json, std::size_t indent, std::ostream& out);

// The members of an object or array that fills several lines, one after the other.
class Lines {
 public:
  // `brackets`: the opening and the closing one.
  Lines(const char* brackets, std::size_t indent, std::ostream& out)
      : fOut(out), fIndent(indent), fClosing(brackets[1]) {
    fOut << brackets[0];
  }
  // The caller prints the member, from this place on.
  std::ostream& Next() {
    fOut << fSeparator << '\n' << std::string(fIndent + 1, ' ');
    fSeparator = ",";
    return fOut;
  }
  std::ostream& Next(const std::string& key) { return Next() << Json(key).dump() << ':'; }
  void Close() { fOut << '\n' << std::string(fIndent, ' ') << fClosing; }

 private:
  std::ostream& fOut;
  std::size_t fIndent;
  char fClosing;
  const char* fSeparator = "";
};

// One line for whatever fits on it, so that a report can be read and compared line by line.
void Print(const Json& json, std::size_t indent, std::ostream& out) {
  if (!json.is_structured() || RoomBeside(json, kLineLength) >= 0) {
    const std::string line = json.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (!json.is_structured() || line.size() + indent <= kLineLength) {
      out << line;
      return;
    }
  }
  Lines lines(json.is_object() ? "{}" : "[]", indent, out);
  for (const auto& [key, value] : json.items()) {
    Print(value, indent + 1, json.is_object() ? lines.Next(key) : lines.Next());
  }
  lines.Close();
}

// The first items, as far as a line can hold them and one more.
Json FirstItems(const ItemList& items) {
  Json first = Json::array();
  for (const Item& item : items) {
    if (RoomBeside(first, kLineLength) < 0) break;
    first.push_back(ItemOf(item));
  }
  return first;
}

bool IsShort(const CommandOutput& command) {
  return RoomBeside(FirstItems(command.GetItems()), kLineLength) >= 0;
}

// Item by item, so that a long report isn't held a second time.
void Print(const CommandOutput& command, std::size_t indent, std::ostream& out) {
  Json head = CommandOf(command);
  if (IsShort(command)) {
    head["items"] = ItemsOf(command.GetItems());
    Print(head, indent, out);
    return;
  }
  Lines members("{}", indent, out);
  for (const auto& [key, value] : head.items()) Print(value, indent + 1, members.Next(key));
  Lines items("[]", indent + 1, members.Next("items"));
  for (const Item& item : command.GetItems()) Print(ItemOf(item), indent + 2, items.Next());
  items.Close();
  members.Close();
}

void PrintCommands(const Report& report, std::size_t indent, std::ostream& out) {
  const auto isShort = [](const auto& command) { return IsShort(*command); };
  if (std::all_of(report.fvCommands.begin(), report.fvCommands.end(), isShort)) {
    Json commands = Json::array();
    for (const auto& command : report.fvCommands) {
      commands.push_back(CommandOf(*command));
      commands.back()["items"] = ItemsOf(command->GetItems());
    }
    Print(commands, indent, out);
    return;
  }
  Lines commands("[]", indent, out);
  for (const auto& command : report.fvCommands) Print(*command, indent + 1, commands.Next());
  commands.Close();
}

}  // namespace

void JsonReport::Write(const Report& report, std::ostream& out) {
  Lines members("{}", 0, out);
  members.Next("schema") << "\"bayes-report/1\"";
  Print(RunOf(report.fHead), 1, members.Next("run"));
  PrintCommands(report, 1, members.Next("commands"));
  members.Close();
  out << '\n';
}

}  // namespace BayesHost
