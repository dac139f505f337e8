// Shows keyed messages of the run in the host's output.
#pragma once

#include <vector>

#include "platform/host/Output.h"

namespace BYS {

using MessageParts = std::vector<BpCellText>;

// `parts` fill ^1, ^2 ... of the key, then, with `splitList`, the current split's variables and values fill
// its list.
void ShowMessage(const char* key, const MessageParts& parts, bool splitList, BpErrorLevel level);

}  // namespace BYS
