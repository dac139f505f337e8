// Reads the text of one command into the specifications.
#pragma once

#include <string>
#include <vector>

#include "bayesian/BYSValidSpecs.h"
#include "platform/component/Settings.h"
#include "platform/host/Data.h"
#include "platform/host/Grammar.h"
#include "platform/host/Messages.h"
#include "platform/host/Parser.h"
#include "platform/host/Tokens.h"
#include "platform/host/VarSpec.h"

// One parser per command. It declares the command's grammar, lets the host check the text, and reads the
// accepted subcommands in a fixed order: later ones may rely on what earlier ones wrote. A reader that fails
// has shown its message and returns false, which ends the command.
class BYSParser {
 public:
  // All references must outlive the parser. The model type must already stand in the statistical settings.
  BYSParser(ZARQ_TokenSequence& tokens, BYSValidSpecs& specs, const ProcedureDataSource& dataSource,
            const std::string& commandName, const std::string& procTitle);

  // Once. True: the command was accepted and the specifications are filled.
  bool GetCommandSpecifications();

  // The grammar of the model type's command. Exposed for the tests that walk it.
  static void SetCommandDescriptor(BSNConst::ModelTypes type, CommandDescriptor& descriptor);

 private:
  using BinInfoElem = BYSValidSpecs::BinInfoElem;
  using Tokens = std::vector<ZARQ_Token>;
  using Reader = bool (BYSParser::*)(const SubComObj&);

  // Values of the tests of one command, aligned with its test variables (or pairs); missing where none was
  // given.
  struct TestValues {
    std::vector<double> fvDataVars;
    std::vector<double> fvNullValues;
    std::vector<double> fvNullPrior1s;
    std::vector<double> fvNullPrior2s;
    std::vector<double> fvAlterGValues;
    std::vector<double> fvAlterPrior1s;
    std::vector<double> fvAlterPrior2s;
  };

  // Two numbers of a prior, missing when not given.
  struct PriorParams {
    double fFirst;
    double fSecond;
  };

  // BYSParser.cpp: the driver and the subcommands that many commands share.
  bool ProcessCommandSpec(const CommandSpec& spec);
  bool ProcessSubCommands(const CommandSpec& spec);
  bool ReadOne(const CommandSpec& spec, const char* name, Reader reader);
  bool ReadEach(const CommandSpec& spec, const char* name, Reader reader);
  void InitSettings();
  void ProcessExternVars();
  bool CheckPriorGiven(const CommandSpec& spec);
  void SizeTestValues();
  bool CompleteTestValues();
  bool ProcessMissingSubCom(const SubComObj& subcommand);
  bool ProcessCriteriaSubCom(const SubComObj& subcommand);

  // BYSParserInference.cpp
  bool ProcessInferenceSubCom(const SubComObj& subcommand);
  bool ReadTestVariables(const ParamObj& param, const std::string& subcommand);
  bool ReadGroup(const SubComObj& subcommand);
  bool ReadSelect(const SubComObj& subcommand, int group);
  bool ReadGroupLevels(const Tokens& values, int group, BinInfoElem& elem) const;
  bool ReadDataVar(const SubComObj& subcommand);
  bool ProcessPairSubCom(const SubComObj& subcommand);
  bool CompletePairs(const CommandSpec& spec);

  // BYSParserEstBF.cpp
  bool ProcessEstBFSubCom(const SubComObj& subcommand);
  bool ReadComputation(const SubComObj& subcommand);
  void ReadCompare(const SubComObj& subcommand);
  bool ReadGonen(const Tokens& values, const std::string& subcommand);

  // BYSParserCorrelation.cpp: what INFERENCE and ESTBF say about correlations.
  void ReadCorrelation(const SubComObj& subcommand);
  void ReadCorrelationBF(const SubComObj& subcommand);

  // BYSParserLogLinear.cpp: the table of the log-linear command, its model and its prior.
  bool ProcessTableSubCom(const SubComObj& subcommand);
  bool CheckTableGiven();
  bool ReadLogLinear(const SubComObj& subcommand);
  bool ReadShapes(const SubComObj& subcommand);
  bool ReadShapeRows(const Tokens& values, const std::string& subcommand,
                     std::vector<std::vector<double>>& rows) const;
  void ReadScaleAndLambdas(const SubComObj& subcommand);
  bool ProcessPrintSubCom(const SubComObj& subcommand);

  // BYSParserIdle.cpp
  void WarnAboutIdle(const CommandSpec& spec) const;

  // BYSParserData.cpp
  bool ProcessDataSubCom(const SubComObj& subcommand);
  bool ReadDataNumber(const SubComObj& subcommand, const char* name, double& value) const;
  bool ReadDataPair(const SubComObj& subcommand, const char* name, PriorParams& values);
  bool CheckNullValue(double value, const std::string& subcommand) const;
  bool ReadSuccess(const SubComObj& subcommand, int variable, BinInfoElem& elem);
  bool AddValues(const VarSpecObj& variables, const Tokens& values, int variable, BinInfoElem& elem) const;

