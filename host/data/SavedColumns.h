#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/data/ColumnStore.h"
#include "host/data/DataSet.h"
#include "platform/host/Data.h"

namespace BayesHost {

// Takes the values of the made variables while a pass walks the cases in the order of the splits. They are
// kept like every column, in memory or in a temporary file, and take the order of the file at the end.
class SavedColumns : public ZARQ_InputCaseIterator {
 public:
  // For the variables that have no values yet.
  explicit SavedColumns(DataSet& data);

  // To the case at this position of the order, behind the one before; cases passed over stay missing. Throws
  // std::system_error when the temporary file can't take what was set so far.
  void BeginCase(std::uint64_t position);
  void SetColumnValue(int column, double value) override;
  // After the last case: the variables have these values.
  void Finish();

 private:
  void AppendUpTo(std::uint64_t position);
  void Append(const double* values);

  DataSet& fData;
  std::vector<int> fvVariables;
  std::unique_ptr<ColumnStore> fpStore;
  std::vector<double> fvCase;     // of the case at hand
  std::vector<double> fvMissing;  // of a case passed over
  bool fHasCase = false;
};

}  // namespace BayesHost
