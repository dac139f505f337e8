// Classical tests of independence in a two-way table.
#pragma once

#include "component/numeric/ContingencyTable.h"

namespace BayesComponent {

// P(X > statistic) for a chi-square variable with df > 0. 0 below the smallest normal double.
double ChiSquareSignificance(double statistic, double df);

// All tables have two or more rows and columns, none of them empty.
double PearsonChiSquare(const ContingencyTable& counts);
// F. Yates (1934), Suppl. J. R. Stat. Soc. 1:217-235; distances below 1/2 count as 0.
double ContinuityCorrectedChiSquare(const ContingencyTable& counts);

struct FisherSignificance {
  double fTwoSided;  // of all tables that are no more probable, up to a factor of 1 + 1e-7
  double fOneSided;  // of the smaller tail
};

// Of a table of two rows and two columns.
FisherSignificance FisherExactTest(const ContingencyTable& counts);

}  // namespace BayesComponent
