// Runs one command: the passes over the data, split by split, and the component of each split.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "bayesian/BYSProcAdapter.h"
#include "bayesian/BYSValidSpecs.h"
#include "platform/component/Component.h"
#include "platform/host/Adapter.h"
#include "platform/host/Files.h"
#include "platform/host/Output.h"

// Forwards the component's progress to the host's case counter; the counter ends with the listener.
class BYSProgress : public MCCommon_850::ProgressListener {
 public:
  ~BYSProgress() override;
  void ReportProgress(MCCommon_850::ProgressReport& report) override;
};

// Pass 0 makes, per split, the settings and the variable list; pass 1 the component and its results. What
// belongs to a split stands in vectors indexed by the split index, null where the split failed. Steps return
// true when the run may go on; a step that returns false has shown its message.
class BYSFactory {
 public:
  // All must outlive the factory; the output procedure may be null (then nothing names the splits).
  BYSFactory(BYSValidSpecs* specs, ProcedureDataSource& dataSource, BpProcedure* procedure);
  ~BYSFactory();
  BYSFactory(const BYSFactory&) = delete;
  BYSFactory& operator=(const BYSFactory&) = delete;

  // To the next split of the current pass; false when there is none.
  bool StartNewSplit();
  // Reads the current split to its end.
  bool ProcedureDataPass(bool reportEmpty);
  // Settings and variable list of the split just read.
  bool CompleteMetaData();
  void CompleteDataPass();
  // Back to the first split, for the component pass.
  bool PrepareComponentRun();
  // Builds the current split's model. True: its results can be shown.
  bool RunBSNComponent();
  // Forgets the current split's model, which has been shown, unless its cases are still to be scored:
  // otherwise every split's would stay in memory.
  void ReleaseSplit();
  // Makes the writer of the model file, if one is asked for.
  bool CreatePMMLPooler();
  // Ends the model file when all splits have written theirs.
  bool CompleteExtFileIO();
  // Makes the saved variables, and back to the first split for the scoring pass. False: a name can't be had.
  bool PrepareScoringPass();
  // Saves the predictions of the current split's cases.
  bool ScoringDataPass();

  BYSProcAdapter* GetInputAdapter() const { return fpInpAdapt.get(); }
  // -1 before the first split of a pass.
  int GetSplitIndex() const { return fSplitIndex; }
  MCCommon_850::MCStatus GetStatus() const { return fStatus; }
  // Of the current split; null where it failed.
  MCBSN_850::BSNComponent* GetBSNComponent() const;
  MCBSN_850::BSNSettings* GetBSNSettings() const;
  // The current split's results; only after a model was built without error.
  const MCBSN_850::BSNOutputStats* GetOutputStats() const;

  // Shows one status in words; nothing for OK.
  void DisplayMessage(const MCCommon_850::MCStatus& status) const;
  // Shows the statuses that the current split's model collected.
  void DisplayAllMessages() const;
  // Developer aids: to the host's debug channel.
  void DisplayStatus() const;
  void DisplayOutput() const;

 private:
  using Settings = MCBSN_850::BSNSettings;
  using VarList = MCXML_850::MCVarList;
  using Component = MCBSN_850::BSNComponent;

  bool IsSplitFile() const { return fpInpAdapt->GetSplitFile(); }
  void ReportNoValidCases() const;
  bool IsCancelled() const;
  bool NeedsSeed(const Settings& settings) const;
  void ChooseSeed(Settings& settings);
  bool BuildComponent();
  std::unique_ptr<ACADataFileIter> FillDataFile();
  bool BuildModel(ACADataFileIter& dataFile);
  // BYSFactoryExport.cpp
  void SavePMMLFile();
  void WritePMMLFile(const std::string& name, const VarList& varList,
                     const MCBSN_850::BSNMultiRegOutputStats& stats) const;
  // BYSFactoryScoring.cpp
  bool CreateSaveVariables(const std::string& commandName);
  bool CreateSaveVariable(std::size_t option, const std::string& commandName);
  void ScoreRecord(const MCCommon_850::Record& record, const MCBSN_850::BSNMultiRegOutputStats& stats,
                   ZARQ_InputCaseIterator& cases) const;

  BYSValidSpecs& fSpecs;
  ProcedureDataSource& fDataSource;
  std::unique_ptr<BYSProcAdapter> fpInpAdapt;
  ACAInpAdaptMsg fAdapterMessages;
  ACAUniformRandom fRandom;
  std::vector<int> fSortVars;
  std::unique_ptr<ACAProcDataSourceIter> fpRecIter;
  int fSplitIndex = -1;
  std::vector<std::unique_ptr<Settings>> fvSettings;
  std::vector<std::unique_ptr<VarList>> fvVarLists;
  std::vector<std::unique_ptr<Component>> fvComponents;
  std::vector<int> fvSplitSizes;
  std::vector<int> fvSaveVarInds;
  std::unique_ptr<ZARQ_PMMLPooling> fpPooler;
  MCCommon_850::MCStatus fStatus;
};
