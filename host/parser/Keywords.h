// Matching of words against names: case, abbreviation, and the nearest name for a misspelt one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Visibility.h"

namespace BayesHost {

// Letters of ASCII only: names of other scripts match as they are written.
std::string ToUpper(std::string_view text);
BAYES_PLATFORM bool IsSameWord(std::string_view a, std::string_view b);

// A word must have this many letters to stand for a longer keyword that begins with it.
inline constexpr std::size_t kShortestAbbreviation = 3;

// Indices of the keywords that a word stands for: one for a whole keyword, however many begin with it; none
// when it fits no keyword; several when it is ambiguous.
BAYES_PLATFORM std::vector<std::size_t> MatchKeyword(std::string_view word,
                                                     const std::vector<std::string>& keywords);

// The keywords at these indices.
BAYES_PLATFORM std::vector<std::string> Pick(const std::vector<std::string>& keywords,
                                             const std::vector<std::size_t>& indices);

// The names that the word most likely is a misspelling of: at most two, equally near; none when none is near.
BAYES_PLATFORM std::vector<std::string> FindNearest(std::string_view word,
                                                    const std::vector<std::string>& names);

}  // namespace BayesHost
