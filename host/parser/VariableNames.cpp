#include "host/parser/VariableNames.h"

#include <algorithm>
#include <utility>

#include "host/output/HostKeys.h"
#include "host/parser/Fault.h"
#include "host/parser/Keywords.h"
#include "host/parser/TokenCursor.h"

namespace BayesHost {
namespace {

bool MayBeName(const ZARQ_Token& word) {
  return !word.IsNumber() && word.GetOperatorCode() < 0 && !IsWord(word, "TO");
}

// Stands where only a variable can.
[[noreturn]] void RejectAsName(const ZARQ_Token& word, const ListName& list) {
  Reject(kHostNeedValue,
         {ShowToken(word), list.fParam, list.fWhere, StringTable::English().Find("a variable")},
         word.GetPosition());
}

}  // namespace

bool IsWord(const ZARQ_Token& token, const char* word) {
  return token.GetKind() == ZARQ_Token::Kind::Identifier && IsSameWord(token.GetText(), word);
}

// As written first; otherwise in any case, if only one name fits.
int VariableNames::Find(const ZARQ_Token& word) const {
  const auto exact = std::find(fvNames.begin(), fvNames.end(), word.GetText());
  if (exact != fvNames.end()) return static_cast<int>(exact - fvNames.begin());
  std::vector<std::string> candidates;
  int found = -1;
  for (std::size_t i = 0; i < fvNames.size(); ++i) {
    if (!IsSameWord(fvNames[i], word.GetText())) continue;
    found = static_cast<int>(i);
    candidates.push_back(fvNames[i]);
  }
  if (candidates.empty())
    Reject(kHostUnknownVariable, {word.GetText(), FindNearest(word.GetText(), fvNames)}, word.GetPosition());
  if (candidates.size() > 1) Reject(kHostAmbiguousVariable, {word.GetText(), candidates}, word.GetPosition());
  return found;
}

std::vector<NamedVariable> VariableNames::Resolve(const std::vector<ZARQ_Token>& words,
                                                  const ListName& list) const {
  std::vector<NamedVariable> resolved;
  const auto add = [&](int first, int last, const ZARQ_Token& word) {
    for (int index = first; index <= last; ++index) resolved.push_back({index, word.GetPosition()});
  };
  for (std::size_t i = 0; i < words.size(); ++i) {
    const ZARQ_Token& word = words[i];
    if (!MayBeName(word)) RejectAsName(word, list);
    if (IsWord(word, "ALL")) {
      add(0, static_cast<int>(fvNames.size()) - 1, word);
      continue;
    }
    const int first = Find(word);
    const bool isRange = i + 1 < words.size() && IsWord(words[i + 1], "TO");
    if (isRange && (i + 2 == words.size() || !MayBeName(words[i + 2]))) RejectAsName(words[i + 1], list);
    const int last = isRange ? Find(words[i + 2]) : first;
    if (last < first)
      Reject(kHostVariableRange, {word.GetText(), words[i + 2].GetText()}, word.GetPosition());
    add(first, last, word);
    if (isRange) i += 2;
  }
  return resolved;
}

RegressionWords SplitRegressionWords(const std::vector<ZARQ_Token>& words, const std::string& by,
                                     const std::string& with, const ListName& list) {
  RegressionWords parts;
  std::vector<ZARQ_Token>* part = &parts.fvDependent;
  for (const ZARQ_Token& word : words) {
    const bool isBy = IsWord(word, by.c_str());
    if (!isBy && !IsWord(word, with.c_str())) {
      part->push_back(word);
      continue;
    }
    std::vector<ZARQ_Token>* const next = isBy ? &parts.fvFactors : &parts.fvCovariates;
    if (part->empty() || !next->empty() || &word == &words.back()) RejectAsName(word, list);
    part = next;
  }
  return parts;
}

}  // namespace BayesHost
