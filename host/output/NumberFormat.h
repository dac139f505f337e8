// How numbers are shown.
#pragma once

#include <string>

#include "platform/host/Output.h"

namespace BayesHost {

// A missing value is the system-missing double, and whatever is not finite.
bool IsMissing(double value);

// Shows a number in one of the formats of BpProcedure:
//   Count                                    no decimals
//   Mean, StdDev                             two decimals more than the variable has
//   VarSquared                               the variable's unit squared: twice its decimals and two more,
//   three to eight Correlation, Coefficient, GeneralStat    three decimals Significance three decimals,
//   "<.001" below Percent                                  of a number that is a percentage already: one
//   decimal and the sign Residual                                 one decimal SigDigit as many digits as the
//   number needs, at most ten
// Three-decimal statistics turn to the scientific notation when fixed decimals would show fewer than three
// significant digits, or at 1e6 and above; so do variances, at 1e15. The others do only when a nonzero value
// would show as zero (a count never), or at 1e15. A missing value is "."; a value that rounds to zero has no
// sign.
std::string ShowNumber(double value, const BpFormatSpec& format);

}  // namespace BayesHost
