#include "bayesian/bayesentry.h"

#include "bayesian/BYSAssert.h"
#include "bayesian/BYSFactory.h"
#include "bayesian/BYSOutput.h"
#include "bayesian/BYSParser.h"
#include "bayesian/BYSProcAdapter.h"
#include "bayesian/BYSValidSpecs.h"
#include "platform/host/Output.h"
#include "platform/host/Run.h"
#include "platform/host/Tokens.h"

namespace {

constexpr const char* kSource = "bayesentry";

// Pass 0: every split's data are read once and its settings completed. True when the run may go on. With
// split files a failing split doesn't stop the others.
bool RunMetadataPass(const ProcedureDataSource& dataSource, BYSFactory& factory) {
  bool ok = true;
  while (!dataSource.FatalError() && ok && factory.StartNewSplit()) {
    bool result = ok;
    if (!dataSource.FatalError()) result = factory.ProcedureDataPass(true);
    const bool splitFile = factory.GetInputAdapter()->GetSplitFile();
    if (splitFile) result = ok;
    if (!dataSource.FatalError() && result) result = factory.CompleteMetaData();
    if (!splitFile) ok = result;
  }
  return ok;
}

// Pass 1: every split's model is built and shown.
void RunComponentPass(const ProcedureDataSource& dataSource, BYSFactory& factory, BYSOutput& output) {
  while (!dataSource.FatalError() && factory.StartNewSplit()) {
    if (!dataSource.FatalError() && factory.RunBSNComponent()) output.DisplayOutput();
    factory.ReleaseSplit();
  }
}

// Pass 2: every split's cases get their predictions.
void RunScoringPass(const ProcedureDataSource& dataSource, BYSFactory& factory) {
  if (!factory.PrepareScoringPass()) return;
  while (!dataSource.FatalError() && factory.StartNewSplit()) {
    if (!dataSource.FatalError()) factory.ScoringDataPass();
  }
}

void RunPasses(const ProcedureDataSource& dataSource, BYSFactory& factory, BYSOutput& output,
               int maxObsAdded) {
  bool run = RunMetadataPass(dataSource, factory);
  factory.CompleteDataPass();
  if (run) run = factory.CreatePMMLPooler();
  if (!dataSource.FatalError() && run) run = factory.PrepareComponentRun();
  if (run) RunComponentPass(dataSource, factory, output);
  factory.CompleteDataPass();
  output.CompleteNotesTable();
  const bool written = factory.CompleteExtFileIO();
  if (!dataSource.FatalError() && run) run = written;
  if (!dataSource.FatalError() && run && maxObsAdded > 0) RunScoringPass(dataSource, factory);
}

}  // namespace

void BayesEntry(void* /*context*/, BSNConst::ModelTypes type, const char* commandName,
                const char* procTitle) {
  BpProcedure procedure(procTitle == nullptr ? "" : procTitle, 10);
  ZARQ_TokenSequence tokens(true);
  ProcedureDataSource dataSource;
  BYS::Assert(commandName != nullptr, kSource, "commandName != 0");
  BYS::Assert(procTitle != nullptr, kSource, "procTitle != 0");

  BYSValidSpecs specs(dataSource, procTitle);
  specs.GetStatSettingsPtr()->SetModelType(type, true);
  BYSParser parser(tokens, specs, dataSource, commandName, procTitle);
  if (!parser.GetCommandSpecifications()) return;
  if (!dataSource.FatalError()) specs.CompleteSpecs();
  if (specs.GetCompSettingsPtr() == nullptr || dataSource.FatalError()) return;

  BEPesRepos::BEPesClear();
  const int maxObsAdded = specs.GetMaxObsAdded();
  if (dataSource.ColumnCount() == 0) {
    ACAInpAdaptMsg(dataSource).NoValidCasesForSelect();
  } else if (maxObsAdded > 0) {
    dataSource.SetMaxObsAdded(static_cast<unsigned>(maxObsAdded));
  }

  BYSFactory factory(&specs, dataSource, &procedure);
  BYSOutput output(dataSource, &procedure, &specs, &factory);
  output.AddToNotesTable();
  RunPasses(dataSource, factory, output, maxObsAdded);
  BEPesRepos::BEPesCheckError();
}

void bayesone_(void* context) {
  BayesEntry(context, BSNConst::OneSample, "BAYES ONESAMPLE", "Bayesian One-Sample");
}
void bayesrel_(void* context) {
  BayesEntry(context, BSNConst::Related, "BAYES RELATED", "Bayesian Related");
}
void bayesidp_(void* context) {
  BayesEntry(context, BSNConst::Independent, "BAYES INDEPENDENT", "Bayesian Independent");
}
void bayescor_(void* context) {
  BayesEntry(context, BSNConst::Correlation, "BAYES CORRELATION", "Bayesian Correlation");
}
void bayesrgr_(void* context) {
  BayesEntry(context, BSNConst::Regression, "BAYES REGRESSION", "Bayesian Regression");
}
void bayesanv_(void* context) {
  BayesEntry(context, BSNConst::Anova, "BAYES ANOVA", "Bayesian ANOVA");
}
void bayeslgl_(void* context) {
  BayesEntry(context, BSNConst::LogLinear, "BAYES LOGLINEAR", "Bayesian Loglinear");
}
