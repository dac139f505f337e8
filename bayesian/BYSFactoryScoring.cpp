// The scoring pass: predictions of every case as new variables of the data set.
#include "bayesian/BYSAssert.h"
#include "bayesian/BYSFactory.h"
#include "platform/host/Output.h"
#include "platform/host/VarSpec.h"

namespace {

constexpr const char* kSource = "BYSFactory";

constexpr int kNoValidCases = 410003;
constexpr int kNumeric = 0;
constexpr int kScale = 3;
constexpr int kSavedVariables = 3;  // a section of the notes table

// In the order of the save options: what messages call the statistic, and its field.
struct SavedField {
  const char* root;
  double MCBSN_850::BayesEstimation::*field;
};
constexpr SavedField kFields[BYSValidSpecs::kNSaveOptions] = {
    {"MEANPRED", &MCBSN_850::BayesEstimation::fMean},
    {"VARIANCE", &MCBSN_850::BayesEstimation::fVariance},
    {"MODE", &MCBSN_850::BayesEstimation::fMode},
    {"CIMEANPREDL", &MCBSN_850::BayesEstimation::fLower},
    {"CIMEANPREDU", &MCBSN_850::BayesEstimation::fUpper},
};

std::string GetCommandName(BSNConst::ModelTypes type) {
  if (type == BSNConst::Regression) return "BAYES REGRESSION";
  if (type == BSNConst::Anova) return "BAYES ANOVA";
  return {};
}

}  // namespace

bool BYSFactory::PrepareScoringPass() {
  const std::string commandName = GetCommandName(fSpecs.GetStatSettingsPtr()->GetModelType());
  BYS::Assert(!commandName.empty(), kSource, "!commandName.empty()");
  fvSaveVarInds.assign(BYSValidSpecs::kNSaveOptions, -1);
  const bool ok = !fStatus.IsError() && CreateSaveVariables(commandName);
  fpRecIter->NewPass(true);
  fpRecIter->SetLastPass();
  fSplitIndex = -1;
  return ok;
}

// Variables made before one that fails remain.
bool BYSFactory::CreateSaveVariables(const std::string& commandName) {
  for (std::size_t i = 0; i < fvSaveVarInds.size(); ++i) {
    if (!fSpecs.GetSaveVarNames()[i].empty() && !CreateSaveVariable(i, commandName)) return false;
  }
  return true;
}

bool BYSFactory::CreateSaveVariable(std::size_t option, const std::string& commandName) {
  const VarSpecObj varSpec(kFields[option].root, "SAVE", commandName, fDataSource, false);
  ZarqVarName name(fSpecs.GetSaveVarNames()[option]);
  if (fSpecs.GetSaveVarSuff()[option]) {
    if (!varSpec.NewVarNameByRoot(ZarqVarName(name), name)) return false;
  } else if (varSpec.CheckNewVariable(name) >= 0) {
    return false;
  }
  unsigned column = 0;
  ZARQ_Variable& variable = fDataSource.MakeVariable(kNumeric, &column);
  fvSaveVarInds[option] = static_cast<int>(column);
  variable.SetName(name);
  variable.SetLabel(BpString(fSpecs.GetSaveVarLabels()[option], true));
  variable.SetFormat(fSpecs.GetSaveVarFormats()[option]);
  variable.SetWriteFormat(fSpecs.GetSaveVarFormats()[option]);
  variable.SetMeasurementLevel(kScale);
  AddNotes(kSavedVariables, BpString(fSpecs.GetSaveVarNotes()[option], true),
           BpString(name.GetText(), false));
  return true;
}

bool BYSFactory::ScoringDataPass() {
  if (fStatus.IsError() || GetBSNComponent() == nullptr) {
    if (IsSplitFile()) ProcedureDataPass(false);
    return false;
  }
  ZARQ_InputCaseIterator* cases = fpRecIter->GetProcDS();
  const auto* pRegrOutStats = dynamic_cast<const MCBSN_850::BSNMultiRegOutputStats*>(GetOutputStats());
  BYS::Assert(!GetCommandName(GetBSNSettings()->GetModelType()).empty() && pRegrOutStats != nullptr, kSource,
              "pRegrOutStats != 0");
  BYS::Assert(!fvSaveVarInds.empty(), kSource, "!fvSaveVarInds.empty()");

  const MCCommon_850::MCStatus noValidCases(kNoValidCases, MCCommon_850::MCStatus::Severity::Error);
  const bool isFitted = !GetBSNComponent()->GetStatus().IsError();
  MCCommon_850::MCStatus status;
  if (!fpRecIter->HasRecord()) status = noValidCases;
  while (!status.IsError() && fpRecIter->HasRecord() && !IsCancelled()) {
    const MCCommon_850::Record* recordPtr = fpRecIter->Current();
    BYS::Assert(recordPtr != nullptr, kSource, "recordPtr != 0");
    if (isFitted) ScoreRecord(*recordPtr, *pRegrOutStats, *cases);
    fpRecIter->Advance();
    if (fpRecIter->GetState() == ACAProcDataSourceIter::kNoValidCase) status = noValidCases;
  }
  if (!fStatus.IsError()) fStatus = status;
  return !status.IsError();
}

// A case that the model can't predict keeps its missing values.
void BYSFactory::ScoreRecord(const MCCommon_850::Record& record,
                             const MCBSN_850::BSNMultiRegOutputStats& stats,
                             ZARQ_InputCaseIterator& cases) const {
  MCBSN_850::BayesEstimation estimation;
  if (!stats.Score(record, estimation)) return;
  for (std::size_t i = 0; i < fvSaveVarInds.size(); ++i) {
    if (fvSaveVarInds[i] >= 0) cases.SetColumnValue(fvSaveVarInds[i], estimation.*kFields[i].field);
  }
}
