// The contents of the log-linear record.
#pragma once

#include <vector>

#include "component/Records.h"
#include "component/SettingsView.h"

namespace MCBSN_850 {

struct BSNContingency::Data {
  Matrix fvCounts;
  Matrix fvExpected;
  Values fvRowTotals;
  Values fvColTotals;
  double fTotal = 0;
  Indices fvNonEmptyRows;
  Indices fvNonEmptyCols;
  double fCellsBelow5 = 0;
  double fPctCellsBelow5 = BayesComponent::kMissing;
  double fMinExpected = BayesComponent::kMissing;
};

struct BSNLogLinearOutputStats::Data {
  explicit Data(BSNContingency table) : fTable(std::move(table)) {}

  BSNContingency fTable;
  BayesComponent::LoggableColumns fBayesFactor;
  MCMath_850::MCTestStats fChiSquare;
  MCMath_850::MCTestStats fLikelihoodRatio;
  MCMath_850::MCTestStats fContinuityCorrected;
  double fFisherTwoSided = BayesComponent::kMissing;
  double fFisherOneSided = BayesComponent::kMissing;
  double fTrainingCases = BayesComponent::kMissing;
  double fTrainingCategories = BayesComponent::kMissing;
  double fCasesPerCategory = BayesComponent::kMissing;
  std::vector<BayesEstimation> fvInteractions;
};

}  // namespace MCBSN_850
