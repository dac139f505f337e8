#include "bayesian/BYSValidSpecs.h"

#include <algorithm>
#include <sstream>

#include "bayesian/BYSAssert.h"
#include "platform/host/Charts.h"
#include "platform/host/Files.h"
#include "platform/host/Output.h"

namespace {

constexpr const char* kSource = "BYSValidSpecs";

// A host that offers next to no memory gets the component's minimum.
constexpr int kTinyMemCacheKB = 240;
constexpr int kMinMemCacheKB = 1024;

}  // namespace

std::string BYSTempFileNamer::GetName() {
  std::string name;
  return FormTempName("bys_", name) ? name : std::string();
}

BYSValidSpecs::BYSValidSpecs(const ProcedureDataSource& dataSource, const char* procTitle)
    : fDataSource(dataSource),
      fProcTitle(procTitle),
      fpStatSettings(std::make_unique<Settings>()),
      fvSaveVarNames(kNSaveOptions),
      fvSaveVarSuff(kNSaveOptions, false),
      fvSaveVarLabels(kNSaveOptions),
      fvSaveVarNotes(kNSaveOptions),
      fvSaveVarFormats(kNSaveOptions),
      fvPrintCellOpts{true, false, false, false, false},
      fvPrintStatOpts{true, false} {
  fpStatSettings->SetFrequencyWeightVar(dataSource.GetWeightVarIndex());
}

BYSValidSpecs::~BYSValidSpecs() = default;

MCBSN_850::BSNSettings* BYSValidSpecs::CompleteSpecs() {
  BYS::Assert(fpStatSettings != nullptr, kSource, "fpStatSettings != 0");
  fpVarValidSpecs = std::make_unique<ACAVarValidSpecs>(true, true, true);
  fpCompSettings = std::make_unique<Settings>(*fpStatSettings);
  fpThreadFactory = std::make_unique<ACAThreadFactory>();
  fpStopProcessor = std::make_unique<ACAStopProcessor>(0.0);
  fpTempFileNamer = std::make_unique<BYSTempFileNamer>();
  RegisterVariables(fpStatSettings->GetMissScope() == BSNConst::ByTest);
  CompleteRunServices();
  fpCompSettings->IsValidSettings();
  return fpCompSettings.get();
}

// The order decides the slots, and with them the layout of every record.
void BYSValidSpecs::RegisterVariables(bool missingPasses) {
  const Settings& stat = *fpStatSettings;
  Settings& comp = *fpCompSettings;
  const auto addOne = [&](int index) {
    return fpVarValidSpecs->AddVariable(index, false, missingPasses, true, true);
  };
  const auto addList = [&](const std::vector<int>& indices, bool categorical) {
    std::vector<int> slots;
    fpVarValidSpecs->AddVariables(indices, slots, categorical, missingPasses, true, missingPasses);
    return slots;
  };

  if (stat.GetDependentVar() >= 0) comp.SetDependVar(addOne(stat.GetDependentVar()));
  if (stat.GetFrequencyWeightVar() >= 0) comp.SetFrequencyWeightVar(fpVarValidSpecs->SetWeightVar());
  if (stat.GetRegrWeightVar() >= 0) comp.SetRegrWeightVar(addOne(stat.GetRegrWeightVar()));
  if (!stat.GetFullModFactors().empty()) {
    comp.SetFullModFactors(addList(stat.GetFullModFactors(), true));
    comp.SetFullModFactorNCategs(std::vector<int>(stat.GetFullModFactors().size(), 1));
  }
  if (!stat.GetFullModCovariates().empty()) {
    comp.SetFullModCovariates(addList(stat.GetFullModCovariates(), false));
  }
  if (!stat.GetFactors().empty()) RegisterFactors(missingPasses);
  if (!stat.GetCovariates().empty()) comp.SetCovariates(addList(stat.GetCovariates(), false));
  if (!stat.Get2ndRelatedList().empty()) comp.Set2ndRelatedList(addList(stat.Get2ndRelatedList(), false));
  if (stat.GetGroupVar() >= 0) RegisterGroup(missingPasses);
  if (!stat.GetFTests().empty()) TranslateFTests();
  if (!stat.GetPlotFactors().empty()) comp.SetPlotFactors(addList(stat.GetPlotFactors(), true));
  if (!stat.GetPlotCovars().empty()) comp.SetPlotCovars(addList(stat.GetPlotCovars(), false));
}

