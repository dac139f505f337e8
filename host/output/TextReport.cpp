#include "host/output/TextReport.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <utility>

#include "host/output/TextTable.h"
#include "host/output/TextWidth.h"
#include "platform/host/Run.h"

namespace BayesHost {
namespace {

constexpr std::size_t kPieceItems = 1000;
constexpr std::size_t kPiecesAtOnce = 8;  // that are held as text

std::string TitleOf(const PivotTable& table, const TableLayout& layout) {
  const std::string marks = layout.GetTableMarks();
  return table.GetTitle().fText + (marks.empty() ? "" : "[" + marks + "]");
}

}  // namespace

TextReport::TextReport(Options options) : fOptions(options) {}

void TextReport::Write(const Report& report, std::ostream& out) const {
  WriteHead(report.fHead, out);
  for (const auto& command : report.fvCommands) WriteCommand(*command, out);
}

void TextReport::WriteHead(const ReportHead& head, std::ostream& out) const {
  std::string line = head.fProgram + " " + head.fVersion;
  if (head.fSeed) line += fmt::format(", seed {}", *head.fSeed);
  out << Bold(line) << '\n';
  if (!head.fData) return;
  WriteWrapped("data: ",
               fmt::format("{} ({} bytes), {} cases, {} variables", head.fData->fFile, head.fData->fBytes,
                           head.fData->fCases, head.fData->fVariables),
               out);
  if (head.fData->fFingerprint) WriteWrapped("XXH3-128: ", *head.fData->fFingerprint, out);
}

void TextReport::WriteCommand(const CommandOutput& command, std::ostream& out) const {
  out << '\n' << MakeRule() << '\n' << Bold(command.GetName());
  if (!command.GetTitle().empty()) out << ": " << PlainText(command.GetTitle());
  if (command.IsFailed()) out << " (failed)";
  out << '\n';
  WriteItems(command.GetItems(), out);
}

// With many splits the layout of their tables takes as long as their analysis.
void TextReport::WriteItems(const ItemList& items, std::ostream& out) const {
  const std::vector<Piece> pieces = CutPieces(items);
  for (std::size_t first = 0; first < pieces.size(); first += kPiecesAtOnce) {
    std::vector<std::string> texts(std::min(kPiecesAtOnce, pieces.size() - first));
    ACAThreadFactory().ForEach(static_cast<int>(texts.size()), fOptions.fThreads, [&](int i) {
      const auto place = static_cast<std::size_t>(i);
      std::ostringstream text;
      WritePiece(pieces[first + place], text);
      texts[place] = std::move(text).str();
    });
    for (const std::string& text : texts) out << text;
  }
}

std::vector<TextReport::Piece> TextReport::CutPieces(const ItemList& items) const {
  std::vector<Piece> pieces;
  const Item* above = nullptr;
  std::size_t count = 0;
  for (auto item = items.begin(); item != items.end(); ++item) {
    if (count++ % kPieceItems == 0) {
      pieces.push_back({item, item, above == nullptr ? "" : ShowSplit(above->GetSplit())});
    }
    pieces.back().fEnd = std::next(item);
    if (IsShown(*item)) above = &*item;
  }
  return pieces;
}

bool TextReport::IsShown(const Item& item) const {
  return fOptions.fMessages || !std::holds_alternative<Message>(item.fContent);
}

void TextReport::WritePiece(const Piece& piece, std::ostream& out) const {
  std::string split = piece.fSplit;
  for (auto item = piece.fBegin; item != piece.fEnd; ++item) {
    if (!IsShown(*item)) continue;
    const std::string own = ShowSplit(item->GetSplit());
    if (!own.empty() && own != split) out << '\n' << Bold("Split: " + own) << '\n';
    split = own;
    const auto* heading = std::get_if<Heading>(&item->fContent);
    if (heading != nullptr && RepeatsSplit(*heading, split)) {
      WritePiece({heading->fItems.begin(), heading->fItems.end(), split}, out);
      continue;
    }
    out << '\n';
    std::visit([&](const auto& content) { WriteContent(content, out); }, item->fContent);
  }
}

void TextReport::WriteContent(const Notes& notes, std::ostream& out) const {
  out << Bold("Notes") << '\n';
  for (const NoteEntry& entry : notes.fvEntries)
    WriteWrapped("  " + entry.fLabel.fText + ": ", entry.fText.fText, out);
}

void TextReport::WriteContent(const Message& message, std::ostream& out) const {
  const bool isError = message.fLevel == Message::Level::Error;
  WriteWrapped(isError ? "Error: " : "Warning: ", message.fText.fText, out);
}

void TextReport::WriteContent(const Heading& heading, std::ostream& out) const {
  out << Bold(heading.fText.fText) << '\n';
  // The split of the first item stands above the heading itself.
  const std::string split = heading.fItems.empty() ? "" : ShowSplit(heading.fItems.front().GetSplit());
  WritePiece({heading.fItems.begin(), heading.fItems.end(), split}, out);
}

void TextReport::WriteContent(const std::shared_ptr<PivotTable>& table, std::ostream& out) const {
  const TableLayout layout(*table);
  out << Bold(TitleOf(*table, layout)) << '\n';
  for (const auto& layer : layout.GetLayers().fvLines) {
    if (!layer.empty()) out << PlainText(JoinTexts(layout.GetLabels(layout.GetLayers(), layer))) << '\n';
    out << TextTable(*table, layout, layer, fOptions.fWidth, fOptions.fUnicode ? "\u2500" : "-").Render();
  }
  if (table->GetCaption()) WriteWrapped("", table->GetCaption()->fText, out);
  for (const int note : layout.GetNoteOrder())
    WriteWrapped(layout.GetLetter(note) + ". ",
                 table->GetFootnotes()[static_cast<std::size_t>(note)].GetText().fText, out);
}

void TextReport::WriteContent(const Chart& chart, std::ostream& out) const {
  out << "Chart: " << PlainText(chart.fTitle) << '\n';
}

void TextReport::WriteWrapped(const std::string& first, const std::string& text, std::ostream& out) const {
  std::string indent = PlainText(first);
  for (const std::string& line : WrapText(PlainText(text), fOptions.fWidth - DisplayWidth(first))) {
    out << indent << line << '\n';
    indent.assign(static_cast<std::size_t>(DisplayWidth(first)), ' ');
  }
}

std::string TextReport::Bold(const std::string& text) const {
  const std::string plain = PlainText(text);
  return fOptions.fColour ? "\x1b[1m" + plain + "\x1b[0m" : plain;
}

std::string TextReport::MakeRule() const {
  std::string rule;
  for (int i = 0; i < fOptions.fWidth; ++i) rule += fOptions.fUnicode ? "\u2550" : "=";
  return rule;
}

}  // namespace BayesHost
