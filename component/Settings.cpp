// The settings record: what was set, what was not, and nothing else.
#include "platform/component/Settings.h"

namespace MCBSN_850 {

using MCCommon_850::MCMV;

namespace {

// A number of iterations or draws that was not given.
constexpr int kNoCount = -1;

}  // namespace

struct BSNSettings::State {
  BSNConst::ModelTypes fModelType = BSNConst::OneSample;
  BSNConst::AnalysTypes fAnalysType = BSNConst::Posterior;
  BSNConst::DistTypes fTestDistType = BSNConst::Normal;
  BSNConst::CorrTests fCorrTest = BSNConst::Pearson;
  BSNConst::MethodTypes fMethodType = BSNConst::AGL;
  BSNConst::CompareTypes fCompareType = BSNConst::NullModel;
  BSNConst::EstBFTypes fEstBFType = BSNConst::EstJZS;
  BSNConst::FixType fFixType = BSNConst::FixNone;
  BSNConst::RegrCompute fRegrCompType = BSNConst::JZS;
  double fRegrComPar = MCMV::Missing();
  int fDependentVar = -1;
  int fFrequencyWeightVar = -1;
  int fRegrWeightVar = -1;
  std::vector<int> fvFullModFactors;
  std::vector<int> fvFullModFactorSizes;
  std::vector<int> fvFullModCovariates;
  std::vector<int> fvFactors;
  std::vector<int> fvFactorSizes;
  std::vector<int> fvCovariates;
  std::vector<int> fvSecondRelatedList;
  int fGroupVar = -1;
  std::vector<int> fvPlotFactors;
  std::vector<int> fvPlotCovars;
  std::vector<int> fvPlotFactorCats;
  double fNullValue = 0;
  std::vector<double> fvNullValues;
  std::vector<double> fvDataVarVals;
  std::vector<double> fvAlterGValues;
  double fSecondGonenPar = MCMV::Missing();
  std::vector<double> fvLambdas;
  std::vector<double> fvRegressors;
  double fCorrCValue = 0;
  bool fEqualDataVar = false;
  double fKappaValue = 1;
  std::vector<BayesFTest> fvFTests;
  BSNConst::PriorTypes fPriorType = BSNConst::Conjugate;
  double fPriorParam1 = MCMV::Missing();
  double fPriorParam2 = MCMV::Missing();
  BSNConst::DistTypes fPriorDistType = BSNConst::Diffuse;
  double fPriorDistParam1 = MCMV::Missing();
  double fPriorDistParam2 = MCMV::Missing();
  BSNConst::DistTypes fMeanDistType = BSNConst::Diffuse;
  double fMeanDistParam1 = MCMV::Missing();
  double fMeanDistParam2 = MCMV::Missing();
  double fMeanDistParam3 = MCMV::Missing();
  double fMeanDistParam4 = MCMV::Missing();
  double fPriorShape = MCMV::Missing();
  double fPriorScale = MCMV::Missing();
  std::vector<double> fvPriorMeans;
  std::vector<double> fvPriorCovMatrix;
  std::vector<double> fvNullPrior1s;
  std::vector<double> fvNullPrior2s;
  std::vector<double> fvAlterPrior1s;
  std::vector<double> fvAlterPrior2s;
  BSNConst::DistTypes fLogLinModel = BSNConst::Multinomial;
  BSNConst::LogLinPriorType fLogLinPriorType = BSNConst::PriorConjugate;
  int fLogLinIntrinsicT = kNoCount;
  std::vector<double> fvLogLinShapes;
  double fCILevel = 95;
  double fTolValue = MCMV::Missing();
  int fMaxIterations = kNoCount;
  int fMCSamples = kNoCount;
  long fPosteriorSamples = kNoCount;
  unsigned long fRandomSeed = 0;
  BSNConst::MissScope fMissScope = BSNConst::ByTest;
  bool fComputeVarianceInScoring = false;
  int fMaxNPlots = 10;
  int fMaxNPlotCategories = 2;
  bool fPlotsShown = true;
  MCCommon_850::MCThreadFactory* fpThreadFactory = nullptr;
  int fMaxThreadNum = 0;
  int fMemCacheKB = 0;
  const MCCommon_850::MCCancelQuery* fpCancelPointer = nullptr;
  MCCommon_850::ProgressListener* fpProgressListener = nullptr;
};

BSNSettings::BSNSettings() : fpState(std::make_unique<State>()) {}
BSNSettings::~BSNSettings() = default;
BSNSettings::BSNSettings(const BSNSettings& other) : fpState(std::make_unique<State>(*other.fpState)) {}

BSNSettings& BSNSettings::operator=(const BSNSettings& other) {
  *fpState = *other.fpState;
  return *this;
}

// clang-format off
void BSNSettings::SetModelType(BSNConst::ModelTypes type, bool /*fixed*/) { fpState->fModelType = type; }
BSNConst::ModelTypes BSNSettings::GetModelType() const { return fpState->fModelType; }
void BSNSettings::SetAnalysType(BSNConst::AnalysTypes value) { fpState->fAnalysType = value; }
BSNConst::AnalysTypes BSNSettings::GetAnalysType() const { return fpState->fAnalysType; }
void BSNSettings::SetTestDistType(BSNConst::DistTypes value) { fpState->fTestDistType = value; }
BSNConst::DistTypes BSNSettings::GetTestDistType() const { return fpState->fTestDistType; }
void BSNSettings::SetCorrTest(BSNConst::CorrTests value) { fpState->fCorrTest = value; }
BSNConst::CorrTests BSNSettings::GetCorrTest() const { return fpState->fCorrTest; }
void BSNSettings::SetMethodType(BSNConst::MethodTypes value) { fpState->fMethodType = value; }
BSNConst::MethodTypes BSNSettings::GetMethodType() const { return fpState->fMethodType; }
void BSNSettings::SetCompareType(BSNConst::CompareTypes value) { fpState->fCompareType = value; }
BSNConst::CompareTypes BSNSettings::GetCompareType() const { return fpState->fCompareType; }
void BSNSettings::SetEstBFType(BSNConst::EstBFTypes value) { fpState->fEstBFType = value; }
BSNConst::EstBFTypes BSNSettings::GetEstBFType() const { return fpState->fEstBFType; }
void BSNSettings::SetFixType(BSNConst::FixType value) { fpState->fFixType = value; }
BSNConst::FixType BSNSettings::GetFixType() const { return fpState->fFixType; }
void BSNSettings::SetRegrCompType(BSNConst::RegrCompute value) { fpState->fRegrCompType = value; }
BSNConst::RegrCompute BSNSettings::GetRegrCompType() const { return fpState->fRegrCompType; }
void BSNSettings::SetRegrComPar(double value) { fpState->fRegrComPar = value; }
double BSNSettings::GetRegrComPar() const { return fpState->fRegrComPar; }
void BSNSettings::SetDependVar(int value) { fpState->fDependentVar = value; }
int BSNSettings::GetDependentVar() const { return fpState->fDependentVar; }
void BSNSettings::SetFrequencyWeightVar(int value) { fpState->fFrequencyWeightVar = value; }
int BSNSettings::GetFrequencyWeightVar() const { return fpState->fFrequencyWeightVar; }
void BSNSettings::SetRegrWeightVar(int value) { fpState->fRegrWeightVar = value; }
int BSNSettings::GetRegrWeightVar() const { return fpState->fRegrWeightVar; }
void BSNSettings::SetFullModFactors(const std::vector<int>& value) { fpState->fvFullModFactors = value; }
const std::vector<int>& BSNSettings::GetFullModFactors() const { return fpState->fvFullModFactors; }
void BSNSettings::SetFullModFactorNCategs(const std::vector<int>& value) { fpState->fvFullModFactorSizes = value; }
const std::vector<int>& BSNSettings::GetFullModFactorSizes() const { return fpState->fvFullModFactorSizes; }
void BSNSettings::SetFullModCovariates(const std::vector<int>& value) { fpState->fvFullModCovariates = value; }
const std::vector<int>& BSNSettings::GetFullModCovariates() const { return fpState->fvFullModCovariates; }
void BSNSettings::SetFactors(const std::vector<int>& value) { fpState->fvFactors = value; }
const std::vector<int>& BSNSettings::GetFactors() const { return fpState->fvFactors; }
void BSNSettings::SetFactorNCategs(const std::vector<int>& value) { fpState->fvFactorSizes = value; }
const std::vector<int>& BSNSettings::GetFactorSizes() const { return fpState->fvFactorSizes; }
void BSNSettings::SetCovariates(const std::vector<int>& value) { fpState->fvCovariates = value; }
const std::vector<int>& BSNSettings::GetCovariates() const { return fpState->fvCovariates; }
void BSNSettings::Set2ndRelatedList(const std::vector<int>& value) { fpState->fvSecondRelatedList = value; }
const std::vector<int>& BSNSettings::Get2ndRelatedList() const { return fpState->fvSecondRelatedList; }
void BSNSettings::SetGroupVar(int value) { fpState->fGroupVar = value; }
int BSNSettings::GetGroupVar() const { return fpState->fGroupVar; }
void BSNSettings::SetPlotFactors(const std::vector<int>& value) { fpState->fvPlotFactors = value; }
const std::vector<int>& BSNSettings::GetPlotFactors() const { return fpState->fvPlotFactors; }
void BSNSettings::SetPlotCovars(const std::vector<int>& value) { fpState->fvPlotCovars = value; }
const std::vector<int>& BSNSettings::GetPlotCovars() const { return fpState->fvPlotCovars; }
void BSNSettings::SetPlotFactorCats(const std::vector<int>& value) { fpState->fvPlotFactorCats = value; }
const std::vector<int>& BSNSettings::GetPlotFactorCats() const { return fpState->fvPlotFactorCats; }
void BSNSettings::SetNullValue(double value) { fpState->fNullValue = value; }
double BSNSettings::GetNullValue() const { return fpState->fNullValue; }
void BSNSettings::SetNullValues(const std::vector<double>& value) { fpState->fvNullValues = value; }
const std::vector<double>& BSNSettings::GetNullValues() const { return fpState->fvNullValues; }
void BSNSettings::SetDataVarVals(const std::vector<double>& value) { fpState->fvDataVarVals = value; }
const std::vector<double>& BSNSettings::GetDataVarVals() const { return fpState->fvDataVarVals; }
void BSNSettings::SetAlterGValues(const std::vector<double>& value) { fpState->fvAlterGValues = value; }
const std::vector<double>& BSNSettings::GetAlterGValues() const { return fpState->fvAlterGValues; }
void BSNSettings::SetSecondGonenPar(double value) { fpState->fSecondGonenPar = value; }
double BSNSettings::GetSecondGonenPar() const { return fpState->fSecondGonenPar; }
void BSNSettings::SetLambdas(const std::vector<double>& value) { fpState->fvLambdas = value; }
const std::vector<double>& BSNSettings::GetLambdas() const { return fpState->fvLambdas; }
void BSNSettings::SetRegressors(const std::vector<double>& value) { fpState->fvRegressors = value; }
const std::vector<double>& BSNSettings::GetRegressors() const { return fpState->fvRegressors; }
void BSNSettings::SetCorrCValue(double value) { fpState->fCorrCValue = value; }
double BSNSettings::GetCorrCValue() const { return fpState->fCorrCValue; }
void BSNSettings::SetEqualDataVar(bool value) { fpState->fEqualDataVar = value; }
bool BSNSettings::GetEqualDataVar() const { return fpState->fEqualDataVar; }
void BSNSettings::SetKappaValue(double value) { fpState->fKappaValue = value; }
double BSNSettings::GetKappaValue() const { return fpState->fKappaValue; }
void BSNSettings::SetFTests(const std::vector<BayesFTest>& tests) { fpState->fvFTests = tests; }
const std::vector<BayesFTest>& BSNSettings::GetFTests() const { return fpState->fvFTests; }
void BSNSettings::SetPriorType(BSNConst::PriorTypes value) { fpState->fPriorType = value; }
BSNConst::PriorTypes BSNSettings::GetPriorType() const { return fpState->fPriorType; }
void BSNSettings::SetPriorParam1(double value) { fpState->fPriorParam1 = value; }
double BSNSettings::GetPriorParam1() const { return fpState->fPriorParam1; }
void BSNSettings::SetPriorParam2(double value) { fpState->fPriorParam2 = value; }
double BSNSettings::GetPriorParam2() const { return fpState->fPriorParam2; }
void BSNSettings::SetPriorDistType(BSNConst::DistTypes value) { fpState->fPriorDistType = value; }
BSNConst::DistTypes BSNSettings::GetPriorDistType() const { return fpState->fPriorDistType; }
void BSNSettings::SetPriorDistParam1(double value) { fpState->fPriorDistParam1 = value; }
double BSNSettings::GetPriorDistParam1() const { return fpState->fPriorDistParam1; }
void BSNSettings::SetPriorDistParam2(double value) { fpState->fPriorDistParam2 = value; }
double BSNSettings::GetPriorDistParam2() const { return fpState->fPriorDistParam2; }
void BSNSettings::SetMeanDistType(BSNConst::DistTypes value) { fpState->fMeanDistType = value; }
BSNConst::DistTypes BSNSettings::GetMeanDistType() const { return fpState->fMeanDistType; }
void BSNSettings::SetMeanDistParam1(double value) { fpState->fMeanDistParam1 = value; }
double BSNSettings::GetMeanDistParam1() const { return fpState->fMeanDistParam1; }
void BSNSettings::SetMeanDistParam2(double value) { fpState->fMeanDistParam2 = value; }
double BSNSettings::GetMeanDistParam2() const { return fpState->fMeanDistParam2; }
void BSNSettings::SetMeanDistParam3(double value) { fpState->fMeanDistParam3 = value; }
double BSNSettings::GetMeanDistParam3() const { return fpState->fMeanDistParam3; }
void BSNSettings::SetMeanDistParam4(double value) { fpState->fMeanDistParam4 = value; }
double BSNSettings::GetMeanDistParam4() const { return fpState->fMeanDistParam4; }
void BSNSettings::SetPriorShape(double value) { fpState->fPriorShape = value; }
double BSNSettings::GetPriorShape() const { return fpState->fPriorShape; }
void BSNSettings::SetPriorScale(double value) { fpState->fPriorScale = value; }
double BSNSettings::GetPriorScale() const { return fpState->fPriorScale; }
void BSNSettings::SetPriorMeans(const std::vector<double>& value) { fpState->fvPriorMeans = value; }
const std::vector<double>& BSNSettings::GetPriorMeans() const { return fpState->fvPriorMeans; }
void BSNSettings::SetPriorCovMatrix(const std::vector<double>& value) { fpState->fvPriorCovMatrix = value; }
const std::vector<double>& BSNSettings::GetPriorCovMatrix() const { return fpState->fvPriorCovMatrix; }
void BSNSettings::SetNullPrior1s(const std::vector<double>& value) { fpState->fvNullPrior1s = value; }
const std::vector<double>& BSNSettings::GetNullPrior1s() const { return fpState->fvNullPrior1s; }
void BSNSettings::SetNullPrior2s(const std::vector<double>& value) { fpState->fvNullPrior2s = value; }
const std::vector<double>& BSNSettings::GetNullPrior2s() const { return fpState->fvNullPrior2s; }
void BSNSettings::SetAlterPrior1s(const std::vector<double>& value) { fpState->fvAlterPrior1s = value; }
const std::vector<double>& BSNSettings::GetAlterPrior1s() const { return fpState->fvAlterPrior1s; }
void BSNSettings::SetAlterPrior2s(const std::vector<double>& value) { fpState->fvAlterPrior2s = value; }
const std::vector<double>& BSNSettings::GetAlterPrior2s() const { return fpState->fvAlterPrior2s; }
void BSNSettings::SetLogLinModel(BSNConst::DistTypes value) { fpState->fLogLinModel = value; }
BSNConst::DistTypes BSNSettings::GetLogLinModel() const { return fpState->fLogLinModel; }
void BSNSettings::SetLogLinPriorType(BSNConst::LogLinPriorType value) { fpState->fLogLinPriorType = value; }
BSNConst::LogLinPriorType BSNSettings::GetLogLinPriorType() const { return fpState->fLogLinPriorType; }
void BSNSettings::SetLogLinIntrinsicT(int value) { fpState->fLogLinIntrinsicT = value; }
int BSNSettings::GetLogLinIntrinsicT() const { return fpState->fLogLinIntrinsicT; }
void BSNSettings::SetLogLinShapes(const std::vector<double>& value) { fpState->fvLogLinShapes = value; }
const std::vector<double>& BSNSettings::GetLogLinShapes() const { return fpState->fvLogLinShapes; }
void BSNSettings::SetCILevel(double value) { fpState->fCILevel = value; }
double BSNSettings::GetCILevel() const { return fpState->fCILevel; }
void BSNSettings::SetTolValue(double value) { fpState->fTolValue = value; }
double BSNSettings::GetTolValue() const { return fpState->fTolValue; }
void BSNSettings::SetMaxIterations(int value) { fpState->fMaxIterations = value; }
int BSNSettings::GetMaxIterations() const { return fpState->fMaxIterations; }
void BSNSettings::SetMCSamples(int value) { fpState->fMCSamples = value; }
int BSNSettings::GetMCSamples() const { return fpState->fMCSamples; }
void BSNSettings::SetPosteriorSamples(long value) { fpState->fPosteriorSamples = value; }
long BSNSettings::GetPosteriorSamples() const { return fpState->fPosteriorSamples; }
void BSNSettings::SetRandomSeed(unsigned long value) { fpState->fRandomSeed = value; }
unsigned long BSNSettings::GetRandomSeed() const { return fpState->fRandomSeed; }
void BSNSettings::SetMissScope(BSNConst::MissScope value) { fpState->fMissScope = value; }
BSNConst::MissScope BSNSettings::GetMissScope() const { return fpState->fMissScope; }
void BSNSettings::SetComputeVarianceInScoring(bool value) { fpState->fComputeVarianceInScoring = value; }
bool BSNSettings::GetComputeVarianceInScoring() const { return fpState->fComputeVarianceInScoring; }
void BSNSettings::SetMaxNPlots(int value) { fpState->fMaxNPlots = value; }
int BSNSettings::GetMaxNPlots() const { return fpState->fMaxNPlots; }
void BSNSettings::SetMaxNPlotCategories(int value) { fpState->fMaxNPlotCategories = value; }
int BSNSettings::GetMaxNPlotCategories() const { return fpState->fMaxNPlotCategories; }
void BSNSettings::SetPlotsShown(bool value) { fpState->fPlotsShown = value; }
bool BSNSettings::GetPlotsShown() const { return fpState->fPlotsShown; }
void BSNSettings::SetThreadFactory(MCCommon_850::MCThreadFactory* value) { fpState->fpThreadFactory = value; }
MCCommon_850::MCThreadFactory* BSNSettings::GetThreadFactory() const { return fpState->fpThreadFactory; }
void BSNSettings::SetMaxThreadNum(int value) { fpState->fMaxThreadNum = value; }
int BSNSettings::GetMaxThreadNum() const { return fpState->fMaxThreadNum; }
void BSNSettings::SetMemCacheKB(int value) { fpState->fMemCacheKB = value; }
int BSNSettings::GetMemCacheKB() const { return fpState->fMemCacheKB; }
void BSNSettings::SetCancelPointer(const MCCommon_850::MCCancelQuery* value) { fpState->fpCancelPointer = value; }
const MCCommon_850::MCCancelQuery* BSNSettings::GetCancelPointer() const { return fpState->fpCancelPointer; }
void BSNSettings::SetProgressListener(MCCommon_850::ProgressListener* value) { fpState->fpProgressListener = value; }
MCCommon_850::ProgressListener* BSNSettings::GetProgressListener() const { return fpState->fpProgressListener; }
// clang-format on

}  // namespace MCBSN_850
