// Component statuses in words: one table from code to message key.
#include <algorithm>
#include <sstream>

#include "bayesian/BYSFactory.h"
#include "bayesian/BYSMessage.h"

namespace {

using Status = MCCommon_850::MCStatus;

// What fills ^1 and ^2.
enum class Arguments {
  None,
  Variable,    // datum 0 is a record slot
  Pair,        // datum 0 is the position of a pair
  Counts,      // data 0 and 1
  FTestCounts  // datum 0 is the 0-based position of an F-test, datum 1 a count
};

// When a row speaks.
enum class When { Always, FirstSplitOnly, WithPosterior };

// A row that names a selector applies when the settings' value of it equals `selected` (kAnything: always).
enum class Selector { None, ModelType, FixType };
constexpr int kAnything = -1;

struct MessageRow {
  int code;
  const char* key;
  const char* splitKey;
  Arguments arguments = Arguments::None;
  When when = When::Always;
  Selector selector = Selector::None;
  int selected = kAnything;
};

// The first row that fits a status counts.
// clang-format off
constexpr MessageRow kMessages[] = {
  {901, "Numer integr iter not converge ...", "Numer integr iter not converge, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410003, "No valid cases ...", "No valid cases in split [%1=%2:,^1=^2:]1 ..."},
  {410006, "Not enough cases for Pearson ...", "Not enough cases for Pearson for split [%1 = %2:,^1 = ^2:]1 ..."},
  {410008, "Constant variables for Pearson ...", "Constant variables for Pearson for split [%1 = %2:,^1 = ^2:]1 ..."},
  {410009, "Perfect correlation ...", "Perfect correlation for split [%1 = %2:,^1 = ^2:]1 ..."},
  {410010, "Some var ^1 const ...", "Some var ^1 const for split [%1 = %2:,^1 = ^2:]2 ...", Arguments::Variable},
  {410011, "Dep var const ...", "Dep var const for split [%1 = %2:,^1 = ^2:]1 ..."},
  {410012, "All pred const ...", "All pred const for split [%1 = %2:,^1 = ^2:]1 ..."},
  {410013, "Degree of freedom <= 4 ...", "Degree of freedom <= 4, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410014, "Perfect Fit no BF ...", "Perfect Fit no BF, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410017, "Prior dist not support, convert to diffuse ...", "", Arguments::None, When::FirstSplitOnly},
  {410020, "Prior mean expects length ^1 has ^2 ...", "Prior mean expects length ^1 has ^2, split [%1 = %2:,^1 = ^2:]3 ...", Arguments::Counts},
  {410021, "V matrix expects size ^1 has ^2 ...", "V matrix expects size ^1 has ^2, split [%1 = %2:,^1 = ^2:]3 ...", Arguments::Counts},
  {410023, "Redundant parameter ...", "Redundant parameter in split [%1=%2:,^1=^2:]1 ..."},
  {410024, "Degree of freedom <= 2 ...", "Degree of freedom <= 2, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410025, "Not enough cases for var ^1 ...", "Not enough cases for var ^1, split [%1 = %2:,^1 = ^2:]2 ...", Arguments::Variable},
  {410026, "Jeffrey2 <= 3, var ^1 ...", "Jeffrey2 <= 3, var ^1 for split [%1 = %2:,^1 = ^2:]2 ...", Arguments::Variable, When::WithPosterior, Selector::ModelType, BSNConst::OneSample},
  {410026, "Jeffrey2 <= 3, pair ^1 ^2 ...", "Jeffrey2 <= 3, pair ^1 ^2 for split [%1 = %2:,^1 = ^2:]3 ...", Arguments::Pair, When::WithPosterior, Selector::ModelType, BSNConst::Related},
  {410026, "", ""},
  {410027, "Normal diffuse <= 5, var ^1 ...", "Normal diffuse <= 5, var ^1 for split [%1 = %2:,^1 = ^2:]2 ...", Arguments::Variable, When::WithPosterior, Selector::ModelType, BSNConst::OneSample},
  {410027, "Normal diffuse <= 5, pair ^1 ^2 ...", "Normal diffuse <= 5, pair ^1 ^2 for split [%1 = %2:,^1 = ^2:]3 ...", Arguments::Pair, When::WithPosterior, Selector::ModelType, BSNConst::Related},
  {410027, "", ""},
  {410028, "Const var for pair ^1 ^2 ...", "Const var for pair ^1 ^2 for split [%1 = %2:,^1 = ^2:]3 ...", Arguments::Pair},
  {410029, "Not enough valid cases for pair ^1 ^2 ...", "Not enough valid cases for pair ^1 ^2 for split [%1 = %2:,^1 = ^2:]3 ...", Arguments::Pair},
  {410030, "Insufficient data for some var ...", "Insufficient data for some var, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410036, "Indep var not Diffuse ...", "", Arguments::None, When::FirstSplitOnly},
  {410037, "No valid cases for Bayes Factor ...", "No valid cases for Bayes Factor for split [%1 = %2:,^1 = ^2:]1 ..."},
  {410038, "No valid cases for conjugate ...", "No valid cases for conjugate for split [%1 = %2:,^1 = ^2:]1 ..."},
  {410041, "Factor value is log ...", "Factor value is log split [%1 = %2:,^1 = ^2:]1 ..."},
  {410042, "Cases in Independent <=5, var ^1 ...", "Cases in Independent <=5, var ^1 for split [%1 = %2:,^1 = ^2:]2 ...", Arguments::Variable, When::WithPosterior},
  {410043, "F Test ^1 expects ^2 values ...", "F Test ^1 expects ^2 values, split [%1 = %2:,^1 = ^2:]3 ...", Arguments::FTestCounts},
  {410045, "Bayes Factor has stddev = 0 ...", "Bayes Factor has stddev = 0, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410046, "Both indep group const ...", "Both indep group const, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410047, "One indep group const ...", "One indep group const, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410048, "F Test empty ...", "F Test empty, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410049, "Loglin two factors ...", "", Arguments::None, When::FirstSplitOnly},
  {410051, "Loglin const row ...", "Loglin const row, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410052, "Loglin const col ...", "Loglin const col, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410053, "Loglin cannot use Intrinsic ...", "Loglin cannot use Intrinsic, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410054, "Loglin cannot use Nonparam, col ...", "Loglin cannot use Nonparam, col, split [%1 = %2:,^1 = ^2:]1 ...", Arguments::None, When::Always, Selector::FixType, BSNConst::FixColumn},
  {410054, "Loglin cannot use Nonparam, row ...", "Loglin cannot use Nonparam, row, split [%1 = %2:,^1 = ^2:]1 ...", Arguments::None, When::Always, Selector::FixType, BSNConst::FixRow},
  {410054, "Loglin cannot use Nonparam ...", "Loglin cannot use Nonparam, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410055, "Loglin prior comp too small ...", "Loglin prior comp too small, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410056, "Loglin NPar Total ...", "Loglin NPar Total, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410057, "Number of regr param too big ...", "Number of regr param too big, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410058, "Number of full regr param too big ...", "Number of full regr param too big, split [%1 = %2:,^1 = ^2:]1 ..."},
  {410059, "Numeric problem in BF compute ...", "Numeric problem in BF compute, split [%1 = %2:,^1 = ^2:]1 ..."},
};
constexpr MessageRow kInternalError{kAnything, "Internal error ...", "Internal error for split [%1 = %2:,^1 = ^2:]1 ..."};
constexpr MessageRow kInternalWarning{kAnything, "Internal warning ...", "Internal warning for split [%1 = %2:,^1 = ^2:]1 ..."};
// clang-format on

bool Applies(const MessageRow& row, const MCBSN_850::BSNSettings& settings) {
  switch (row.selector) {
    case Selector::ModelType:
      return row.selected == settings.GetModelType();
    case Selector::FixType:
      return row.selected == settings.GetFixType();
    default:
      return true;
  }
}

const MessageRow& FindRow(const Status& status, bool splitFile, const MCBSN_850::BSNSettings& settings) {
  const auto found = std::find_if(std::begin(kMessages), std::end(kMessages), [&](const MessageRow& row) {
    return row.code == status.GetCode() && Applies(row, settings);
  });
  if (found != std::end(kMessages)) return *found;
  return status.IsError() && !splitFile ? kInternalError : kInternalWarning;
}

}  // namespace

void BYSFactory::DisplayMessage(const Status& status) const {
  if (!status.IsError() && !status.IsWarning()) return;
  const Settings& settings = *GetBSNSettings();
  const MessageRow& row = FindRow(status, IsSplitFile(), settings);
  const bool posterior = settings.GetAnalysType() != BSNConst::BayesFactor;
  if (row.when == When::WithPosterior && !posterior) return;
  if (row.when == When::FirstSplitOnly && fSplitIndex != 0) return;
  const bool splitForm = IsSplitFile() && row.when != When::FirstSplitOnly;
  const std::string key = splitForm ? row.splitKey : row.key;
  if (key.empty()) return;

  // With split files an error doesn't stop the other splits' output, so it shows as a warning.
  const BpErrorLevel level = status.IsError() && !IsSplitFile() ? kBpErrorLevelError : kBpErrorLevelWarning;
  const auto variable = [this](int slot) {
    return BpVariable(fDataSource.GetVariable(fSpecs.GetZARQVarIndex(slot)));
  };
  const auto count = [](int value) { return BpNumber(value, BpProcedure::Count()); };
  const auto show = [&](const BYS::MessageParts& parts) {
    BYS::ShowMessage(key.c_str(), parts, splitForm, level);
  };
  switch (row.arguments) {
    case Arguments::None:
      return show({});
    case Arguments::Variable:
      return show({variable(status.GetDatum(0))});
    case Arguments::Pair: {
      const auto pair = static_cast<std::size_t>(status.GetDatum(0));
      return show({variable(settings.GetCovariates()[pair]), variable(settings.Get2ndRelatedList()[pair])});
    }
    case Arguments::Counts:
      return show({count(status.GetDatum(0)), count(status.GetDatum(1))});
    case Arguments::FTestCounts:
      return show({count(status.GetDatum(0) + 1), count(status.GetDatum(1))});
  }
}

void BYSFactory::DisplayAllMessages() const {
  Component* component = GetBSNComponent();
  if (component == nullptr) return;
  component->GetOutputStats();
  for (const Status& status : component->GetWarningMessages()->GetWarnings(true)) DisplayMessage(status);
}

void BYSFactory::DisplayStatus() const {
  ACACommonDisplay::DisplayI("BSN Component returned code:", fStatus.GetCode());
  BP_ToFront(BP_Character(fStatus.IsOK()      ? "BSN Component status: OK"
                          : fStatus.IsError() ? "BSN Component status: Error"
                                              : "BSN Component status: Warning"));
}

void BYSFactory::DisplayOutput() const {
  Component* component = GetBSNComponent();
  const MCBSN_850::BSNOutputStats* stats = component == nullptr ? nullptr : component->GetOutputStats();
  std::ostringstream text;
  if (stats == nullptr) {
    text << "BSN output is not available";
  } else {
    stats->Write(text);
  }
  BP_ToFront(BP_Character(text.str()));
}
