// The active data set as the module sees it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/Visibility.h"

class BpCellText;

// One observed value, a number or a string. Strings compare by bytes, trailing blanks ignored.
class BAYES_PLATFORM OBS {
 public:
  explicit OBS(double number);
  explicit OBS(std::string text);

  bool IsString() const { return std::holds_alternative<std::string>(fValue); }
  // Meaningful for the matching kind only.
  double GetNumber() const { return std::get<double>(fValue); }
  const std::string& GetString() const { return std::get<std::string>(fValue); }
  bool operator==(const OBS& other) const = default;

 private:
  std::variant<double, std::string> fValue;
};

// A print format. Type 5 is the plain numeric format.
struct ZARQ_Format {
  std::uint16_t fWidth = 8;
  std::uint8_t fType = 5;
  std::uint8_t fDecimals = 2;
};

// A variable's name.
class BAYES_PLATFORM ZarqVarName {
 public:
  ZarqVarName() = default;
  explicit ZarqVarName(std::string text) : fText(std::move(text)) {}
  const std::string& GetText() const { return fText; }

 private:
  std::string fText;
};

// One variable of the data set's dictionary. Lives as long as the data set.
class BAYES_PLATFORM ZARQ_Variable {
 public:
  struct State;
  explicit ZARQ_Variable(std::shared_ptr<const State> state);

  const std::string& GetName() const;
  // The label, or the name when there is no label.
  const std::string& GetPreferredLabel() const;
  ZARQ_Format GetFormat() const;
  bool IsString() const;
  // Bytes of a string variable's longest value; 8 for a numeric variable.
  int GetWidth() const;
  // Empty when the value has no label.
  std::string GetValueLabel(const OBS& value) const;

  // For a variable that MakeVariable made. `level`: 1 nominal, 2 ordinal, 3 scale. The write format is kept
  // for other readers of the dictionary: this host writes numbers in full.
  void SetName(const ZarqVarName& name);
  void SetLabel(const BpCellText& label);
  void SetFormat(ZARQ_Format format);
  void SetWriteFormat(ZARQ_Format format);
  void SetMeasurementLevel(int level);

  const State& GetState() const { return *fpState; }

 private:
  template <typename Change>
  void Alter(Change change);

  std::shared_ptr<const State> fpState;
};

// Writes into the case at hand of a pass over the data.
class BAYES_PLATFORM ZARQ_InputCaseIterator {
 public:
  virtual ~ZARQ_InputCaseIterator() = default;
  // `column`: dictionary index of a variable that MakeVariable made.
  virtual void SetColumnValue(int column, double value) = 0;
};

class BAYES_PLATFORM ZARQ_DataSource {
 public:
  int ColumnCount() const;
  // By dictionary index, 0 <= index < ColumnCount().
  const ZARQ_Variable& GetVariable(int index) const;
  // Adds a variable without a name to the data set, missing in every case; `index` becomes its dictionary
  // index. `type` 0: numeric, the only one there is (std::invalid_argument otherwise).
  ZARQ_Variable& MakeVariable(int type, unsigned* index);
  // The double that stands for missing in a record.
  static double GetMissingValue();
};

// The run's view of the active data set. Any number of objects may exist; all look at the same data.
class BAYES_PLATFORM ProcedureDataSource : public ZARQ_DataSource {
 public:
  ProcedureDataSource();

  // True once the host has met an error, or an interrupt, that ends the procedure.
  bool FatalError() const;
  // Announces how many variables the run will add to the data set.
  void SetMaxObsAdded(unsigned count);
  // Dictionary index of the frequency weight, negative when the data are unweighted.
  int GetWeightVarIndex() const;
  int GetNSplitVars() const;
  // Dictionary index of split variable i, 0 <= i < GetNSplitVars().
  int GetSplitVarIndex(int i) const;
  bool IsSplitFile() const { return GetNSplitVars() > 0; }
  // True when the host arranges the splits' output itself, so that no heading for each split is wanted.
  bool LaysOutSplits() const;
};

// The values of one split's table factors, factor by factor: one entry for each value that occurs. Points to
// the values, which must outlive it.
class BAYES_PLATFORM ObsVecMap {
 public:
  // How the values of each factor are told apart and ordered.
  struct KeySpec {
    std::vector<bool> fvIsString;
    bool fAscending = true;
  };
  // `factors`: dictionary indices.
  static KeySpec MakeKeySpec(const std::vector<int>& factors, const ProcedureDataSource& dataSource,
                             bool ascending);

  explicit ObsVecMap(const KeySpec& keySpec);
  // `factor` counts the key specification's factors; a value is of the factor's kind.
  bool Contains(std::size_t factor, const OBS& value) const;
  void Insert(std::size_t factor, const OBS* value);
  // Numbers by size, strings by bytes, in the direction of the key specification. Values inserted later wait
  // for the next Sort.
  void Sort();
  // The values as last sorted.
  const std::vector<const OBS*>& GetValues(std::size_t factor) const;

 private:
  struct Less {
    bool fIsString;
    bool operator()(const OBS* a, const OBS* b) const;
  };
  struct Factor {
    std::set<const OBS*, Less> fKnown;
    std::vector<const OBS*> fvSorted;
  };
  std::vector<Factor> fvFactors;
  bool fAscending;
};
