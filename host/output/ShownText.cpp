#include "host/output/ShownText.h"

#include <utility>

namespace BayesHost {

ShownText ShownText::Plain(std::string text) {
  ShownText shown;
  shown.fIdentity = "text:" + text;
  shown.fText = std::move(text);
  return shown;
}

std::string JoinTexts(const std::vector<std::string>& texts) {
  std::string joined;
  for (std::size_t i = 0; i < texts.size(); ++i) joined += (i == 0 ? "" : ", ") + texts[i];
  return joined;
}

}  // namespace BayesHost
