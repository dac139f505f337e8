// Templates that the table functions share.
#pragma once

#include "bayesian/BYSAssert.h"
#include "bayesian/BYSOutput.h"

// The split's results as the record of its model; anything else is a programming error.
template <class Stats>
const Stats& BYSOutput::GetStats() const {
  const auto* outputStats = dynamic_cast<const Stats*>(fpOutputStats);
  BYS::Assert(outputStats != nullptr, "BYSOutput", "outputStats != 0");
  return *outputStats;
}
