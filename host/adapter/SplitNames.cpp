#include "host/adapter/SplitNames.h"

#include "host/output/BpCellTextState.h"
#include "host/output/CommandOutput.h"
#include "host/session/Session.h"
#include "platform/component/Common.h"
#include "platform/host/Output.h"

namespace BayesHost {

namespace {

bool IsMissing(const OBS& value) {
  return value.IsString() ? value.GetString().empty() : value.GetNumber() == MCCommon_850::MCMV::Missing();
}

SplitValue Describe(const ZARQ_Variable& variable, const OBS& value) {
  SplitValue described;
  described.fVariable = variable.GetName();
  described.fLabel = variable.GetPreferredLabel();
  described.fValue = value.IsString() ? DataValue(value.GetString()) : DataValue(value.GetNumber());
  described.fText = IsMissing(value) ? "." : GetShown(BpDataValue(value, variable)).fText;
  return described;
}

}  // namespace

void NameSplit(const DataSet& data, const SplitIndex::Group& group) {
  Split split;
  for (std::size_t i = 0; i < group.fvKey.size(); ++i) {
    split.push_back(Describe(data.GetVariable(data.GetSplit()[i]), group.fvKey[i]));
  }
  Session::Current().GetOutput().SetSplit(std::move(split));
}

void ForgetSplit() {
  Session::Current().GetOutput().SetSplit({});
}

}  // namespace BayesHost
