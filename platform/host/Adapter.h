// Cases as records of doubles: which variables, which cases, in which passes.
//
// A record has one slot per registered variable. A pass reads every split in order; a split's records are
// those cases that have a positive weight, pass the missing rules and are accepted by PreprocessRecord.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Visibility.h"
#include "platform/component/Common.h"
#include "platform/host/Data.h"

class BpProcedure;

namespace MCXML_850 {
class MCVarList;
}

// Registers the variables of a run: dictionary index to record slot and back. A variable registered twice
// keeps one slot and the flags of the first registration; the categorical flags must agree.
class BAYES_PLATFORM ACAVarValidSpecs {
 public:
  // The flags are reserved; pass true.
  ACAVarValidSpecs(bool, bool, bool);
  ~ACAVarValidSpecs();
  ACAVarValidSpecs(const ACAVarValidSpecs&) = delete;
  ACAVarValidSpecs& operator=(const ACAVarValidSpecs&) = delete;

  // `missingPasses` false: a missing value drops the case; true: it passes as the missing value.
  // `userMissingIsMissing`: user-missing values count as missing. `missingPassesInLastPass`: the same as
  // missingPasses, for the scoring pass. A categorical variable's slot holds category codes. Returns the
  // slot.
  int AddVariable(int index, bool categorical, bool missingPasses, bool userMissingIsMissing,
                  bool missingPassesInLastPass);
  // The same for a list; `slots` becomes the slots in list order.
  void AddVariables(const std::vector<int>& indices, std::vector<int>& slots, bool categorical,
                    bool missingPasses, bool userMissingIsMissing, bool missingPassesInLastPass);
  // A slot without a variable: holds the missing value until PreprocessRecord fills it.
  int AddFreeVariable(bool categorical);
  // The slot of the data source's weight variable; it holds the weight rounded to the nearest whole number.
  int SetWeightVar();

  // Slot of a registered dictionary variable, negative when it isn't registered.
  int GetRecVarIndex(int index) const;
  // Dictionary index behind a slot, negative for a free slot.
  int GetZARQVarIndex(int slot) const;
  int GetNRecordVars() const;
  bool GetRecordCatVar(int slot) const;
  // The categorical slots, ascending.
  const std::vector<int>& GetRecCatVars() const;

  // Developer aids: to the debug channel.
  void Display() const;
  void DisplayVarNames(const ZARQ_DataSource& dataSource) const;

  struct State;
  const State& GetState() const { return *fpState; }

 private:
  std::unique_ptr<State> fpState;
};

// Base of a module's input adapter. The iterator drives it: PrepareNewPass, then per split PrepareNewSplit
// and, per case, PreprocessCase and PreprocessRecord. The base versions of these four do nothing (and
// accept): pass, counts and categories are the iterator's business, settled before it calls them.
class BAYES_PLATFORM ACAInputAdapter {
 public:
  ACAInputAdapter(ACAVarValidSpecs& varSpecs, ProcedureDataSource& dataSource);
  virtual ~ACAInputAdapter();
  ACAInputAdapter(const ACAInputAdapter&) = delete;
  ACAInputAdapter& operator=(const ACAInputAdapter&) = delete;

  // Doubles in a record.
  virtual int GetRecordSize() const;
  // Steps of making a record from the current case, in this order. A step is left out when the record has no
  // slots of its kind.
  virtual void EncodeCatVars(double* record);
  virtual void GetContVars(double* record);
  virtual void RecodeMatrixSpecs(double* record);
  virtual bool HandleBadMatrixSpec(int slot, const std::vector<int>* matrixVars);
  virtual void FillFreeVars(double* record);
  // False rejects the case before its record is made.
  virtual bool PreprocessCase();
  // Recodes the record in place; false rejects it.
  virtual bool PreprocessRecord(double* record);
  virtual void PrepareNewPass();
  virtual void PrepareNewSplit();
  // True: in the current pass nobody rejects or recodes single cases, so that AdvanceRun and FillDataFile may
  // take all that pass the missing rules without a call for each. The base version says false.
  virtual bool TakesCasesAsTheyAre() const;
  // Called in place of PreprocessRecord for cases that were taken at once; GetRunValues hands out their
  // values. The base version does nothing.
  virtual void PreprocessRun();

  // True when split-file processing is on.
  bool GetSplitFile() const;
  // Lets messages and tables that `proc` shows name the current split. The flags are reserved; pass true.
  void SetSplitFile(BpProcedure* proc, bool, bool, bool);
  // The split variables' values of the current split, in split variable order; empty without split files.
  const std::vector<const OBS*>& GetSplitValues() const;

  // 0 metadata pass, 1 component pass, 2 scoring pass.
  int GetCurrentPass() const;
  // Categories seen in accepted cases of the current split. Codes are 0-based positions in the order last
  // asked for; they are provisional in pass 0 and final from pass 1 on.
  int GetRecordCatVarSize(int slot) const;
  void ReorderRecordCats(int slot, bool ascending);
  // Code of a value, negative (and notFound set) when the current split has no such category. `add` true is
  // reserved.
  int EncodeRecordCatValue(int slot, const OBS& value, bool& notFound, bool add) const;
  // Value of a code, null when the code is out of range. Lives until the split ends for good (the run's end).
  const OBS* DecodeRecordCatValue(int slot, int code) const;
  // Smallest and largest value of a numeric slot among the accepted cases of the current split; the missing
  // value when there are none.
  double GetRecordVarMin(int slot) const;
  double GetRecordVarMax(int slot) const;

