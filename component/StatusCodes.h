// The status codes of the component. Their numbers and the meaning of their data are part of its interface:
// "variable" is a record slot, "pair" the position of a pair, both as datum 0.
#pragma once

namespace BayesComponent {

enum StatusCode : int {
  kIntegralNotConverged = 901,  // the value stands
  kNoAnalysis = 410000,         // error: the settings describe no analysis
  kCancelled = 410001,          // error: the user stopped the run
  kNoValidCases = 410003,       // error
  kTooFewCasesForPair = 410006,
  kConstantInPair = 410008,
  kPerfectCorrelation = 410009,
  kConstantVariable = 410010,           // variable
  kDependentConstant = 410011,          // error
  kPredictorsConstant = 410012,         // error
  kErrorVarianceTooUncertain = 410013,  // its posterior has no variance
  kPerfectFit = 410014,                 // nothing is left for the residuals: no Bayes factor
  kPriorMadeDiffuse = 410017,           // a prior that is undefined or has no conjugate analysis
  kPriorMeansLength = 410020,           // error: expected, given
  kPriorCovarianceLength = 410021,      // error: expected, given
  kRedundantParameter = 410023,         // one beyond the last levels of the factors
  kCoefficientsTooUncertain = 410024,   // their posterior has no variance
  kTooFewCases = 410025,                // variable
  kJeffreysTooFewCases = 410026,        // variable or pair: the posterior has no variance
  kDiffuseTooFewCases = 410027,         // variable or pair: likewise
  kConstantDifference = 410028,         // pair
  kTooFewPairs = 410029,                // pair
  kGroupTooSmall = 410030,              // error when a group has no case at all
  kVariancePriorMadeDiffuse = 410036,   // independent samples with unequal variances
  kNoCasesForBayesFactor = 410037,
  kNoPosteriorOfCounts = 410038,  // no cases, or an improper posterior
  kBayesFactorIsLog = 410041,
  kGroupsTooFewCases = 410042,  // variable
  kTestValuesLength = 410043,   // position of the F-test, expected
  kConstantNoBayesFactor = 410045,
  kBothGroupsConstant = 410046,
  kOneGroupConstant = 410047,
  kNothingToTest = 410048,  // F-test of redundant parameters, or of none
  kNotTwoFactors = 410049,  // error
  kConstantRowFactor = 410051,
  kConstantColumnFactor = 410052,
  kIntrinsicNeedsMultinomial = 410053,
  kNonparametricNeedsConjugate = 410054,
  kShapesTooSmall = 410055,
  kNonparametricNeedsMargin = 410056,
  kTooManyParameters = 410057,  // for a Bayes factor
  kFullModelTooLarge = 410058,  // likewise
  kNumericFailure = 410059,     // a Bayes factor or a posterior that broke down
};

}  // namespace BayesComponent
