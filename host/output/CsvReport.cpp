#include "host/output/CsvReport.h"

#include <fmt/format.h>

#include "host/output/NumberFormat.h"
#include "host/output/TableLayout.h"

namespace BayesHost {
namespace {

constexpr const char* kHeader = "command,name,split,table,layer,row,column,value,text,footnotes\n";

std::string JoinLabels(const std::vector<std::string>& labels) {
  std::string joined;
  for (const std::string& label : labels) joined += (joined.empty() ? "" : " > ") + label;
  return CsvReport::Field(joined);
}

std::string ValueOf(const Cell& cell) {
  return cell.fNumber && !IsMissing(*cell.fNumber) ? fmt::format("{}", *cell.fNumber) : "";
}

// A shown number needs no protection: it starts with a sign at most, and can't do anything.
std::string TextOf(const Cell& cell) {
  return cell.fNumber ? std::string(cell.fText) : CsvReport::Field(cell.fText);
}

class CsvWriter {
 public:
  explicit CsvWriter(std::ostream& out) : fOut(out) {}

  void WriteCommand(const CommandOutput& command) {
    fCommand = fmt::format("{},{}", ++fCount, CsvReport::Field(command.GetName()));
    WriteItems(command.GetItems());
  }

 private:
  void WriteItems(const ItemList& items) {
    for (const Item& item : items) {
      if (const auto* heading = std::get_if<Heading>(&item.fContent)) WriteItems(heading->fItems);
      if (const auto* table = std::get_if<std::shared_ptr<PivotTable>>(&item.fContent))
        WriteTable(**table, CsvReport::Field(ShowSplit(item.GetSplit())));
    }
  }

  void WriteTable(const PivotTable& table, const std::string& split) {
    const TableLayout layout(table);
    const std::string place = fCommand + "," + split + "," + CsvReport::Field(table.GetTitle().fText) + ",";
    for (const auto& layer : layout.GetLayers().fvLines)
      for (const auto& row : layout.GetRows().fvLines)
        for (const auto& column : layout.GetColumns().fvLines)
          if (const auto cell = layout.FindCell(layer, row, column))
            fOut << place << JoinLabels(layout.GetLabels(layout.GetLayers(), layer)) << ','
                 << JoinLabels(layout.GetLabels(layout.GetRows(), row)) << ','
                 << JoinLabels(layout.GetLabels(layout.GetColumns(), column)) << ',' << ValueOf(*cell) << ','
                 << TextOf(*cell) << ',' << NotesOf(table, *cell) << '\n';
  }

  static std::string NotesOf(const PivotTable& table, const Cell& cell) {
    std::string texts;
    for (const int note : cell.fNotes)
      texts +=
          (texts.empty() ? "" : " ") + table.GetFootnotes()[static_cast<std::size_t>(note)].GetText().fText;
    return CsvReport::Field(texts);
  }

  std::ostream& fOut;
  int fCount = 0;
  std::string fCommand;
};

}  // namespace

std::string CsvReport::Field(std::string_view text) {
  const bool isFormula = !text.empty() && std::string_view("=+-@\t\r").find(text.front()) != text.npos;
  std::string field = isFormula ? "'" : "";
  for (const char c : text) field += c == '"' ? "\"\"" : std::string(1, c);
  return field.find_first_of(",\"\r\n") == std::string::npos ? field : '"' + field + '"';
}

void CsvReport::Write(const Report& report, std::ostream& out) {
  out << kHeader;
  CsvWriter writer(out);
  for (const auto& command : report.fvCommands) writer.WriteCommand(*command);
}

}  // namespace BayesHost
