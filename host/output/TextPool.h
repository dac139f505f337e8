#pragma once

#include <unordered_set>

#include "host/output/ShownText.h"

namespace BayesHost {

// Keeps one copy of each different text of a document: with a table for each of a hundred thousand groups of
// cases, every label is there as often.
class TextPool {
 public:
  // The copy, which lives as long as the pool.
  const ShownText* Share(const ShownText& text) { return &*fTexts.insert(text).first; }

 private:
  struct Hash {
    std::size_t operator()(const ShownText& text) const;
  };

  std::unordered_set<ShownText, Hash> fTexts;
};

}  // namespace BayesHost
