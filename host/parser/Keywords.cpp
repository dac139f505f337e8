#include "host/parser/Keywords.h"

#include <algorithm>
#include <numeric>

namespace BayesHost {
namespace {

constexpr std::size_t kMostSuggestions = 2;

char ToUpperLetter(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Insertions, deletions, replacements and swaps of neighbours that turn one word into the other (the
// restricted Damerau-Levenshtein distance: no part is edited twice). Three rows of the table are enough.
std::size_t GetEditDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before.swap(last);
    last.swap(row);
  }
  return last[b.size()];
}

// A misspelt abbreviation is compared with as many letters of the name; a misspelling of the whole name is
// nearer than one of a part of it.
std::size_t GetDistance(const std::string& word, const std::string& name) {
  const std::size_t whole = 2 * GetEditDistance(word, name);
  if (word.size() < kShortestAbbreviation || word.size() >= name.size()) return whole;
  return std::min(whole, 2 * GetEditDistance(word, name.substr(0, word.size())) + 1);
}

// One slip in a short word, two from six letters on, three from nine on.
std::size_t GetGreatestDistance(std::size_t letters) {
  return 2 * std::clamp<std::size_t>(letters / 3, 1, 3) + 1;
}

}  // namespace

std::string ToUpper(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), ToUpperLetter);
  return upper;
}

bool IsSameWord(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return ToUpperLetter(x) == ToUpperLetter(y);
         });
}

std::vector<std::size_t> MatchKeyword(std::string_view word, const std::vector<std::string>& keywords) {
  std::vector<std::size_t> matches;
  for (std::size_t i = 0; i < keywords.size(); ++i) {
    if (IsSameWord(word, keywords[i])) return {i};
    const bool abbreviates = word.size() >= kShortestAbbreviation && word.size() < keywords[i].size() &&
                             IsSameWord(word, std::string_view(keywords[i]).substr(0, word.size()));
    if (abbreviates) matches.push_back(i);
  }
  return matches;
}

std::vector<std::string> Pick(const std::vector<std::string>& keywords,
                              const std::vector<std::size_t>& indices) {
  std::vector<std::string> picked;
  picked.reserve(indices.size());
  for (const std::size_t index : indices) picked.push_back(keywords[index]);
  return picked;
}

std::vector<std::string> FindNearest(std::string_view word, const std::vector<std::string>& names) {
  const std::string upper = ToUpper(word);
  std::size_t least = GetGreatestDistance(upper.size());
  std::vector<std::string> nearest;
  for (const std::string& name : names) {
    const std::size_t distance = GetDistance(upper, ToUpper(name));
    if (distance > least) continue;
    if (distance < least) nearest.clear();
    least = distance;
    if (nearest.size() < kMostSuggestions) nearest.push_back(name);
  }
  return nearest;
}

}  // namespace BayesHost
