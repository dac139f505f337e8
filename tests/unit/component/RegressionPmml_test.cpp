// A fitted regression as a PMML document.
#include <gmock/gmock.h>

#include <charconv>
#include <cmath>
#include <pugixml.hpp>
#include <sstream>
#include <string>

#include "component/numeric/Distribution.h"
#include "unit/component/ComponentRun.h"

namespace {

using namespace BayesTest;
using MCXML_850::MCCategory;
using Regression = MCBSN_850::BSNMultiRegOutputStats;
using testing::ElementsAre;

// Slots: response, factor with the levels 1 and 2, covariate, regression weight, frequency weight.
const std::vector<Column> kColumns = {
    {2, 3, 5, 4, 7, 9}, {0, 0, 1, 1, 0, 1}, {1, 2, 2, 4, 6, 7}, {1, 2, 1, 1, 2, 1}, {1, 1, 2, 1, 1, 1}};

MCCategory Number(double number, const std::string& label) {
  MCCategory category;
  category.fNumber = number;
  category.fLabel = label;
  return category;
}

MCXML_850::MCVarList DescribeVariables() {
  MCXML_850::MCVarList list;
  const char* names[] = {"y", "group", "x & z", "precision", "times"};
  for (int slot = 0; slot < 5; ++slot) {
    MCXML_850::MCVariable variable;
    variable.fSlot = slot;
    variable.fName = names[slot];
    if (slot == 0) variable.fLabel = "The\x01response";
    if (slot == 1) {
      variable.fCategorical = true;
      variable.fvCategories = {Number(1, "first"), Number(2.5, "")};
      variable.fvUserMissing = {Number(-9, "none")};
    }
    list.AddVariable(variable);
  }
  return list;
}

BSNSettings MakeSettings() {
  BSNSettings settings;
  settings.SetModelType(BSNConst::Regression, true);
  settings.SetAnalysType(BSNConst::Both);
  settings.SetRegrCompType(BSNConst::JZS);
  settings.SetDependVar(0);
  settings.SetFactors({1});
  settings.SetFactorNCategs({2});
  settings.SetCovariates({2});
  settings.SetRegrWeightVar(3);
  settings.SetFrequencyWeightVar(4);
  settings.SetCILevel(90);
  settings.SetPriorType(BSNConst::Reference);
  return settings;
}

pugi::xml_document Export(const Regression& record, bool isModel) {
  std::ostringstream stream;
  record.ExportPMML(DescribeVariables(), stream, isModel, {"program", "9.9", "What it is"});
  pugi::xml_document document;
  EXPECT_TRUE(document.load_string(stream.str().c_str())) << stream.str();
  return document;
}

std::vector<std::string> List(const pugi::xml_document& document, const char* path, const char* attribute) {
  std::vector<std::string> values;
  for (const auto& found : document.select_nodes(path)) {
    values.emplace_back(found.node().attribute(attribute).as_string("(none)"));
  }
  return values;
}

double ReadNumber(const pugi::xml_document& document, const std::string& path, const char* attribute) {
  return document.select_node(path.c_str()).node().attribute(attribute).as_double(std::nan(""));
}

TEST(RegressionPmml, DescribesTheFields) {
  Model<Regression> run(MakeSettings(), kColumns);
  const pugi::xml_document document = Export(run.Record(), true);
  EXPECT_THAT(List(document, "/PMML", "version"), ElementsAre("4.4"));
  EXPECT_THAT(List(document, "//Header", "description"), ElementsAre("What it is"));
  EXPECT_THAT(List(document, "//Application", "name"), ElementsAre("program"));
  EXPECT_THAT(List(document, "//Application", "version"), ElementsAre("9.9"));
  EXPECT_THAT(List(document, "//DataField", "name"),
              ElementsAre("y", "group", "x & z", "precision", "times"));
  EXPECT_THAT(List(document, "//DataField", "displayName"),
              ElementsAre("The\uFFFDresponse", "(none)", "(none)", "(none)", "(none)"));
  EXPECT_THAT(List(document, "//Value", "value"), ElementsAre("1", "2.5", "-9"));
  EXPECT_THAT(List(document, "//Value", "displayValue"), ElementsAre("first", "(none)", "none"));
  EXPECT_THAT(List(document, "//Value", "property"), ElementsAre("valid", "valid", "missing"));
  EXPECT_THAT(List(document, "//MiningField", "usageType"),
              ElementsAre("target", "active", "active", "analysisWeight", "frequencyWeight"));
}

TEST(RegressionPmml, HoldsTheModelAtItsPosteriorLocation) {
  Model<Regression> run(MakeSettings(), kColumns);
  const pugi::xml_document document = Export(run.Record(), true);
  EXPECT_THAT(List(document, "//Parameter", "label"),
              ElementsAre("(Intercept)", "group = 1", "group = 2.5", "x & z"));
  EXPECT_THAT(List(document, "//PPCell", "value"), ElementsAre("1", "2.5", "1"));
  EXPECT_THAT(List(document, "//PPCell", "predictorName"), ElementsAre("group", "group", "x & z"));
  EXPECT_THAT(List(document, "//PPCell", "parameterName"), ElementsAre("p1", "p2", "p3"));
  EXPECT_THAT(List(document, "//PCell", "df"), ElementsAre("1", "1", "0", "1"));
  const auto& estimates = run.Record().GetVarCoeffBayesEstimations();
  for (const std::size_t i : {0U, 1U, 3U}) {
    const std::string cell = "//PCell[@parameterName='p" + std::to_string(i) + "']";
    EXPECT_EQ(ReadNumber(document, cell, "beta"), estimates[i].fMode) << i;
    EXPECT_NEAR(ReadNumber(document, cell + "/Extension[@name='lower']", "value"), estimates[i].fLower,
                1e-12);
    EXPECT_NEAR(ReadNumber(document, cell + "/Extension[@name='upper']", "value"), estimates[i].fUpper,
                1e-12);
    const std::string name = "p" + std::to_string(i);
    const std::string scale = "//PCovCell[@pRow='" + name + "'][@pCol='" + name + "']";
    EXPECT_NEAR(ReadNumber(document, scale, "value") * 4 / 2, estimates[i].fVariance, 1e-12) << "4 df";
  }
  EXPECT_EQ(ReadNumber(document, "//PCell[@parameterName='p2']", "beta"), 0);
  EXPECT_EQ(ReadNumber(document, "//GeneralRegressionModel", "modelDF"), 4);
  EXPECT_NEAR(ReadNumber(document, "//Extension[@name='errorScale']", "value"), run.Record().GetAnova()[7],
              1e-12);
  EXPECT_EQ(ReadNumber(document, "//Extension[@name='credibleLevel']", "value"), 90);
  EXPECT_NEAR(ReadNumber(document, "//Extension[@name='credibleQuantile']", "value"), 2.13184678632665,
              1e-12);
}

TEST(RegressionPmml, AParameterFileCarriesTheParametersAlone) {
  Model<Regression> run(MakeSettings(), kColumns);
  const pugi::xml_document document = Export(run.Record(), false);
  EXPECT_EQ(document.select_nodes("//PCell").size(), 4U);
  EXPECT_EQ(document.select_nodes("//PCovMatrix | //Extension").size(), 0U);
  EXPECT_THAT(List(document, "//GeneralRegressionModel", "modelDF"), ElementsAre("(none)"));
}

TEST(RegressionPmml, WithoutAPosteriorThereIsNoModel) {
  std::vector<Column> columns = kColumns;
  for (Column& column : columns) column.resize(3);
  BSNSettings settings = MakeSettings();
  settings.SetFrequencyWeightVar(-1);
  Model<Regression> run(settings, columns);
  ASSERT_FALSE(run.Status().IsError());
  const pugi::xml_document document = Export(run.Record(), true);
  EXPECT_EQ(document.select_nodes("//DataField").size(), 4U);
  EXPECT_EQ(document.select_nodes("//GeneralRegressionModel").size(), 0U);
}

// What is asked of a model that could not be built.
TEST(RegressionPmml, AFailedModelScoresNothing) {
  std::vector<Column> columns = kColumns;
  columns[0].assign(6, 1);
  Model<Regression> run(MakeSettings(), columns);
  EXPECT_TRUE(run.Status().IsError());
  MCBSN_850::BayesEstimation score;
  const double record[] = {1, 0, 2, 1, 1};
  EXPECT_FALSE(run.Record().Score({record}, score));
}

}  // namespace
