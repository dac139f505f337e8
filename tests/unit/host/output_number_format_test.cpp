#include <gtest/gtest.h>

#include <limits>

#include "host/output/NumberFormat.h"

namespace {

using BayesHost::ShowNumber;

struct Case {
  double fValue;
  BpFormatSpec fFormat;
  const char* fShown;
};

constexpr double kMissing = -std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

const Case kCases[] = {
    {20, {BpFormatSpec::kCount}, "20"},
    {2.5, {BpFormatSpec::kCount}, "2"},
    {0.4, {BpFormatSpec::kCount}, "0"},
    {-0.4, {BpFormatSpec::kCount}, "0"},
    {1e9, {BpFormatSpec::kCount}, "1000000000"},
    {1e15, {BpFormatSpec::kCount}, "1.000e+15"},
    {kMissing, {BpFormatSpec::kCount}, "."},
    {kInfinity, {BpFormatSpec::kMean, 1}, "."},
    {kNoNumber, {BpFormatSpec::kSignificance}, "."},
    {kMissing, {BpFormatSpec::kPercent}, "."},
    // three significant digits, or the scientific notation
    {1.5399999999999998, {BpFormatSpec::kGeneralStat}, "1.540"},
    {0.1, {BpFormatSpec::kGeneralStat}, "0.100"},
    {0.0996, {BpFormatSpec::kGeneralStat}, "0.100"},
    {0.0994, {BpFormatSpec::kGeneralStat}, "9.940e-02"},
    {-0.0512, {BpFormatSpec::kCorrelation}, "-5.120e-02"},
    {0, {BpFormatSpec::kGeneralStat}, "0.000"},
    {-0.0, {BpFormatSpec::kGeneralStat}, "0.000"},
    {1e-300, {BpFormatSpec::kCoefficient}, "1.000e-300"},
    {999999, {BpFormatSpec::kCoefficient}, "999999.000"},
    {999999.9996, {BpFormatSpec::kCoefficient}, "1.000e+06"},
    {-1e6, {BpFormatSpec::kGeneralStat}, "-1.000e+06"},
    {1.7976931348623157e308, {BpFormatSpec::kGeneralStat}, "1.798e+308"},
    {0.05, {BpFormatSpec::kSignificance}, "0.050"},
    {0.001, {BpFormatSpec::kSignificance}, "0.001"},
    {0.000999, {BpFormatSpec::kSignificance}, "<.001"},
    {0, {BpFormatSpec::kSignificance}, "<.001"},
    {1, {BpFormatSpec::kSignificance}, "1.000"},
    // formats of the variable
    {1.54, {BpFormatSpec::kMean, 0}, "1.54"},
    {1.54, {BpFormatSpec::kMean, 2}, "1.5400"},
    {0.06, {BpFormatSpec::kMean, 0}, "0.06"},
    {0.004, {BpFormatSpec::kMean, 0}, "4.000e-03"},
    {-0.004, {BpFormatSpec::kStdDev, 1}, "-0.004"},
    {1e12, {BpFormatSpec::kMean, 0}, "1000000000000.00"},
    {4.25, {BpFormatSpec::kVarSquared, 0}, "4.250"},
    {0.0321, {BpFormatSpec::kVarSquared, 0}, "3.210e-02"},
    {0.0321, {BpFormatSpec::kVarSquared, 1}, "0.0321"},
    {12.5, {BpFormatSpec::kVarSquared, 6}, "12.50000000"},
    {12.34, {BpFormatSpec::kResidual}, "12.3"},
    {0.02, {BpFormatSpec::kResidual}, "2.000e-02"},
    {33.333, {BpFormatSpec::kPercent}, "33.3%"},
    {0, {BpFormatSpec::kPercent}, "0.0%"},
    {95, {BpFormatSpec::kSigDigit}, "95"},
    {99.5, {BpFormatSpec::kSigDigit}, "99.5"},
    {-0.0, {BpFormatSpec::kSigDigit}, "0"},
    {1e-6, {BpFormatSpec::kSigDigit}, "1e-06"},
    {0.1 + 0.2, {BpFormatSpec::kSigDigit}, "0.3"},
};

TEST(OutputNumberFormat, ShowsEachKindByItsRule) {
  for (const Case& row : kCases)
    EXPECT_EQ(ShowNumber(row.fValue, row.fFormat), row.fShown)
        << row.fValue << " in format " << row.fFormat.fKind << " with " << row.fFormat.fVariableDecimals;
}

}  // namespace
