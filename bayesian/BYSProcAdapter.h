// The module's input adapter: recodes what the component can't read from the data, and keeps what each
// split's data settled.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "bayesian/BYSValidSpecs.h"
#include "platform/component/Math.h"
#include "platform/host/Adapter.h"
#include "platform/host/Output.h"

// Driven by the host's iterator. In pass 0 it learns the categories that the definitions of success and
// groups speak of; from pass 1 on it recodes the records.
class BYSProcAdapter : public ACAInputAdapter {
 public:
  // What the data of one split settled. Members keep their order: messages and output rely on nothing else of
  // the adapter.
  struct SplitProcData {
    // Per binomial test variable: codes that count as success; codes of the given values, in the order given;
    // cut point.
    std::vector<std::vector<int>> fvSuccessCats;
    std::vector<std::vector<int>> fvGivenCats;
    std::vector<double> fvCutPoints;
    // Per one-sample test variable: a case's value was discarded.
    std::vector<bool> fvBadValues;
    // Codes of the two groups; the cut point that makes them.
    std::vector<int> fvGroupCats;
    double fGroupCutPoint;
    // Per covariate.
    std::vector<double> fvCovarSums;
    std::vector<double> fvCovarMeans;
    // Log-linear analysis only: the values of the table's factors.
    std::unique_ptr<ObsVecMap> fpObsVecMap;
    bool fZeroOrNegative = false;
    bool fNonInteger = false;
    bool fNegative = false;
    bool fBadWeight = false;
  };

  // Both must outlive the adapter; the specifications must be complete.
  BYSProcAdapter(BYSValidSpecs* specs, ProcedureDataSource& dataSource);
  ~BYSProcAdapter() override;

  bool PreprocessCase() override;
  bool PreprocessRecord(double* record) override;
  void PrepareNewPass() override;
  void PrepareNewSplit() override;
  bool TakesCasesAsTheyAre() const override;
  void PreprocessRun() override;

  // Ends a split's reading: derives categories and cut points (pass 0), shows the warnings that its values
  // earned (pass 1). False: the split can't be analysed; a message was shown.
  bool CompleteSplit();
  bool CompletePass();
  // Whether the split held zero or negative counts, non-integer counts, negative counts, missing or
  // non-positive regression weights.
  void GetBadValueFlags(bool& zeroOrNegative, bool& nonInteger, bool& negative, bool& badWeight) const;
  const std::vector<double>& GetCovarMeans() const;
  // Makes the label of a model's parameter the group's current category: the intercept, a covariate, or a
  // factor and its level in the current split.
  void SetParamBagpipeCats(BpGroup* group, const MCMath_850::MCRegrParameter& parameter) const;
  // The raw values behind code 0 or 1 of a recoded variable, in the current split. Kinds FIRST and LAST: the
  // categories in `obs`; LEVEL: the given values in all three lists; MIDPOINT and CUTPOINT: `values` = {cut,
  // maximum} for code 1, {minimum, cut} for code 0. False: the slot is no recoded variable.
  bool DecodeBinRecValue(int componentVar, int encValue, bool& isString, std::vector<const OBS*>& obs,
                         std::vector<double>& values, std::vector<std::string>& strValues) const;
  // The value behind a code of a table's factor, 0 the row's and 1 the column's, in the current split; known
  // from the end of pass 0 on.
  const OBS& GetFactorValue(std::size_t factor, int code) const;
  // Whether the current split has a value of a recoded variable at all, so that there is something to decode.
  bool HasBinValues(int componentVar) const;
  // Whether any value that counts as success of a binomial test variable occurs in the current split. True
  // for ranges.
  bool HasObservedSuccess(int componentVar) const;

 private:
  using BinInfoElem = BYSValidSpecs::BinInfoElem;

  void ResizeSplitData();
  SplitProcData MakeSplitData() const;

  // PreprocessRecord, by analysis.
  void SumCovariates(const double* record);
  void SumCovariate(std::size_t covariate, double value);
  void RecodeBinomial(double* record) const;
  void ScreenCounts(double* record);
  bool RecodeGroup(double* record) const;
  std::size_t FindTest(int componentVar) const;
  bool HasUsableWeight(const double* record);

  // CompleteSplit, by analysis (BYSProcAdapterSplit.cpp).
  void OrderCategories();
  void CollectFactorValues();
  void CompleteBinomial();
  bool CompleteGroup();
  void CompleteCounts();
  void CompleteCovariates();
  void EncodeSuccess(std::size_t test);
  double MidPoint(int slot) const;
  int EncodeValue(int slot, const OBS& value) const;
  void WarnAboutVariable(const char* key, const char* splitKey, int index) const;
  void ReportGroupValue(const OBS& value) const;
  void DecodeRange(int slot, double cutPoint, int encValue, std::vector<double>& values) const;
  void DecodeCategories(int slot, const std::vector<int>& cats, int encValue,
                        std::vector<const OBS*>& obs) const;

  BYSValidSpecs& fSpecs;
  ProcedureDataSource& fDataSource;
  BSNConst::ModelTypes fModelType;
  BSNConst::DistTypes fTestDistType;
  std::vector<int> fvTestVars;   // dictionary indices of the one-sample test variables
  std::vector<int> fvTestSlots;  // their slots: the recoded ones of a binomial test
  std::vector<int> fvBinSlots;   // slots of the raw values of a binomial test
  int fGroupSlot;
  int fGroupSourceSlot;
  int fWeightSlot;
  std::vector<int> fvCovarSlots;
  std::vector<int> fvTableSlots;  // of the factors of a log-linear analysis
  ObsVecMap::KeySpec fTableKeys;
  double fMissing;
  std::vector<SplitProcData> fvAllSplitProcData;
  SplitProcData* fpSplitProcData = nullptr;
  std::vector<double> fvRun;  // a covariate's values in cases taken at once
  // Splits met in the current pass.
  std::size_t fSplitCount = 0;
};
