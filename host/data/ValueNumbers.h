#pragma once

#include <unordered_map>
#include <vector>

namespace BayesHost {

// Numbers the distinct values of a column in the order of their appearance, from 0.
class ValueNumbers {
 public:
  int Count() const { return fCount; }
  // -1 for a value that Add hasn't seen.
  int Find(double value) const;
  // The number of a value, a new one if need be.
  int Add(double value);

 private:
  int FindDense(double value) const;
  bool IsDense(double value) const;

  int fCount = 0;
  // Small whole numbers, codes of strings above all, have a table.
  std::vector<int> fvDense;
  std::unordered_map<double, int> fOthers;
};

}  // namespace BayesHost
