#include "component/Records.h"

namespace BayesComponent {

void PosteriorColumns::Append(const PosteriorRow& row) {
  fvModes.push_back(row.fMode);
  fvMeans.push_back(row.fMean);
  fvVariances.push_back(row.fVariance);
  fvLowers.push_back(row.fLower);
  fvUppers.push_back(row.fUpper);
}

void CurveColumns::Append(const Curve& curve) {
  fvArguments.push_back(curve.fArguments);
  fvValues.push_back(curve.fValues);
}

void CurveSetColumns::Append(const CurveSet& curves) {
  fLikelihoods.Append(curves.fLikelihood);
  fPosteriors.Append(curves.fPosterior);
  fPriors.Append(curves.fPrior);
}

void MeanTestColumns::Append(const MeanTestRow& row) {
  fvNs.push_back(row.fN);
  fvMeans.push_back(row.fMean);
  fvStdDevs.push_back(row.fStdDev);
  fvStdErrors.push_back(row.fStdError);
  fvTs.push_back(row.fT);
  fvDFs.push_back(row.fDF);
  fvSigs.push_back(row.fSig);
  fvBayesFactors.push_back(row.fBayesFactor);
}

void GroupColumns::Append(const GroupRow& row) {
  fvNs.push_back(row.fN);
  fvMeans.push_back(row.fMean);
  fvStdDevs.push_back(row.fStdDev);
  fvStdErrors.push_back(row.fStdError);
}

}  // namespace BayesComponent
