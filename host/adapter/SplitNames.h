#pragma once

#include "host/data/DataSet.h"

namespace BayesHost {

// Tells the command's document that what follows belongs to this group of cases.
void NameSplit(const DataSet& data, const SplitIndex::Group& group);
// What follows belongs to no group.
void ForgetSplit();

}  // namespace BayesHost
