#include "host/output/JsonWriter.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

namespace BayesHost {

namespace {

constexpr std::size_t kLineLength = 160;

// Neither escapes nor more than one byte for a character.
bool IsPlain(char c) {
  return c >= ' ' && c <= '~' && c != '"' && c != '\\';
}

}  // namespace

void JsonWriter::Begin(char opening, char closing) {
  BeginValue();
  fvOpen.push_back({closing, true, fLine.size(), fvMembers.size()});
  if (fvOpen.size() == 1) {
    fBroken = 1;
    fOut << opening;
  } else {
    Put({&opening, 1});
  }
}

void JsonWriter::End() {
  BreakLongLine(1);
  const Open closed = fvOpen.back();
  if (HoldsBack()) {
    fLine += closed.fClosing;
    fvOpen.pop_back();
    fvMembers.resize(closed.fFirstMember);
    if (HoldsBack()) return;
    fOut << fLine;
    fLine.clear();
  } else {
    fvOpen.pop_back();
    fBroken = fvOpen.size();
    NewLine(fBroken);
    fOut << closed.fClosing;
  }
}

void JsonWriter::Key(std::string_view key) {
  BeginMember();
  Quote(key);
  Put(":");
  fAfterKey = true;
}

void JsonWriter::Value(std::string_view text) {
  BeginValue();
  Quote(text);
}

void JsonWriter::Value(double number) {
  char text[32];
  char* end = std::to_chars(text, text + sizeof text, number).ptr;
  const auto isPartOfWhole = [](char c) { return c == '-' || (c >= '0' && c <= '9'); };
  if (std::all_of(text, end, isPartOfWhole)) end = std::copy_n(".0", 2, end);
  Scalar({text, end});
}

void JsonWriter::Scalar(std::string_view text) {
  BeginValue();
  Put(text);
}

void JsonWriter::BeginValue() {
  if (!std::exchange(fAfterKey, false)) BeginMember();
}

void JsonWriter::BeginMember() {
  if (fvOpen.empty()) return;
  const bool isFirst = std::exchange(fvOpen.back().fIsEmpty, false);
  if (HoldsBack()) {
    if (!isFirst) fLine += ',';
    fvMembers.push_back(fLine.size());
  } else {
    if (!isFirst) fOut << ',';
    NewLine(fvOpen.size());
  }
}

void JsonWriter::Put(std::string_view text) {
  if (!HoldsBack()) {
    fOut << text;
    return;
  }
  fLine += text;
  BreakLongLine(0);
}

void JsonWriter::Quote(std::string_view text) {
  if (!std::all_of(text.begin(), text.end(), IsPlain)) {
    const nlohmann::json escaped = std::string(text);
    return Put(escaped.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
  }
  fQuoted.assign(1, '"').append(text).append(1, '"');
  Put(fQuoted);
}

// What is held back, and `more` characters, don't fit on a line any longer.
void JsonWriter::BreakLongLine(std::size_t more) {
  while (HoldsBack() && fBroken + fLine.size() + more > kLineLength) BreakOutermost();
}

// Of all that is held back: its members go out, up to one that is open itself, which stays.
void JsonWriter::BreakOutermost() {
  const Open* const next = fBroken + 1 < fvOpen.size() ? &fvOpen[fBroken + 1] : nullptr;
  const std::size_t end = next ? next->fBegin : fLine.size();
  const std::size_t members = next ? next->fFirstMember : fvMembers.size();
  ++fBroken;
  fOut << fLine.front();
  for (std::size_t i = 0; i < members; ++i) {
    const std::size_t memberEnd = i + 1 < members ? fvMembers[i + 1] : end;  // the comma is the member's
    NewLine(fBroken);
    fOut << std::string_view(fLine).substr(fvMembers[i], memberEnd - fvMembers[i]);
  }
  fLine.erase(0, end);
  fvMembers.erase(fvMembers.begin(), fvMembers.begin() + static_cast<std::ptrdiff_t>(members));
  for (std::size_t& member : fvMembers) member -= end;
  for (std::size_t i = fBroken; i < fvOpen.size(); ++i) {
    fvOpen[i].fBegin -= end;
    fvOpen[i].fFirstMember -= members;
  }
}

void JsonWriter::NewLine(std::size_t indent) {
  fOut << '\n' << std::string(indent, ' ');
}

}  // namespace BayesHost
