// A fitted regression as a PMML 4.4 document (Data Mining Group, dmg.org, GeneralRegressionModel).
#include <charconv>
#include <ostream>
#include <pugixml.hpp>
#include <set>
#include <string>

#include "component/RegressionRecord.h"
#include "component/numeric/Distribution.h"
#include "platform/component/VarList.h"

namespace BayesComponent {

namespace {

using MCXML_850::MCCategory;
using MCXML_850::MCVariable;
using Data = MCBSN_850::BSNMultiRegOutputStats::Data;

// As many digits as bring the same number back, in any locale.
std::string ToText(double number) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

std::string ToText(const MCCategory& category) {
  return category.fIsString ? category.fText : ToText(category.fNumber);
}

std::string NameOf(std::size_t parameter) {
  return "p" + std::to_string(parameter);
}

// XML knows no control characters but tab and line ends; the replacement character stands in for the others.
void Set(pugi::xml_node node, const char* attribute, const std::string& text) {
  std::string shown;
  for (const char c : text) {
    const bool isControl = static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r';
    isControl ? shown += "\uFFFD" : shown += c;
  }
  node.append_attribute(attribute) = shown.c_str();
}

void AddExtension(pugi::xml_node node, const char* name, double value) {
  pugi::xml_node extension = node.append_child("Extension");
  Set(extension, "name", name);
  Set(extension, "value", ToText(value));
}

void AddValues(pugi::xml_node field, const std::vector<MCCategory>& values, const char* property) {
  for (const MCCategory& value : values) {
    pugi::xml_node node = field.append_child("Value");
    Set(node, "value", ToText(value));
    if (!value.fLabel.empty()) Set(node, "displayValue", value.fLabel);
    Set(node, "property", property);
  }
}

class RegressionPmml {
 public:
  RegressionPmml(const Data& data, const MCXML_850::MCVarList& variables)
      : fData(data), fVariables(variables) {}

  void Build(bool isModel, const MCCommon_850::MCApplicInfo4XML& application);
  void Save(std::ostream& stream) const { fDocument.save(stream, " "); }

 private:
  struct Field {
    int fSlot;
    const char* fUsage;
  };

  const RegressionScorer& Scorer() const { return *fData.fScorer; }
  const MCVariable& VariableAt(int slot) const;
  std::vector<Field> ListFields() const;
  void AddDictionary(pugi::xml_node root) const;
  void AddModel(pugi::xml_node root, bool isModel) const;
  void AddMiningSchema(pugi::xml_node model) const;
  void AddParameters(pugi::xml_node model) const;
  void AddPredictors(pugi::xml_node model) const;
  void AddTerms(pugi::xml_node model) const;
  void AddSquaredScales(pugi::xml_node model) const;
  void AddCoefficients(pugi::xml_node model, bool isModel) const;
  double Quantile() const;
  std::string LabelOf(const MCRegrParameter& parameter) const;
  const MCCategory& LevelOf(const MCRegrParameter& parameter) const;
  std::vector<std::size_t> ActivePositions() const;

