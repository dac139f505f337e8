// How numbers are shown.
#pragma once

#include <string>

namespace BayesHost {

// A missing value is the system-missing double, and whatever is not finite.
bool IsMissing(double value);

struct NumberFormat {
  enum class Kind {
    Count,         // no decimals
    Mean,          // two decimals more than the variable has
    StdDev,        // the same
    VarSquared,    // the variable's unit squared: twice its decimals and two more, three to eight
    Correlation,   // three decimals
    Coefficient,   // three decimals
    GeneralStat,   // three decimals
    Significance,  // three decimals, "<.001" below
    Percent,       // of a number that is a percentage already: one decimal and the sign
    Residual,      // one decimal
    SigDigit,      // as many digits as the number needs
  };
  Kind fKind = Kind::GeneralStat;
  // Decimals of the variable's own print format, for Mean, StdDev and VarSquared.
  int fVariableDecimals = 0;

  // Three-decimal statistics and variances turn to the scientific notation when fixed decimals would show
  // fewer than three significant digits, or at 1e6 and above; means and counts only when a nonzero value
  // would show as zero, or at 1e15 and above. A missing value is "."; a value that rounds to zero has no
  // sign.
  std::string Show(double value) const;
};

}  // namespace BayesHost
