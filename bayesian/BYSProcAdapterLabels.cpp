// Labels of a model's parameters in the current split.
#include "bayesian/BYSAssert.h"
#include "bayesian/BYSProcAdapter.h"

namespace {

// The checks on parameters belong to the tables that show them.
constexpr const char* kSource = "BYSOutput";

}  // namespace

void BYSProcAdapter::SetParamBagpipeCats(BpGroup* group, const MCMath_850::MCRegrParameter& parameter) const {
  const int nFacts = parameter.GetNFactors();
  const int nCovars = parameter.GetNCovariates();
  const auto variable = [this](int slot) {
    return BpVariable(fDataSource.GetVariable(fSpecs.GetZARQVarIndex(slot)), BpVariable::kLabelElseName);
  };
  if (parameter.IsIntercept()) {
    group->Category(BpString("(Intercept)", true));
  } else if (nCovars > 0) {
    BYS::Assert(nCovars == 1, kSource, "nCovars == 1");
    BYS::Assert(nFacts == 0, kSource, "nFacts == 0");
    group->Category(variable(parameter.GetCovariates().front()));
  } else {
    BYS::Assert(nFacts == 1, kSource, "nFacts == 1");
    const int slot = parameter.GetFactors().front();
    BpComposite label("^1 = ^2", true);
    label.Add(variable(slot));
    label.Add(BpDataValue(*DecodeRecordCatValue(slot, parameter.GetCategories().front()),
                          fDataSource.GetVariable(fSpecs.GetZARQVarIndex(slot))));
    label.Finish();
    group->Category(label);
  }
}
