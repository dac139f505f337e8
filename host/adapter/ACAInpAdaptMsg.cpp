#include "host/output/HostKeys.h"
#include "platform/host/Adapter.h"
#include "platform/host/Output.h"

namespace {

void ShowError(const char* key) {
  BpComposite text(key, true);
  text.Finish();
  BpError(text, kBpErrorShowAll, kBpErrorLevelError);
}

}  // namespace

ACAInpAdaptMsg::ACAInpAdaptMsg(const ProcedureDataSource&) {}

void ACAInpAdaptMsg::NoValidCasesForSelect() const {
  ShowError(BayesHost::kHostNoCasesForSelect);
}

void ACAInpAdaptMsg::NoValidCases() const {
  ShowError(BayesHost::kHostNoValidCases);
}

// A split without cases leaves the other splits to be analysed: a warning.
void ACAInpAdaptMsg::NoValidCasesSplit() const {
  BpComposite text(BayesHost::kHostNoValidCasesSplit, true);
  text.Sublist();
  text.SplitList();
  text.EndSublist();
  text.Finish();
  BpError(text, kBpErrorShowAll, kBpErrorLevelWarning);
}
