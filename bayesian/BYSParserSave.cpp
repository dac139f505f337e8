// What a model leaves behind: predictions saved as variables, and the model itself in a file.
#include <algorithm>

#include "bayesian/BYSParser.h"
#include "platform/host/Files.h"

namespace {

// In the order of the options.
struct SavedStatistic {
  const char* keyword;
  const char* root;
  const char* label;
};
constexpr SavedStatistic kSaved[BYSValidSpecs::kNSaveOptions] = {
    {"MEANPRED", "MeanPredicted", "Predicted Value Mean..."},
    {"VARIANCE", "Variance", "Predicted Value Variance..."},
    {"MODE", "Mode", "Predicted Value Mode..."},
    {"CIMEANPREDL", "CIMeanPredictedLower", "Predicted Value Lower..."},
    {"CIMEANPREDU", "CIMeanPredictedUpper", "Predicted Value Upper..."},
};

}  // namespace

bool BYSParser::ProcessSaveSubCom(const SubComObj& subcommand) {
  for (int option = 0; option < BYSValidSpecs::kNSaveOptions; ++option) {
    if (!ProcessSaveVar(subcommand, static_cast<BYSValidSpecs::SaveOptions>(option))) return false;
  }
  const std::vector<std::string>& names = fSpecs.GetSaveVarNames();
  fSettings.SetComputeVarianceInScoring(!names[BYSValidSpecs::kVariance].empty() ||
                                        !names[BYSValidSpecs::kCIMeanPredL].empty() ||
                                        !names[BYSValidSpecs::kCIMeanPredU].empty());
  const auto isSaved = [](const std::string& name) { return !name.empty(); };
  const auto nSaved = static_cast<int>(std::count_if(names.begin(), names.end(), isSaved));
  if (nSaved == 0) fMessage.GenericWarning("Subcom ^1, names nothing ...", subcommand.getName());
  fSpecs.SetMaxObsAdded(nSaved);
  return true;
}

// A bare keyword has its default root completed by a suffix; a name is taken as it is.
bool BYSParser::ProcessSaveVar(const SubComObj& subcommand, BYSValidSpecs::SaveOptions option) {
  const SavedStatistic& saved = kSaved[option];
  const ParamObj* param = subcommand.getParamObj(saved.keyword);
  if (param == nullptr) return true;
  const Tokens& given = param->getTokenList();
  const std::string name = given.empty() ? saved.root : given.front().GetText();
  if (name.empty()) {
    fMessage.GenericError("Param ^1, subcom ^2, at least one value ...", saved.keyword, subcommand.getName());
    return false;
  }
  fSpecs.GetSaveVarNames()[option] = name;
  fSpecs.GetSaveVarSuff()[option] = given.empty();
  fSpecs.GetSaveVarLabels()[option] = saved.label;
  fSpecs.GetSaveVarNotes()[option] = saved.label;
  fSpecs.GetSaveVarFormats()[option] = fSpecs.GetSaveFormat(option);
  return true;
}

bool BYSParser::ProcessOutFileSubCom(const SubComObj& subcommand) {
  if (subcommand.getParamObj("MODEL") != nullptr && subcommand.getParamObj("PARAMETER") != nullptr) {
    fMessage.ParamExclusive("MODEL", "PARAMETER", "OUTFILE");
    return false;
  }
  fSpecs.SetOutFModelFileName(ReadExportFile(subcommand, "MODEL"));
  fSpecs.SetOutFParameterFileName(ReadExportFile(subcommand, "PARAMETER"));
  return true;
}

// Empty when the parameter is absent, or the data can't give a model to a file.
std::string BYSParser::ReadExportFile(const SubComObj& subcommand, const char* name) const {
  std::string path;
  const ParamObj* param = subcommand.getParamObj(name);
  if (param == nullptr || !param->getFilePath(path, true, true)) return {};
  if (CanExportPMML(fDataSource, true)) return path;
  fMessage.GenericWarning("Parameter ^1 is ignored when ensembele is on, subcommand ^2...", name,
                          subcommand.getName());
  return {};
}
