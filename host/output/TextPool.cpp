#include "host/output/TextPool.h"

#include <functional>
#include <string>

namespace BayesHost {

std::size_t TextPool::Hash::operator()(const SharedText& text) const {
  const std::hash<std::string> hash;
  return hash(text->fText) * 31 + hash(text->fIdentity);
}

// Looked up without a copy: the pointer that asks owns nothing.
SharedText TextPool::Share(const ShownText& text) {
  const auto known = fTexts.find(SharedText(SharedText(), &text));
  if (known != fTexts.end()) return *known;
  return *fTexts.insert(std::make_shared<const ShownText>(text)).first;
}

}  // namespace BayesHost
