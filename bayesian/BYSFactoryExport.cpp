// The model file: one document for each split with a model.
#include <fstream>

#include "bayesian/BYSFactory.h"
#include "platform/host/Files.h"

bool BYSFactory::CreatePMMLPooler() {
  std::string name;
  if (fSpecs.GetOutFOptionMODEL()) {
    name = fSpecs.GetOutFModelFileName();
  } else if (fSpecs.GetOutFOptionPARAMETER()) {
    name = fSpecs.GetOutFParameterFileName();
  }
  if (!name.empty()) fpPooler = std::make_unique<ZARQ_PMMLPooling>(fDataSource, name);
  return true;
}

// Of the current split, whose model was built.
void BYSFactory::SavePMMLFile() {
  std::string name;
  if (fpPooler != nullptr) fpPooler->GetCurrentPMMLName(name, fpInpAdapt->GetSplitValues());
  const VarList* varList = fvVarLists[static_cast<std::size_t>(fSplitIndex)].get();
  const auto* stats =
      dynamic_cast<const MCBSN_850::BSNMultiRegOutputStats*>(GetBSNComponent()->GetOutputStats());
  if (name.empty() || GetBSNSettings() == nullptr || varList == nullptr || stats == nullptr) return;
  WritePMMLFile(name, *varList, *stats);
}

// The host finds out from the file itself whether it was written whole.
void BYSFactory::WritePMMLFile(const std::string& name, const VarList& varList,
                               const MCBSN_850::BSNMultiRegOutputStats& stats) const {
  constexpr int kPMMLFile = 6;
  const ApplicationParams& application = GetAppParams();
  const MCCommon_850::MCApplicInfo4XML info{application.fName, application.fVersion,
                                            application.fDescription};
  ExtNameStr file;
  file.SetGeneric(name);
  std::ofstream stream;
  if (!file.Open(stream, std::ios::out | std::ios::trunc | std::ios::binary)) return;
  stats.ExportPMML(varList, stream, fSpecs.GetOutFOptionMODEL(), info);
  stream.close();
  TestAndStoreToPes(name, kPMMLFile, 1);
}
