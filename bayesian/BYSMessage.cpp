#include "bayesian/BYSMessage.h"

namespace BYS {

void ShowMessage(const char* key, const MessageParts& parts, bool splitList, BpErrorLevel level) {
  if (parts.empty() && !splitList) {
    BpError(BpString(key, true), kBpErrorShowAll, level);
    return;
  }
  BpComposite text(key, true);
  for (const BpCellText& part : parts) text.Add(part);
  if (splitList) {
    text.Sublist();
    text.SplitList();
    text.EndSublist();
  }
  text.Finish();
  BpError(text, kBpErrorShowAll, level);
}

}  // namespace BYS