  // During PreprocessRun: the values of a numeric slot in the cases just taken, in their order, the missing
  // value among them.
  void GetRunValues(int slot, std::vector<double>& values) const;

  // How frequency weights are used: 1 rounded to the nearest whole number, 2 as they are.
  int GetWeightAdjType() const;
  // Unweighted number of accepted cases of the current split so far.
  double GetSplitCaseCount() const;
  // The number of records that the split will hand to the component: a size hint for ACADataFileIter.
  int GetSplitSize() const;
  // Counts of the current split. Valid: accepted; dropped: lost to missing values. Cases without a positive
  // weight count nowhere.
  double GetValidCount() const;
  double GetWeightedValidCount() const;
  double GetDroppedCount() const;
  double GetWeightedDroppedCount() const;

  struct State;
  State& GetState() { return *fpState; }
  const State& GetState() const { return *fpState; }

 private:
  std::unique_ptr<State> fpState;
};

// Streams the records of the active data set, split by split, pass by pass.
class BAYES_PLATFORM ACAProcDataSourceIter {
 public:
  enum State { kReady = 0, kNoCase = 1, kNoValidCase = 3 };

  // Starts pass 0. With `readAhead`, construction (and Restart) already prepares the first split and looks
  // for its first accepted record; the first NewSplit then only makes it known. Both must outlive the
  // iterator.
  ACAProcDataSourceIter(ACAInputAdapter& adapter, bool readAhead);
  ~ACAProcDataSourceIter();
  ACAProcDataSourceIter(const ACAProcDataSourceIter&) = delete;
  ACAProcDataSourceIter& operator=(const ACAProcDataSourceIter&) = delete;

  // Moves to the next split and to its first accepted record; unread records of the split before are dropped.
  // False: no further split, or no usable case at all (state kNoCase or, without split files, kNoValidCase,
  // after construction). A split stays current until the next call.
  bool NewSplit();
  // After construction: kNoCase the data hold no case at all, kNoValidCase (without split files) no accepted
  // one. Later: kNoValidCase the current split gave no accepted record.
  State GetState() const;
  bool HasRecord() const;
  // To the next accepted record of the current split.
  void Advance();
  // The same, past some 2,000 accepted cases at once when the adapter takes them as they are.
  void AdvanceRun();
  // Back to the first split: the component pass begins.
  void Restart();
  // Back to the first split: one more pass begins. The flag is reserved; pass true.
  void NewPass(bool);
  // Makes the pass just begun the scoring pass: its missing rules hold, and its cases take values.
  void SetLastPass();
  // Where the current case of the scoring pass takes values; null before SetLastPass. What cases don't take
  // stays missing. All values come into force when NewSplit finds no further split.
  ZARQ_InputCaseIterator* GetProcDS();
  // The current record (GetRecordSize() doubles), null when there is none. Valid until Advance or NewSplit.
  const MCCommon_850::Record* Current() const;

  struct Implementation;
  Implementation& GetImplementation() { return *fpImplementation; }

 private:
  std::unique_ptr<Implementation> fpImplementation;
};

// The records of one split, kept for the component, which may read them several times: in memory up to the
// memory setting, in a temporary file beyond it.
class BAYES_PLATFORM ACADataFileIter : public MCCommon_850::MCRecordSource {
 public:
  // `sortVars` is reserved; pass an empty list (std::invalid_argument otherwise): the records keep the order
  // of the cases. `sizeHint`: expected number of records, 0 when unknown.
  ACADataFileIter(ACAInputAdapter& adapter, const std::vector<int>& sortVars, int sizeHint);
  ~ACADataFileIter() override;
  ACADataFileIter(const ACADataFileIter&) = delete;
  ACADataFileIter& operator=(const ACADataFileIter&) = delete;

  // kNoValidCase: the adapter's current split gave no accepted record in this pass.
  ACAProcDataSourceIter::State GetState() const;
  // Takes the current split's records from the iterator. False: the run was cancelled or the file could not
  // be written.
  bool FillDataFile(ACAProcDataSourceIter& records);
  // Releases the records.
  void CloseDataFile();

  int GetRecordSize() const override;
  void Restart() override;
  const double* NextBlock(std::size_t& count) override;

 private:
  struct Implementation;
  std::unique_ptr<Implementation> fpImplementation;
};

// The host's own words for data without usable cases.
class BAYES_PLATFORM ACAInpAdaptMsg {
 public:
  explicit ACAInpAdaptMsg(const ProcedureDataSource& dataSource);

  void NoValidCasesForSelect() const;
  void NoValidCases() const;
  // Names the current split.
  void NoValidCasesSplit() const;
};

// Describes the record's variables to a component's variable list.
class BAYES_PLATFORM ACAVarListMetaData {
 public:
  // All must outlive the object; `withCategories` adds the category values.
  ACAVarListMetaData(MCXML_850::MCVarList& list, const ACAVarValidSpecs& varSpecs,
                     const ZARQ_DataSource& dataSource, const ACAInputAdapter& adapter, bool withCategories);
  ~ACAVarListMetaData();
  ACAVarListMetaData(const ACAVarListMetaData&) = delete;
  ACAVarListMetaData& operator=(const ACAVarListMetaData&) = delete;

  // Names a slot that stands for no dictionary variable.
  void SetFreeVarName(int slot, const std::string& name);
  // Writes one entry per slot.
  void Fill();

 private:
  struct State;
  std::unique_ptr<State> fpState;
};
