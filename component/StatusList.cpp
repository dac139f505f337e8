#include "component/StatusList.h"

#include <algorithm>

namespace BayesComponent {

using MCCommon_850::MCStatus;

bool StatusList::Contains(StatusCode code, int datum0, int datum1) const {
  const auto& statuses = fWarnings.GetWarnings(true);
  return std::any_of(statuses.begin(), statuses.end(), [=](const MCStatus& status) {
    return status.GetCode() == code && status.GetDatum(0) == datum0 && status.GetDatum(1) == datum1;
  });
}

void StatusList::Warn(StatusCode code, int datum0, int datum1) {
  if (!Contains(code, datum0, datum1)) fWarnings.Add({code, MCStatus::Severity::Warning, datum0, datum1});
}

void StatusList::Warn(const StatusList& other) {
  for (const MCStatus& status : other.Warnings().GetWarnings(true)) {
    Warn(static_cast<StatusCode>(status.GetCode()), status.GetDatum(0), status.GetDatum(1));
  }
}

void StatusList::Fail(StatusCode code, int datum0, int datum1) {
  const MCStatus status(code, MCStatus::Severity::Error, datum0, datum1);
  fWarnings.Add(status);
  if (!fError.IsError()) fError = status;
}

}  // namespace BayesComponent