  // BYSParserPrior.cpp
  bool ProcessPriorSubCom(const SubComObj& subcommand);
  bool ReadPriorType(const SubComObj& subcommand);
  bool CheckConjugate(const Tokens& values);
  bool ReadVarDist(const SubComObj& subcommand);
  bool ReadPrecDist(const SubComObj& subcommand);
  bool ReadMeanDist(const SubComObj& subcommand);
  bool ReadMeanNormal(const Tokens& values);
  bool ReadMeanNormals(const Tokens& values);
  void SetPriorDist(BSNConst::DistTypes type, PriorParams params);
  void SetMeanDist(BSNConst::DistTypes type, const std::vector<double>& params);
  bool HasKnownVariances() const;

  // BYSParserModel.cpp: the subcommands of regression and analysis of variance
  bool ProcessModelSubCommands(const CommandSpec& spec);
  bool ProcessNoNameSubCom(const SubComObj& subcommand);
  bool CheckPredictorCounts(int nFactors, int nCovariates) const;
  bool ProcessDesignSubCom(const SubComObj& subcommand);
  bool ReadSubset(const SubComObj& subcommand, const char* name, const VarSpecObj& whole,
                  VarSpecObj& list) const;
  bool CompleteDesign();
  bool ProcessPredictSubCom(const SubComObj& subcommand);
  bool AddModelValue(const ZARQ_Token& value, int variable, const std::string& parameter,
                     const std::string& subcommand, BinInfoElem& elem) const;
  bool ProcessFTestSubCom(const SubComObj& subcommand);
  bool CompleteFTests(const CommandSpec& spec);

  // BYSParserSave.cpp: what a model leaves behind
  bool ProcessSaveSubCom(const SubComObj& subcommand);
  bool ProcessSaveVar(const SubComObj& subcommand, BYSValidSpecs::SaveOptions option);
  bool ProcessOutFileSubCom(const SubComObj& subcommand);
  std::string ReadExportFile(const SubComObj& subcommand, const char* name) const;

  // BYSParserRegrPrior.cpp
  bool ProcessRegrPriorSubCom(const SubComObj& subcommand);
  bool CheckConjugateGiven(const SubComObj& subcommand) const;
  bool ReadPriorNumbers(const SubComObj& subcommand);
  bool ReadVMatrix(const SubComObj& subcommand);

  // BYSParserPlot.cpp
  bool ProcessPlotSubCom(const SubComObj& subcommand);
  void ReadPlotFlags(const SubComObj& subcommand);
  bool ReadPlotMeans(const SubComObj& subcommand);

  // BYSParserMessages.cpp: messages that several readers give, and conversions of tokens.
  void ParamNeed4NumVals(const std::string& parameter, const std::string& subcommand) const;
  void ParamNeed2VarNames(const std::string& parameter, const std::string& subcommand) const;
  void ParamNeed2DistVals(const std::string& parameter, const std::string& subcommand) const;
  void ParamNeed2Vals(const std::string& parameter, const std::string& subcommand) const;
  void ParamNeed2NumVals(const std::string& parameter, const std::string& subcommand) const;
  bool RequirePositive(double value, const std::string& parameter, const std::string& subcommand) const;
  bool ReadTwoNumbers(const Tokens& values, const std::string& parameter, const std::string& subcommand,
                      PriorParams& params) const;
  BinInfoElem MakeBinInfoElem(int variable, int kind, bool isString) const;

  static bool AllNumbers(const Tokens& values);
  bool IsModel(BSNConst::ModelTypes type) const { return fModelType == type; }

  ZARQ_TokenSequence& fTokens;
  BYSValidSpecs& fSpecs;
  const ProcedureDataSource& fDataSource;
  ParserMessage fMessage;
  MCBSN_850::BSNSettings& fSettings;
  BSNConst::ModelTypes fModelType;
  CommandDescriptor fDescriptor;
  VarSpecObj fSplitVars;
  VarSpecObj fWeightVar;
  VarSpecObj fInferenceVars;
  VarSpecObj fTableVars;
  VarSpecObj fGroupVar;
  VarSpecObj fDependentVar;
  // All predictors of a model, and those that DESIGN leaves.
  VarSpecObj fFullFactors;
  VarSpecObj fFullCovariates;
  VarSpecObj fDesignFactors;
  VarSpecObj fDesignCovariates;
  // One entry for each pair, without repeats.
  std::vector<int> fvPairFirsts;
  std::vector<int> fvPairSeconds;
  TestValues fTests;
  std::vector<MCBSN_850::BayesFTest> fvFTests;
  // The qualifier of VARDIST or PRECDIST, for messages about it; empty when neither was given.
  std::string fPriorDistQualifier;
  double fMissing;
};
