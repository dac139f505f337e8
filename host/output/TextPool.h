#pragma once

#include <memory>
#include <unordered_set>

#include "host/output/ShownText.h"

namespace BayesHost {

// Texts that stand in many places of a document: with a table for each of a hundred thousand groups of cases,
// every label is there as often.
using SharedText = std::shared_ptr<const ShownText>;

// Hands out one copy of each different text.
class TextPool {
 public:
  SharedText Share(const ShownText& text);

 private:
  struct Hash {
    std::size_t operator()(const SharedText& text) const;
  };
  struct Equal {
    bool operator()(const SharedText& a, const SharedText& b) const { return *a == *b; }
  };

  std::unordered_set<SharedText, Hash, Equal> fTexts;
};

}  // namespace BayesHost
