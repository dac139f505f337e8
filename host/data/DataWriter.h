#pragma once

#include "host/data/DataFile.h"
#include "host/data/DataSet.h"
#include "platform/Visibility.h"

namespace BayesHost {

// Writes all variables of the data set, the cases in the order of its file: as Parquet when the name ends in
// .parquet, else as CSV (commas, quoted where needed, empty cells for missing). The file appears whole or not
// at all. Throws DataError when it can't be written, or the data can't be read.
BAYES_PLATFORM void SaveData(DataSet& data, const DataFile& target, const DataSet::Limits& limits);

}  // namespace BayesHost
