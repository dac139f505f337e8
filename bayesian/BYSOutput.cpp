// The frame of the output: notes, and which tables appear in which order, charts last.
#include "bayesian/BYSOutput.h"

namespace {

// Sections of the notes table.
constexpr int kFiles = 2;
constexpr int kCaseHandling = 4;

constexpr int kChartTemplates = 3;

void AddCaseNote(const char* label, const char* value) {
  AddNotes(kCaseHandling, BpString(label, true), BpString(value, true));
}

void AddFileNote(const char* label, const std::string& name) {
  AddNotes(kFiles, BpString(label, true), BpString(name, false));
}

}  // namespace

// Tables appear in this order: group statistics, Bayes factors, posterior distributions.
const BYSOutput::Step BYSOutput::kSteps[] = {
    {BSNConst::OneSample, BSNConst::Normal, When::BayesFactor, &BYSOutput::DisplayTTestOutput},
    {BSNConst::OneSample, BSNConst::Normal, When::Posterior, &BYSOutput::DisplayPostDistribution},
    {BSNConst::OneSample, BSNConst::Binomial, When::BayesFactor, &BYSOutput::DisplayBFBinomial},
    {BSNConst::OneSample, BSNConst::Binomial, When::Posterior, &BYSOutput::DisplayPostDistrBinomial},
    {BSNConst::OneSample, BSNConst::Poisson, When::BayesFactor, &BYSOutput::DisplayBFPoisson},
    {BSNConst::OneSample, BSNConst::Poisson, When::Posterior, &BYSOutput::DisplayPostDistrPoisson},
    {BSNConst::Related, BSNConst::Normal, When::BayesFactor, &BYSOutput::DisplayRelatedTTestOutput},
    {BSNConst::Related, BSNConst::Normal, When::Posterior, &BYSOutput::DisplayRelatedPostDistribution},
    {BSNConst::Independent, BSNConst::Normal, When::Always, &BYSOutput::DisplayGroupIndep},
    {BSNConst::Independent, BSNConst::Normal, When::BayesFactor, &BYSOutput::DisplatyBFIndep},
    {BSNConst::Independent, BSNConst::Normal, When::Posterior, &BYSOutput::DisplayPostDistrIndep},
    {BSNConst::Correlation, BSNConst::Normal, When::BayesFactor, &BYSOutput::DisplayBFCorrel},
    {BSNConst::Correlation, BSNConst::Normal, When::Posterior, &BYSOutput::DisplayDistrCorrel},
    {BSNConst::LogLinear, BSNConst::Normal, When::Always, &BYSOutput::DisplayLogLinearOutput},
    // With both analyses each of them starts with the analysis of variance.
    {BSNConst::Regression, BSNConst::Normal, When::BayesFactor, &BYSOutput::DisplayAnovaReg},
    {BSNConst::Regression, BSNConst::Normal, When::BayesFactor, &BYSOutput::DisplayBFReg},
    {BSNConst::Regression, BSNConst::Normal, When::Posterior, &BYSOutput::DisplayAnovaReg},
    {BSNConst::Regression, BSNConst::Normal, When::Posterior, &BYSOutput::DisplayEstCoefReg},
    {BSNConst::Regression, BSNConst::Normal, When::Posterior, &BYSOutput::DisplayEstVarErrReg},
    {BSNConst::Regression, BSNConst::Normal, When::Posterior, &BYSOutput::DisplayPreRespReg},
    {BSNConst::Regression, BSNConst::Normal, When::Posterior, &BYSOutput::DisplayFtestReg},
    {BSNConst::Anova, BSNConst::Normal, When::BayesFactor, &BYSOutput::DisplayBFAnova},
    {BSNConst::Anova, BSNConst::Normal, When::Posterior, &BYSOutput::DisplayEstCoefReg},
    {BSNConst::Anova, BSNConst::Normal, When::Posterior, &BYSOutput::DisplayEstVarErrReg},
};

BYSOutput::BYSOutput(ProcedureDataSource& dataSource, BpProcedure* procedure, const BYSValidSpecs* specs,
                     BYSFactory* factory)
    : fDataSource(dataSource),
      fpProcedure(procedure),
      fSpecs(*specs),
      fChartDictionary(PathFactory::getPathInstance(kChartTemplates)),
      fTemplateFolder(STemplate::Get()),
      fFactory(*factory),
      fStatSettings(*specs->GetStatSettingsPtr()),
      fIntervalLabel(MakeIntervalLabel(fStatSettings.GetCILevel())) {
  fChartDictionary.SetProcedure(specs->GetProcTitle());
}

BYSOutput::~BYSOutput() = default;

void BYSOutput::AddToNotesTable() {
  const bool listwise = fStatSettings.GetMissScope() != BSNConst::ByTest;
  const bool weighted = fStatSettings.GetFrequencyWeightVar() >= 0;
  AddCaseNote("Definition of Missing", "MISSING is EXCLUDE ...");
  AddCaseNote("Cases Used", listwise ? "Cases used listwise ..." : "Cases used analysiswise ...");
  AddCaseNote("Weight Handling",
              weighted ? "Weight values are rounded to the nearest whole numbers" : "not applicable");
}

void BYSOutput::CompleteNotesTable() {
  if (fSpecs.GetOutFOptionMODEL()) AddFileNote("Model File", fSpecs.GetOutFModelFileName());
  if (fSpecs.GetOutFOptionPARAMETER()) AddFileNote("Parameter File", fSpecs.GetOutFParameterFileName());
}

void BYSOutput::DisplayOutput() {
  fpCompSettings = fFactory.GetBSNSettings();
  fpOutputStats = fFactory.GetOutputStats();
  for (const Step& step : kSteps) {
    if (IsWanted(step.when) && step.model == fpCompSettings->GetModelType() &&
        step.distribution == fpCompSettings->GetTestDistType()) {
      (this->*step.display)();
    }
  }
  if (IsWanted(When::Posterior)) CreatePosteriorChart();
}

bool BYSOutput::IsWanted(When when) const {
  const BSNConst::AnalysTypes analysis = fpCompSettings->GetAnalysType();
  if (when == When::BayesFactor) return analysis == BSNConst::BayesFactor || analysis == BSNConst::Both;
  if (when == When::Posterior) return analysis == BSNConst::Posterior || analysis == BSNConst::Both;
  return true;
}
