#include "host/output/ShownText.h"

#include <utility>

namespace BayesHost {

ShownText ShownText::Plain(std::string text) {
  ShownText shown;
  shown.fIdentity = "text:" + text;
  shown.fText = std::move(text);
  return shown;
}

}  // namespace BayesHost
