// Everything a command asked for, from parsing to teardown.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/component/Common.h"
#include "platform/component/Settings.h"
#include "platform/component/VarList.h"
#include "platform/host/Adapter.h"
#include "platform/host/Data.h"
#include "platform/host/Run.h"

class BYSProcAdapter;

// Gives the component names for temporary files.
class BYSTempFileNamer : public MCCommon_850::MCTempFileNameMaker {
 public:
  // Empty when the host has no name to give.
  std::string GetName() override;
};

// The parser fills it; CompleteSpecs registers the variables and derives the component settings, in which
// every variable is a record slot; from then on it is read. The statistical settings keep the dictionary
// indices for names and labels in the output.
class BYSValidSpecs {
 public:
  // How a value of BAYES commands is chosen among those of a variable.
  enum DefinitionKind { kFirst = 0, kLast = 1, kMidpoint = 2, kCutpoint = 3, kLevel = 4 };

  // Which values of a variable count as success, or make the groups.
  struct BinInfoElem {
    int _kind = kLast;
    // True when the values may be strings; the variable is then registered as categorical.
    bool _isString = true;
    std::vector<double> _numValues;
    std::vector<std::string> _strValues;
    std::vector<const OBS*> _obsValues;
    // The variable's width in 8-byte units, at least 1.
    int _width = 1;
    ZARQ_Format _format;

    bool IsRange() const { return _kind == kMidpoint || _kind == kCutpoint; }
  };

  enum SaveOptions { kMeanPred = 0, kVariance, kMode, kCIMeanPredL, kCIMeanPredU, kNSaveOptions };

  BYSValidSpecs(const ProcedureDataSource& dataSource, const char* procTitle);
  ~BYSValidSpecs();
  BYSValidSpecs(const BYSValidSpecs&) = delete;
  BYSValidSpecs& operator=(const BYSValidSpecs&) = delete;

  // Once, after parsing. Returns the component settings.
  MCBSN_850::BSNSettings* CompleteSpecs();
  // Fills a split's settings: a copy of the component settings, with the split's category counts. False: the
  // split can't be analysed (a message was shown). The adapter may be null; then it only copies.
  bool CompleteSettings(MCBSN_850::BSNSettings& compSettings, BYSProcAdapter* adapter);
  // Describes the record's variables and the split's counts. Null arguments are left alone.
  bool CompleteVarList(MCXML_850::MCVarList* varList, BYSProcAdapter* adapter) const;
  // Dictionary index behind a record slot, negative when there is none. A free slot stands for the variable
  // that it recodes.
  int GetZARQVarIndex(int slot) const;
  // Print format of a saved variable.
  ZARQ_Format GetSaveFormat(SaveOptions option) const;
  // Keeps the first occurrence of each value.
  static void removeDuplicates(std::vector<int>& values);
  // Developer aid: to the host's debug channel.
  void Display() const;

  const std::string& GetProcTitle() const { return fProcTitle; }
  ACAVarValidSpecs* GetVarValidSpecsPtr() { return fpVarValidSpecs.get(); }
  const ACAVarValidSpecs* GetVarValidSpecsPtr() const { return fpVarValidSpecs.get(); }
  MCBSN_850::BSNSettings* GetStatSettingsPtr() { return fpStatSettings.get(); }
  const MCBSN_850::BSNSettings* GetStatSettingsPtr() const { return fpStatSettings.get(); }
  MCBSN_850::BSNSettings* GetCompSettingsPtr() const { return fpCompSettings.get(); }

  const std::vector<int>& GetBinVarRec() const { return fvBinVarRec; }
  std::vector<BinInfoElem>& GetBinInfoElems() { return fvBinInfoElems; }
  const std::vector<BinInfoElem>& GetBinInfoElems() const { return fvBinInfoElems; }
  void SetBinInfoElems(const std::vector<BinInfoElem>& elems) { fvBinInfoElems = elems; }
  int GetGroupVarRec() const { return fGroupVarRec; }
  BinInfoElem& GetGroupInfoElem() { return fGroupInfoElem; }
  const BinInfoElem& GetGroupInfoElem() const { return fGroupInfoElem; }

