// What a component knows of the variables behind the record slots: for messages to itself and for exported
// models. Header only: the host fills it, the component reads it.
#pragma once

#include <string>
#include <vector>

namespace MCXML_850 {

// One category of a categorical variable, in code order.
struct MCCategory {
  std::string fText;     // a string value; empty for a number
  double fNumber = 0.0;  // a numeric value
  bool fIsString = false;
  std::string fLabel;  // empty when the value has none
};

struct MCVariable {
  int fSlot = -1;
  std::string fName;
  std::string fLabel;  // empty when the variable has none
  bool fCategorical = false;
  bool fString = false;
  std::vector<MCCategory> fvCategories;
  std::vector<MCCategory> fvUserMissing;  // values that count as missing
};

class MCVarList {
 public:
  void AddVariable(const MCVariable& variable) { fvVariables.push_back(variable); }
  const std::vector<MCVariable>& GetVariables() const { return fvVariables; }

  void SetUnWeightedCount(double count) { fUnWeighted = count; }
  void SetWeightedCount(double count) { fWeighted = count; }
  void SetDroppedCount(double count) { fDropped = count; }
  void SetWeightedDroppedCount(double count) { fWeightedDropped = count; }
  void SetListwiseDeletion(bool listwise) { fListwise = listwise; }
  double GetUnWeightedCount() const { return fUnWeighted; }
  double GetWeightedCount() const { return fWeighted; }
  double GetDroppedCount() const { return fDropped; }
  double GetWeightedDroppedCount() const { return fWeightedDropped; }
  bool GetListwiseDeletion() const { return fListwise; }

 private:
  std::vector<MCVariable> fvVariables;
  double fUnWeighted = 0;
  double fWeighted = 0;
  double fDropped = 0;
  double fWeightedDropped = 0;
  bool fListwise = false;
};

}  // namespace MCXML_850
