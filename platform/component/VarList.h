// What a component knows of the variables behind the record slots: for messages to itself and for exported
// models.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Visibility.h"

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
};

// A value, filled by the host.
class BAYES_PLATFORM MCVarList {
 public:
  MCVarList();
  ~MCVarList();
  MCVarList(const MCVarList&) = delete;
  MCVarList& operator=(const MCVarList&) = delete;

  void AddVariable(const MCVariable& variable);
  const std::vector<MCVariable>& GetVariables() const;

  void SetUnWeightedCount(double count);
  void SetWeightedCount(double count);
  void SetDroppedCount(double count);
  void SetWeightedDroppedCount(double count);
  void SetListwiseDeletion(bool listwise);
  double GetUnWeightedCount() const;
  double GetWeightedCount() const;
  double GetDroppedCount() const;
  double GetWeightedDroppedCount() const;
  bool GetListwiseDeletion() const;

 private:
  struct State;
  std::unique_ptr<State> fpState;
};

}  // namespace MCXML_850