// A binomial test variable is recoded: the component sees a free slot with 0 and 1, the raw values stay in a
// slot of their own.
void BYSValidSpecs::RegisterFactors(bool missingPasses) {
  const std::vector<int>& factors = fpStatSettings->GetFactors();
  std::vector<int> slots;
  int nCategories = 1;
  if (fpCompSettings->GetTestDistType() == BSNConst::Binomial) {
    nCategories = 2;
    for (std::size_t i = 0; i < factors.size(); ++i) {
      fvBinVarRec.push_back(fpVarValidSpecs->AddVariable(factors[i], fvBinInfoElems[i]._isString,
                                                         missingPasses, true, missingPasses));
      slots.push_back(fpVarValidSpecs->AddFreeVariable(false));
    }
  } else {
    fpVarValidSpecs->AddVariables(factors, slots, true, missingPasses, true, missingPasses);
  }
  fpCompSettings->SetFactors(slots);
  fpCompSettings->SetFactorNCategs(std::vector<int>(factors.size(), nCategories));
}

// The same for the grouping variable of two independent samples.
void BYSValidSpecs::RegisterGroup(bool missingPasses) {
  fGroupVarRec = fpVarValidSpecs->AddVariable(fpStatSettings->GetGroupVar(), fGroupInfoElem._isString,
                                              missingPasses, true, missingPasses);
  fpCompSettings->SetGroupVar(fpVarValidSpecs->AddFreeVariable(false));
}

void BYSValidSpecs::TranslateFTests() {
  std::vector<MCBSN_850::BayesFTest> tests = fpStatSettings->GetFTests();
  for (MCBSN_850::BayesFTest& test : tests) {
    std::vector<int> slots;
    for (int index : test.GetVariables()) slots.push_back(fpVarValidSpecs->GetRecVarIndex(index));
    test.SetVariables(slots);
  }
  fpCompSettings->SetFTests(tests);
}

void BYSValidSpecs::CompleteRunServices() {
  fpCompSettings->SetPlotsShown(XDocument::IsShown());
  fpCompSettings->SetThreadFactory(fpThreadFactory.get());
  if (const int threads = getthreads_(); threads > 0) fpCompSettings->SetMaxThreadNum(threads);
  const int memCacheKB = getmcache_();
  fpCompSettings->SetMemCacheKB(memCacheKB <= kTinyMemCacheKB ? kMinMemCacheKB : memCacheKB);
  fpCompSettings->SetCancelPointer(fpStopProcessor.get());
}

void BYSValidSpecs::removeDuplicates(std::vector<int>& values) {
  auto end = values.begin();
  for (int value : values) {
    if (std::find(values.begin(), end, value) == end) *end++ = value;
  }
  values.erase(end, values.end());
}

void BYSValidSpecs::Display() const {
  constexpr std::size_t kPiece = 4096;
  const auto show = [](const std::string& text) { BP_ToFront(BP_Character(text)); };
  show("****************************************************\n");
  show("* This text output is for debugging purposes only. *\n");
  show("* This will not be part of the final release.      *\n");
  show("****************************************************");
  show("BYSValidSpecs display start");
  if (fpVarValidSpecs != nullptr) {
    fpVarValidSpecs->Display();
    fpVarValidSpecs->DisplayVarNames(fDataSource);
  } else {
    show("Variable valid specifications are not defined");
  }
  if (fpCompSettings != nullptr) {
    std::ostringstream stream;
    fpCompSettings->Display(stream);
    const std::string text = stream.str();
    for (std::size_t begin = 0; begin < text.size(); begin += kPiece) show(text.substr(begin, kPiece));
    ACACommonDisplay::DisplayB("Category Order Ascending", fCategAscend);
    ACACommonDisplay::DisplayB("Print Suppress Table", fPrintSuprTable);
    ACACommonDisplay::DisplayBV("Print Cell Options", fvPrintCellOpts);
    ACACommonDisplay::DisplayBV("Print Statistic Options", fvPrintStatOpts);
    ACACommonDisplay::DisplayB("Plot Intercept needed", fPlotIntercept);
    ACACommonDisplay::DisplayB("Plot Error / Variance needed", fPlotErrorVar);
    ACACommonDisplay::DisplayB("Plot Bayes Prediction needed", fPlotBayesPred);
  } else {
    show("Component settings are not defined");
  }
  show("BYSValidSpecs display end");
}
