#include "host/adapter/Categories.h"

#include <algorithm>

#include "host/data/Observation.h"

namespace BayesHost {

int Categories::Find(double value) const {
  const int place = fPlaces.Find(value);
  return place < 0 ? -1 : fvCodeOfPlace[static_cast<std::size_t>(place)];
}

void Categories::Add(double value, const OBS& shown) {
  const int place = fPlaces.Add(value);
  fvValues.push_back(std::make_unique<const OBS>(shown));
  fvPlaceOfCode.push_back(static_cast<std::size_t>(place));
  fvCodeOfPlace.push_back(place);
}

void Categories::Sort(bool ascending) {
  std::sort(fvPlaceOfCode.begin(), fvPlaceOfCode.end(), [&](std::size_t a, std::size_t b) {
    return ascending ? IsLess(*fvValues[a], *fvValues[b]) : IsLess(*fvValues[b], *fvValues[a]);
  });
  for (std::size_t code = 0; code < fvPlaceOfCode.size(); ++code) {
    fvCodeOfPlace[fvPlaceOfCode[code]] = static_cast<int>(code);
  }
}

const OBS* Categories::Decode(int code) const {
  if (code < 0 || code >= Count()) return nullptr;
  return fvValues[fvPlaceOfCode[static_cast<std::size_t>(code)]].get();
}

}  // namespace BayesHost
