// Collects the statuses of one model.
#pragma once

#include "component/StatusCodes.h"
#include "platform/component/Common.h"

namespace BayesComponent {

class StatusList {
 public:
  // A part of the results is missing or was computed otherwise than asked; the rest stands. A status that is
  // in the list already isn't repeated.
  void Warn(StatusCode code, int datum0 = 0, int datum1 = 0);
  // There are no results. The first failure is the one reported.
  void Fail(StatusCode code, int datum0 = 0, int datum1 = 0);

  // Warns of everything that the other list warns of, for tasks that collect their own.
  void Warn(const StatusList& other);

  // OK while nothing failed.
  const MCCommon_850::MCStatus& Error() const { return fError; }
  // Warnings and failures in the order they arose.
  const MCCommon_850::MCWarnings& Warnings() const { return fWarnings; }

 private:
  bool Contains(StatusCode code, int datum0, int datum1) const;

  MCCommon_850::MCStatus fError;
  MCCommon_850::MCWarnings fWarnings;
};

}  // namespace BayesComponent
