#include "bayesian/BYSFactory.h"

#include "bayesian/BYSAssert.h"
#include "platform/host/Run.h"

namespace {

constexpr const char* kSource = "BYSFactory";

constexpr int kNoValidCases = 410003;
constexpr int kNoComponent = 410000;
constexpr double kMaxSeed = 4294967295.0;

MCCommon_850::MCStatus MakeError(int code) {
  return {code, MCCommon_850::MCStatus::Severity::Error};
}

}  // namespace

BYSProgress::~BYSProgress() {
  casctr_(-1);
}

void BYSProgress::ReportProgress(MCCommon_850::ProgressReport& report) {
  casctr_(report.GetCount("records"));
}

BYSFactory::BYSFactory(BYSValidSpecs* specs, ProcedureDataSource& dataSource, BpProcedure* procedure)
    : fSpecs(*specs),
      fDataSource(dataSource),
      fpInpAdapt(std::make_unique<BYSProcAdapter>(specs, dataSource)),
      fAdapterMessages(dataSource) {
  if (procedure != nullptr) fpInpAdapt->SetSplitFile(procedure, true, true, true);
  fpRecIter = std::make_unique<ACAProcDataSourceIter>(*fpInpAdapt, true);
  const ACAProcDataSourceIter::State state = fpRecIter->GetState();
  if (state == ACAProcDataSourceIter::kNoCase) {
    if (!IsSplitFile()) fStatus = MakeError(kNoValidCases);
    ReportNoValidCases();
  } else if (state == ACAProcDataSourceIter::kNoValidCase) {
    fStatus = MakeError(kNoValidCases);
    fAdapterMessages.NoValidCases();
  }
}

BYSFactory::~BYSFactory() = default;

void BYSFactory::ReportNoValidCases() const {
  if (IsSplitFile()) {
    fAdapterMessages.NoValidCasesSplit();
  } else {
    fAdapterMessages.NoValidCases();
  }
}

bool BYSFactory::IsCancelled() const {
  const MCCommon_850::MCCancelQuery* cancel = fSpecs.GetCompSettingsPtr()->GetCancelPointer();
  return cancel != nullptr && cancel->IsCancelled();
}

bool BYSFactory::StartNewSplit() {
  if (IsSplitFile()) fStatus = {};
  if (fpRecIter == nullptr || !fpRecIter->NewSplit()) return false;
  ++fSplitIndex;
  return true;
}

bool BYSFactory::ProcedureDataPass(bool reportEmpty) {
  MCCommon_850::MCStatus status;
  bool ok = true;
  if (!fpRecIter->HasRecord()) {
    ok = false;
    status = MakeError(kNoValidCases);
    if (reportEmpty) ReportNoValidCases();
  }
  while (!status.IsError() && fpRecIter->HasRecord() && !IsCancelled()) {
    fpRecIter->AdvanceRun();
    if (fpRecIter->GetState() == ACAProcDataSourceIter::kNoValidCase) {
      status = MakeError(kNoValidCases);
      ok = false;
    }
  }
  if (!fStatus.IsError()) fStatus = status;
  return fpInpAdapt->CompleteSplit() && ok;
}

bool BYSFactory::CompleteMetaData() {
  std::unique_ptr<Settings> settings;
  std::unique_ptr<VarList> varList;
  bool ok = !fStatus.IsError();
  int splitSize = 0;
  if (ok || !IsSplitFile()) settings = std::make_unique<Settings>();
  ok = ok && fSpecs.CompleteSettings(*settings, fpInpAdapt.get());
  if (ok) {
    BYS::Assert(fSortVars.empty(), kSource, "fSortVars == sortVars");
    varList = std::make_unique<VarList>();
    ok = fSpecs.CompleteVarList(varList.get(), fpInpAdapt.get());
  }
  if (ok) {
    splitSize = fpInpAdapt->GetSplitSize();
  } else if (IsSplitFile()) {
    settings.reset();
    varList.reset();
  }
  fvSettings.push_back(std::move(settings));
  fvVarLists.push_back(std::move(varList));
  fvSplitSizes.push_back(splitSize);
  return ok;
}

void BYSFactory::CompleteDataPass() {
  fpInpAdapt->CompletePass();
}

bool BYSFactory::CompleteExtFileIO() {
  if (fpPooler != nullptr) fpPooler->CompletePMML();
  return true;
}

bool BYSFactory::PrepareComponentRun() {
  if (fStatus.IsError()) return false;
  BYS::Assert(fpInpAdapt != nullptr && fpRecIter != nullptr, kSource, "fpInpAdapt != 0 && fpRecIter != 0");
  fpRecIter->Restart();
  fSplitIndex = -1;
  return true;
}

