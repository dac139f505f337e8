#include "host/output/TextPool.h"

#include <functional>
#include <string>

namespace BayesHost {

std::size_t TextPool::Hash::operator()(const ShownText& text) const {
  const std::hash<std::string> hash;
  return hash(text.fText) * 31 + hash(text.fIdentity);
}

}  // namespace BayesHost
