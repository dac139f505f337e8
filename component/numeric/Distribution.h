// Distributions that a posterior or prior can have, seen through what the results need of them.
#pragma once

#include <optional>

namespace BayesComponent {

struct Interval {
  double fLower;
  double fUpper;
};

class Distribution {
 public:
  virtual ~Distribution() = default;
  // Nothing where the distribution has no such number.
  virtual std::optional<double> Mode() const = 0;
  virtual std::optional<double> Mean() const = 0;
  virtual std::optional<double> Variance() const = 0;
  // The points that leave the probability `tail`, above 0 and below 1, below them or above them.
  virtual double LowerQuantile(double tail) const = 0;
  virtual double UpperQuantile(double tail) const = 0;
  // Between both: one search for a quantile where the distribution is symmetric.
  virtual Interval CentralInterval(double tail) const { return {LowerQuantile(tail), UpperQuantile(tail)}; }
  virtual double Density(double x) const = 0;
};

// Normal with mean and variance > 0.
class NormalDistribution : public Distribution {
 public:
  NormalDistribution(double mean, double variance);
  std::optional<double> Mode() const override { return fMean; }
  std::optional<double> Mean() const override { return fMean; }
  std::optional<double> Variance() const override { return fVariance; }
  double LowerQuantile(double tail) const override;
  double UpperQuantile(double tail) const override;
  double Density(double x) const override;

 private:
  double fMean;
  double fVariance;
};

// Student's t with `df` > 0 degrees of freedom, shifted to `location`, its scale squared > 0.
class StudentDistribution : public Distribution {
 public:
  StudentDistribution(double df, double location, double squaredScale);
  std::optional<double> Mode() const override { return fLocation; }
  std::optional<double> Mean() const override;
  std::optional<double> Variance() const override;
  double LowerQuantile(double tail) const override;
  double UpperQuantile(double tail) const override;
  Interval CentralInterval(double tail) const override;
  double Density(double x) const override;
  double LogDensity(double x) const;
  // P(X > x), without loss of digits far out.
  double UpperProbability(double x) const;

  double DF() const { return fDF; }
  double Location() const { return fLocation; }
  double Scale() const { return fScale; }

 private:
  double fDF;
  double fLocation;
  double fScale;
  double fLogPeak;
};

// Beta with both shapes > 0.
class BetaDistribution : public Distribution {
 public:
  BetaDistribution(double a, double b);
  // The interior maximum, or the end of [0, 1] at which the density has its only maximum.
  std::optional<double> Mode() const override;
  std::optional<double> Mean() const override { return fA / 2 / (fA / 2 + fB / 2); }
  std::optional<double> Variance() const override;
  double LowerQuantile(double tail) const override;
  double UpperQuantile(double tail) const override;
  double Density(double x) const override;

 private:
  double NearlyNormalQuantile(double z) const;
  double LimitQuantile(double tail, bool upper) const;

  double fA;
  double fB;
};

// Gamma with shape and rate > 0.
class GammaDistribution : public Distribution {
 public:
  GammaDistribution(double shape, double rate);
  std::optional<double> Mode() const override;
  std::optional<double> Mean() const override { return fShape / fRate; }
  std::optional<double> Variance() const override { return fShape / (fRate * fRate); }
  double LowerQuantile(double tail) const override;
  double UpperQuantile(double tail) const override;
  double Density(double x) const override;

 private:
  double fShape;
  double fRate;
};

// Inverse gamma with shape and scale > 0: the density falls as x^-(shape + 1) exp(-scale/x).
class InverseGammaDistribution : public Distribution {
 public:
  InverseGammaDistribution(double shape, double scale);
  std::optional<double> Mode() const override { return fScale / (fShape + 1); }
  std::optional<double> Mean() const override;
  std::optional<double> Variance() const override;
  double LowerQuantile(double tail) const override;
  double UpperQuantile(double tail) const override;
  double Density(double x) const override;

 private:
  double fShape;
  double fScale;
};

// All probability at one point: the limit of a distribution whose scale vanishes.
class PointDistribution : public Distribution {
 public:
  explicit PointDistribution(double point) : fPoint(point) {}
  std::optional<double> Mode() const override { return fPoint; }
  std::optional<double> Mean() const override { return fPoint; }
  std::optional<double> Variance() const override { return 0.0; }
  double LowerQuantile(double) const override { return fPoint; }
  double UpperQuantile(double) const override { return fPoint; }
  // It has none: infinite at the point, 0 elsewhere.
  double Density(double x) const override;

 private:
  double fPoint;
};

// P(X > statistic) for an F statistic >= 0 with both degrees of freedom > 0. 0 below the smallest normal
// double.
double FSignificance(double statistic, double df1, double df2);

// Two-sided significance of a test statistic that is Student with `df` or, at infinite df, normal. 0 below
// the smallest normal double.
double TwoSidedSignificance(double statistic, double df);

}  // namespace BayesComponent