  // One entry for each of the SaveOptions. A name that is empty: not saved. The flag: the name is a root, to
  // be completed by a suffix.
  std::vector<std::string>& GetSaveVarNames() { return fvSaveVarNames; }
  const std::vector<std::string>& GetSaveVarNames() const { return fvSaveVarNames; }
  std::vector<bool>& GetSaveVarSuff() { return fvSaveVarSuff; }
  const std::vector<bool>& GetSaveVarSuff() const { return fvSaveVarSuff; }
  std::vector<std::string>& GetSaveVarLabels() { return fvSaveVarLabels; }
  const std::vector<std::string>& GetSaveVarLabels() const { return fvSaveVarLabels; }
  std::vector<std::string>& GetSaveVarNotes() { return fvSaveVarNotes; }
  const std::vector<std::string>& GetSaveVarNotes() const { return fvSaveVarNotes; }
  std::vector<ZARQ_Format>& GetSaveVarFormats() { return fvSaveVarFormats; }
  const std::vector<ZARQ_Format>& GetSaveVarFormats() const { return fvSaveVarFormats; }
  void SetMaxObsAdded(int count) { fMaxObsAdded = count; }
  int GetMaxObsAdded() const { return fMaxObsAdded; }
  void SetOutFModelFileName(const std::string& name) { fModelFileName = name; }
  const std::string& GetOutFModelFileName() const { return fModelFileName; }
  bool GetOutFOptionMODEL() const { return !fModelFileName.empty(); }
  void SetOutFParameterFileName(const std::string& name) { fParameterFileName = name; }
  const std::string& GetOutFParameterFileName() const { return fParameterFileName; }
  bool GetOutFOptionPARAMETER() const { return !fParameterFileName.empty(); }

  void SetCategAscend(bool ascending) { fCategAscend = ascending; }
  bool GetCategAscend() const { return fCategAscend; }
  // Rows of a matrix of prior shapes, as given; empty when there is no matrix.
  std::vector<std::vector<double>>& GetShapeParamRows() { return fvShapeParamRows; }
  const std::vector<std::vector<double>>& GetShapeParamRows() const { return fvShapeParamRows; }
  void SetPrintSuprTable(bool suppress) { fPrintSuprTable = suppress; }
  bool GetPrintSuprTable() const { return fPrintSuprTable; }
  std::vector<bool>& GetPrintCellOpts() { return fvPrintCellOpts; }
  const std::vector<bool>& GetPrintCellOpts() const { return fvPrintCellOpts; }
  std::vector<bool>& GetPrintStatOpts() { return fvPrintStatOpts; }
  const std::vector<bool>& GetPrintStatOpts() const { return fvPrintStatOpts; }
  void SetPlotIntercept(bool on) { fPlotIntercept = on; }
  bool GetPlotIntercept() const { return fPlotIntercept; }
  void SetPlotErrorVar(bool on) { fPlotErrorVar = on; }
  bool GetPlotErrorVar() const { return fPlotErrorVar; }
  void SetPlotBayesPred(bool on) { fPlotBayesPred = on; }
  bool GetPlotBayesPred() const { return fPlotBayesPred; }

 private:
  using Settings = MCBSN_850::BSNSettings;

  void RegisterVariables(bool missingPasses);
  void RegisterFactors(bool missingPasses);
  void RegisterGroup(bool missingPasses);
  void TranslateFTests();
  void CompleteRunServices();
  std::vector<int> CompleteFactorSizes(const std::vector<int>& factors, bool ascending,
                                       BYSProcAdapter& adapter) const;
  bool CheckShapeRows(const std::vector<int>& factorSizes, const BYSProcAdapter& adapter) const;
  std::string GetFreeVarName(int slot) const;
  // BYSValidSpecsModel.cpp: values of predictors that a command gave.
  void CompleteModelValues(Settings& compSettings, const BYSProcAdapter& adapter) const;
  void CompleteRegressors(Settings& compSettings, const BYSProcAdapter& adapter) const;
  void CompleteMeansGroups(Settings& compSettings, const BYSProcAdapter& adapter) const;
  int EncodeGivenValue(int slot, const OBS& value, const BYSProcAdapter& adapter, const char* key,
                       const char* splitKey) const;

  const ProcedureDataSource& fDataSource;
  std::string fProcTitle;
  std::unique_ptr<ACAVarValidSpecs> fpVarValidSpecs;
  std::unique_ptr<Settings> fpStatSettings;
  std::unique_ptr<Settings> fpCompSettings;
  std::vector<int> fvBinVarRec;
  std::vector<BinInfoElem> fvBinInfoElems;
  int fGroupVarRec = -1;
  BinInfoElem fGroupInfoElem;
  std::vector<std::string> fvSaveVarNames;
  std::vector<bool> fvSaveVarSuff;
  std::vector<std::string> fvSaveVarLabels;
  std::vector<std::string> fvSaveVarNotes;
  std::vector<ZARQ_Format> fvSaveVarFormats;
  int fMaxObsAdded = 0;
  std::string fModelFileName;
  std::string fParameterFileName;
  bool fCategAscend = true;
  std::vector<std::vector<double>> fvShapeParamRows;
  bool fPrintSuprTable = false;
  std::vector<bool> fvPrintCellOpts;
  std::vector<bool> fvPrintStatOpts;
  bool fPlotIntercept = false;
  bool fPlotErrorVar = false;
  bool fPlotBayesPred = false;
  std::unique_ptr<ACAThreadFactory> fpThreadFactory;
  std::unique_ptr<ACAStopProcessor> fpStopProcessor;
  std::unique_ptr<BYSTempFileNamer> fpTempFileNamer;
};
