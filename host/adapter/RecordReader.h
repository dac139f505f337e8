// The walk over cases, split by split, pass by pass: the state behind ACAProcDataSourceIter.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "host/adapter/AdapterState.h"
#include "host/data/SavedColumns.h"
#include "platform/host/Adapter.h"

namespace BayesHost {

class Session;

// The columns behind a record's slots.
std::vector<int> ListVariables(const ACAVarValidSpecs::State& layout);

}  // namespace BayesHost

struct ACAProcDataSourceIter::Implementation {
  Implementation(ACAInputAdapter& adapter, bool readAhead);
  ~Implementation();

  bool Load();
  void LookAhead();
  void BeginPass(int pass);
  void BeginSplit(int split);
  bool NewSplit();
  void Advance();
  void AdvanceRun();
  bool TakeRun();
  bool MakeRecord();
  void BeginScoring();
  void SaveInto(std::uint64_t position);
  void FinishSaving();
  ACAInputAdapter::State& GetAdapterState() { return fAdapter.GetState(); }

  // Of the current record: its place in the order of the cases, and whether it is its run's first case.
  std::uint64_t GetPosition() const { return fRunBegin + fNextOfRun - 1; }
  bool BeginsRun() const { return fNextOfRun == 1; }
  std::uint64_t GetSplitEnd() const { return fSplitEnd; }

  ACAInputAdapter& fAdapter;
  BayesHost::Session& fSession;
  State fState = kReady;
  bool fUsable = false;      // there are splits to walk
  bool fSplitBegun = false;  // the next split was begun by looking ahead
  bool fSplitEmpty = true;   // no record of this split so far
  bool fHasCategories = false;
  bool fHasFreeSlots = false;
  std::optional<BayesHost::CaseCursor> fCursor;
  std::uint64_t fSplitEnd = 0;
  std::uint64_t fRunBegin = 0;
  std::size_t fRunCases = 0;  // the cases at hand
  std::size_t fNextOfRun = 0;
  std::vector<double> fvRecord;
  MCCommon_850::Record fRecord;
  std::unique_ptr<BayesHost::SavedColumns> fpSaved;  // in the scoring pass
  bool fSaves = false;                               // nothing went wrong with them so far
};
