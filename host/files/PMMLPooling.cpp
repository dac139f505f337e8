// The model file of a run.
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <pugixml.hpp>
#include <set>
#include <system_error>
#include <utility>

#include "host/data/DataSet.h"
#include "host/files/OutputFile.h"
#include "host/files/PmmlJoin.h"
#include "host/files/TempNames.h"
#include "host/output/CommandOutput.h"
#include "host/output/HostKeys.h"
#include "host/session/Session.h"
#include "platform/component/Common.h"
#include "platform/host/Files.h"
#include "platform/host/Output.h"

using BayesHost::OutputFile;
using BayesHost::PmmlJoin;
using BayesHost::Session;
using BayesHost::SplitField;

namespace {

std::string ReadAll(const std::string& name) {
  std::ifstream stream(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

bool IsMissing(const OBS& value) {
  return value == OBS(std::string()) || value == OBS(MCCommon_850::MCMV::Missing());
}

// The values of split variable i, each once, in the order of the splits.
std::vector<std::pair<OBS, std::string>> ListValues(std::size_t i, const ZARQ_Variable& variable) {
  std::vector<OBS> values;
  for (const auto& group : Session::Current().GetData()->GetGroups()) values.push_back(group.fvKey[i]);
  std::vector<std::pair<OBS, std::string>> labelled;
  std::set<std::pair<double, std::string>> known;
  for (const OBS& value : values) {
    const auto key =
        value.IsString() ? std::pair(0.0, value.GetString()) : std::pair(value.GetNumber(), std::string());
    if (!IsMissing(value) && known.insert(key).second) {
      labelled.emplace_back(value, variable.GetValueLabel(value));
    }
  }
  return labelled;
}

std::vector<SplitField> ListSplitFields(const ProcedureDataSource& dataSource) {
  std::vector<SplitField> fields;
  for (int i = 0; i < dataSource.GetNSplitVars(); ++i) {
    const ZARQ_Variable& variable = dataSource.GetVariable(dataSource.GetSplitVarIndex(i));
    const bool hasLabel = variable.GetPreferredLabel() != variable.GetName();
    fields.push_back({variable.GetName(), hasLabel ? variable.GetPreferredLabel() : std::string(),
                      variable.IsString(), ListValues(static_cast<std::size_t>(i), variable)});
  }
  return fields;
}

}  // namespace

struct ZARQ_PMMLPooling::State {
  State(const ProcedureDataSource& dataSource, const std::string& name);

  void AwaitDocument(const std::vector<const OBS*>& splitValues);
  void TakeDocument();
  void Write();
  // Runs an action that throws std::system_error; a failure is shown and gives the file up.
  template <typename Action>
  void Try(Action action);
  void Show(const char* key, BpErrorLevel level, const std::string& reason);

  const ProcedureDataSource& fDataSource;
  std::string fName;  // as the command gives it
  BayesHost::TempNames fTempNames;
  std::string fDocumentName;         // of the document on its way
  std::optional<OutputFile> fFile;   // nothing: given up
  std::optional<PmmlJoin> fJoin;     // with split files
  std::string fDocument;             // without
  std::vector<const OBS*> fvValues;  // of the split whose document is on its way
  bool fIsAwaited = false;
};

template <typename Action>
void ZARQ_PMMLPooling::State::Try(Action action) {
  try {
    action();
  } catch (const std::system_error& error) {
    fFile.reset();
    Show(BayesHost::kHostFileNotWritten, kBpErrorLevelError, error.code().message());
  }
}

void ZARQ_PMMLPooling::State::Show(const char* key, BpErrorLevel level, const std::string& reason) {
  BpComposite text(key, true);
  text.Add(BpString(fName, false));
  if (!reason.empty()) text.Add(BpString(reason, false));
  text.Finish();
  BpError(text, kBpErrorShowAll, level);
}

// A folder that can't be written to shows before anything is computed.
ZARQ_PMMLPooling::State::State(const ProcedureDataSource& dataSource, const std::string& name)
    : fDataSource(dataSource), fName(name) {
  Try([&] {
    fFile.emplace(BayesHost::ResolvePath(Session::Current().GetCommand(), name));
    if (dataSource.IsSplitFile()) fJoin.emplace(ListSplitFields(dataSource));
  });
}

// Each document has a file of its own: a file that is emptied and written again is slow where the system
// brings it to the disk first.
void ZARQ_PMMLPooling::State::AwaitDocument(const std::vector<const OBS*>& splitValues) {
  if (!fFile) return;
  Try([&] {
    fDocumentName = fTempNames.Make("bayes_model_");
    if (fDocumentName.empty()) throw std::system_error(errno, std::generic_category());
    fvValues = splitValues;
    fIsAwaited = true;
  });
}

// A document that isn't whole was cut short by a temporary folder that is full.
void ZARQ_PMMLPooling::State::TakeDocument() {
  if (!std::exchange(fIsAwaited, false) || !fFile) return;
  Try([&] {
    std::string document = ReadAll(fDocumentName);
    std::filesystem::remove(fDocumentName);
    pugi::xml_document parsed;
    const bool whole =
        fJoin ? fJoin->Add(document, fvValues) : static_cast<bool>(parsed.load_string(document.c_str()));
    if (!whole) throw std::system_error(ENOSPC, std::generic_category());
    if (parsed.child("PMML").child("GeneralRegressionModel")) fDocument = std::move(document);
  });
}

void ZARQ_PMMLPooling::State::Write() {
  if (fJoin && fJoin->CountSegments() > 0) {
    fJoin->Write(fFile->Stream());
  } else if (!fDocument.empty()) {
    fFile->Stream() << fDocument;
  } else {
    Show(BayesHost::kHostNoModelForFile, kBpErrorLevelWarning, {});
    return;
  }
  fFile->Commit();
}

ZARQ_PMMLPooling::ZARQ_PMMLPooling(const ProcedureDataSource& dataSource, const std::string& fileName)
    : fpState(std::make_unique<State>(dataSource, fileName)) {}
ZARQ_PMMLPooling::~ZARQ_PMMLPooling() = default;

void ZARQ_PMMLPooling::GetCurrentPMMLName(std::string& name, const std::vector<const OBS*>& splitValues) {
  fpState->TakeDocument();
  fpState->AwaitDocument(splitValues);
  name = fpState->fIsAwaited ? fpState->fDocumentName : std::string();
}

// Of a run that was stopped there is no whole model.
void ZARQ_PMMLPooling::CompletePMML() {
  fpState->TakeDocument();
  if (fpState->fFile && !Session::Current().IsFatal()) fpState->Try([this] { fpState->Write(); });
  fpState->fFile.reset();
}