bool BYSFactory::RunBSNComponent() {
  BYSProgress progress;
  if (fStatus.IsError()) return false;
  BYS::Assert(fpInpAdapt != nullptr && fpRecIter != nullptr, kSource, "fpInpAdapt != 0 && fpRecIter != 0");
  if (Settings* settings = GetBSNSettings()) settings->SetProgressListener(&progress);

  std::unique_ptr<ACADataFileIter> dataFile;
  bool ok = BuildComponent();
  if (ok) dataFile = FillDataFile();
  ok = dataFile != nullptr;
  const bool completed = fpInpAdapt->CompleteSplit();
  if (completed && ok) {
    ok = BuildModel(*dataFile);
  } else {
    ok = false;
    if (IsSplitFile()) ProcedureDataPass(false);
  }
  if (Settings* settings = GetBSNSettings()) settings->SetProgressListener(nullptr);
  return ok;
}

void BYSFactory::ReleaseSplit() {
  if (fSpecs.GetMaxObsAdded() > 0) return;
  const auto split = static_cast<std::size_t>(fSplitIndex);
  if (split < fvComponents.size()) fvComponents[split].reset();
  fvVarLists[split].reset();
  fvSettings[split].reset();
}

// Makes the current split's component, or a null in its place.
bool BYSFactory::BuildComponent() {
  Settings* pCompSettings = GetBSNSettings();
  VarList* pMCVarList = fvVarLists[static_cast<std::size_t>(fSplitIndex)].get();
  std::unique_ptr<Component> component;
  if (pCompSettings != nullptr && pMCVarList != nullptr) {
    ChooseSeed(*pCompSettings);
    component = std::make_unique<Component>(*pCompSettings, *pMCVarList);
    fStatus = component == nullptr ? MakeError(kNoComponent) : component->GetStatus();
    if (!fStatus.IsOK()) DisplayMessage(fStatus);
  } else if (!IsSplitFile()) {
    BYS::Assert(pCompSettings != nullptr, kSource, "pCompSettings!=0");
    BYS::Assert(pMCVarList != nullptr, kSource, "pMCVarList != 0");
  }
  const bool ok = component != nullptr && !fStatus.IsError();
  fvComponents.push_back(std::move(component));
  return ok;
}

// Analyses that simulate need a seed that can be named, so that the run can be repeated.
bool BYSFactory::NeedsSeed(const Settings& settings) const {
  switch (settings.GetModelType()) {
    case BSNConst::Correlation:
    case BSNConst::LogLinear:
      return true;
    case BSNConst::OneSample:
    case BSNConst::Related:
      return settings.GetTestDistType() == BSNConst::Normal && settings.GetMethodType() == BSNConst::MCA;
    default:
      return false;
  }
}

void BYSFactory::ChooseSeed(Settings& settings) {
  if (!NeedsSeed(settings) || settings.GetRandomSeed() != 0) return;
  settings.SetRandomSeed(static_cast<unsigned long>(fRandom.Draw() * kMaxSeed));
}

// The current split's records, or null when there are none to analyse.
std::unique_ptr<ACADataFileIter> BYSFactory::FillDataFile() {
  const int splitSize = fvSplitSizes[static_cast<std::size_t>(fSplitIndex)];
  if (!fSortVars.empty() && splitSize < 1) return nullptr;
  auto dataFile = std::make_unique<ACADataFileIter>(*fpInpAdapt, fSortVars, splitSize);
  if (dataFile->GetState() == ACAProcDataSourceIter::kNoValidCase) {
    ReportNoValidCases();
    return nullptr;
  }
  if (!dataFile->FillDataFile(*fpRecIter)) return nullptr;
  return dataFile;
}

bool BYSFactory::BuildModel(ACADataFileIter& dataFile) {
  dataFile.Restart();
  fStatus = GetBSNComponent()->BuildModel(dataFile);
  const bool ok = !fStatus.IsError();
  if (fvSettings.size() > 1) dataFile.CloseDataFile();
  DisplayAllMessages();
  if (fStatus.IsWarning()) DisplayMessage(fStatus);
  if (ok) SavePMMLFile();
  if (ok && !fStatus.IsError()) fStatus = GetBSNComponent()->GetStatus();
  return ok;
}

MCBSN_850::BSNComponent* BYSFactory::GetBSNComponent() const {
  return fvComponents[static_cast<std::size_t>(fSplitIndex)].get();
}

MCBSN_850::BSNSettings* BYSFactory::GetBSNSettings() const {
  return fvSettings[static_cast<std::size_t>(fSplitIndex)].get();
}

const MCBSN_850::BSNOutputStats* BYSFactory::GetOutputStats() const {
  Component* pComponent = GetBSNComponent();
  BYS::Assert(!fStatus.IsError() && pComponent != nullptr, kSource,
              "!fStatus.IsError() && (pComponent != 0)");
  return pComponent->GetOutputStats();
}