  const Data& fData;
  const MCXML_850::MCVarList& fVariables;
  pugi::xml_document fDocument;
};

const MCVariable& RegressionPmml::VariableAt(int slot) const {
  return fVariables.GetVariables()[static_cast<std::size_t>(slot)];
}

// A variable is one field, whatever it serves.
std::vector<RegressionPmml::Field> RegressionPmml::ListFields() const {
  std::vector<Field> fields{{fData.fDependent, "target"}};
  for (const MCRegrParameter& parameter : fData.fvParameters) {
    for (const int slot : parameter.GetFactors()) fields.push_back({slot, "active"});
    for (const int slot : parameter.GetCovariates()) fields.push_back({slot, "active"});
  }
  fields.push_back({fData.fRegressionWeight, "analysisWeight"});
  fields.push_back({fData.fFrequencyWeight, "frequencyWeight"});
  std::set<std::string> known;
  std::erase_if(fields, [&](const Field& field) {
    return field.fSlot < 0 || !known.insert(VariableAt(field.fSlot).fName).second;
  });
  return fields;
}

void RegressionPmml::Build(bool isModel, const MCCommon_850::MCApplicInfo4XML& application) {
  pugi::xml_node declaration = fDocument.append_child(pugi::node_declaration);
  Set(declaration, "version", "1.0");
  Set(declaration, "encoding", "UTF-8");
  pugi::xml_node root = fDocument.append_child("PMML");
  Set(root, "xmlns", "http://www.dmg.org/PMML-4_4");
  Set(root, "version", "4.4");
  pugi::xml_node header = root.append_child("Header");
  Set(header, "description", application.fDescription);
  pugi::xml_node program = header.append_child("Application");
  Set(program, "name", application.fName);
  Set(program, "version", application.fVersion);
  AddDictionary(root);
  if (fData.fScorer) AddModel(root, isModel);
}

void RegressionPmml::AddDictionary(pugi::xml_node root) const {
  pugi::xml_node dictionary = root.append_child("DataDictionary");
  for (const Field& entry : ListFields()) {
    const MCVariable& variable = VariableAt(entry.fSlot);
    pugi::xml_node field = dictionary.append_child("DataField");
    Set(field, "name", variable.fName);
    if (!variable.fLabel.empty()) Set(field, "displayName", variable.fLabel);
    Set(field, "optype", variable.fCategorical ? "categorical" : "continuous");
    Set(field, "dataType", variable.fString ? "string" : "double");
    AddValues(field, variable.fvCategories, "valid");
    AddValues(field, variable.fvUserMissing, "missing");
  }
}

// The extensions give what the intervals of single predictions need beside the squared scales S of the
// parameters: x'b -+ quantile sqrt(x'Sx) for the mean; the response has the squared scale x'Sx + errorScale.
void RegressionPmml::AddModel(pugi::xml_node root, bool isModel) const {
  pugi::xml_node model = root.append_child("GeneralRegressionModel");
  Set(model, "modelType", "generalLinear");
  Set(model, "functionName", "regression");
  Set(model, "algorithmName", "Bayesian linear model");
  Set(model, "targetVariableName", VariableAt(fData.fDependent).fName);
  if (isModel) {
    Set(model, "modelDF", ToText(Scorer().GetPosterior().DF()));
    AddExtension(model, "errorScale", Scorer().GetPosterior().SquaredScale());
    AddExtension(model, "credibleLevel", fData.fLevel);
    AddExtension(model, "credibleQuantile", Quantile());
  }
  AddMiningSchema(model);
  AddParameters(model);
  AddPredictors(model);
  AddTerms(model);
  if (isModel) AddSquaredScales(model);
  AddCoefficients(model, isModel);
}

void RegressionPmml::AddMiningSchema(pugi::xml_node model) const {
  pugi::xml_node schema = model.append_child("MiningSchema");
  for (const Field& entry : ListFields()) {
    pugi::xml_node field = schema.append_child("MiningField");
    Set(field, "name", VariableAt(entry.fSlot).fName);
    Set(field, "usageType", entry.fUsage);
  }
}

const MCCategory& RegressionPmml::LevelOf(const MCRegrParameter& parameter) const {
  const auto code = static_cast<std::size_t>(parameter.GetCategories()[0]);
  return VariableAt(parameter.GetFactors()[0]).fvCategories[code];
}

std::string RegressionPmml::LabelOf(const MCRegrParameter& parameter) const {
  if (parameter.IsIntercept()) return "(Intercept)";
  if (parameter.GetNCovariates() > 0) return VariableAt(parameter.GetCovariates()[0]).fName;
  return VariableAt(parameter.GetFactors()[0]).fName + " = " + ToText(LevelOf(parameter));
}

void RegressionPmml::AddParameters(pugi::xml_node model) const {
  pugi::xml_node list = model.append_child("ParameterList");
  for (std::size_t i = 0; i < fData.fvParameters.size(); ++i) {
    pugi::xml_node parameter = list.append_child("Parameter");
    Set(parameter, "name", NameOf(i));
    Set(parameter, "label", LabelOf(fData.fvParameters[i]));
  }
}

void RegressionPmml::AddPredictors(pugi::xml_node model) const {
  pugi::xml_node factors = model.append_child("FactorList");
  for (const RegressionFactor& factor : Scorer().GetPredictors().fvFactors) {
    Set(factors.append_child("Predictor"), "name", VariableAt(factor.fSlot).fName);
  }
  pugi::xml_node covariates = model.append_child("CovariateList");
  for (const int slot : Scorer().GetPredictors().fvCovariates) {
    Set(covariates.append_child("Predictor"), "name", VariableAt(slot).fName);
  }
}

// A level is an indicator of its value, a covariate has the power 1; the intercept has no cell.
void RegressionPmml::AddTerms(pugi::xml_node model) const {
  pugi::xml_node matrix = model.append_child("PPMatrix");
  for (std::size_t i = 0; i < fData.fvParameters.size(); ++i) {
    const MCRegrParameter& parameter = fData.fvParameters[i];
    if (parameter.IsIntercept()) continue;
    const bool isCovariate = parameter.GetNCovariates() > 0;
    const int slot = isCovariate ? parameter.GetCovariates()[0] : parameter.GetFactors()[0];
    pugi::xml_node cell = matrix.append_child("PPCell");
    Set(cell, "value", isCovariate ? "1" : ToText(LevelOf(parameter)));
    Set(cell, "predictorName", VariableAt(slot).fName);
    Set(cell, "parameterName", NameOf(i));
  }
}

std::vector<std::size_t> RegressionPmml::ActivePositions() const {
  std::vector<std::size_t> positions;
  for (std::size_t i = 0; i < fData.fvParameters.size(); ++i) {
    if (!fData.fRedundancy.IsIn(i)) positions.push_back(i);
  }
  return positions;
}

// Those of the Student distribution; the covariances, where they exist, are modelDF/(modelDF - 2) times them.
void RegressionPmml::AddSquaredScales(pugi::xml_node model) const {
  const Eigen::MatrixXd scales = Scorer().GetPosterior().SquaredScales();
  const std::vector<std::size_t> positions = ActivePositions();
  pugi::xml_node matrix = model.append_child("PCovMatrix");
  Set(matrix, "type", "model");
  for (Eigen::Index row = 0; row < scales.rows(); ++row) {
    for (Eigen::Index column = 0; column <= row; ++column) {
      pugi::xml_node cell = matrix.append_child("PCovCell");
      Set(cell, "pRow", NameOf(positions[static_cast<std::size_t>(row)]));
      Set(cell, "pCol", NameOf(positions[static_cast<std::size_t>(column)]));
      Set(cell, "value", ToText(scales(row, column)));
    }
  }
}

double RegressionPmml::Quantile() const {
  return StudentDistribution(Scorer().GetPosterior().DF(), 0, 1).UpperQuantile((1 - fData.fLevel / 100) / 2);
}

void RegressionPmml::AddCoefficients(pugi::xml_node model, bool isModel) const {
  const NormalInverseGamma& posterior = Scorer().GetPosterior();
  const Eigen::VectorXd widths = posterior.SquaredScales().diagonal().cwiseSqrt() * Quantile();
  pugi::xml_node matrix = model.append_child("ParamMatrix");
  Eigen::Index active = 0;
  for (std::size_t i = 0; i < fData.fvParameters.size(); ++i) {
    const bool isRedundant = fData.fRedundancy.IsIn(i);
    const double beta = isRedundant ? 0 : posterior.Location()[active];
    pugi::xml_node cell = matrix.append_child("PCell");
    Set(cell, "parameterName", NameOf(i));
    Set(cell, "beta", ToText(beta));
    Set(cell, "df", isRedundant ? "0" : "1");
    if (isModel && !isRedundant) AddExtension(cell, "lower", beta - widths[active]);
    if (isModel && !isRedundant) AddExtension(cell, "upper", beta + widths[active]);
    if (!isRedundant) ++active;
  }
}

}  // namespace

}  // namespace BayesComponent

namespace MCBSN_850 {

void BSNMultiRegOutputStats::ExportPMML(const MCXML_850::MCVarList& variables, std::ostream& stream,
                                        bool isModel,
                                        const MCCommon_850::MCApplicInfo4XML& application) const {
  BayesComponent::RegressionPmml document(*fpData, variables);
  document.Build(isModel, application);
  document.Save(stream);
}

}  // namespace MCBSN_850
