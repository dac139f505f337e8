#include "host/adapter/Categories.h"

#include <algorithm>

#include "host/data/Observation.h"

namespace BayesHost {

int Categories::Find(double value) const {
  const auto place = fPlaces.find(value);
  return place == fPlaces.end() ? -1 : fvCodeOfPlace[place->second];
}

void Categories::Add(double value, const OBS& shown) {
  const std::size_t place = fValues.size();
  fPlaces.emplace(value, place);
  fValues.push_back(shown);
  fvPlaceOfCode.push_back(place);
  fvCodeOfPlace.push_back(static_cast<int>(place));
}

void Categories::Sort(bool ascending) {
  std::sort(fvPlaceOfCode.begin(), fvPlaceOfCode.end(), [&](std::size_t a, std::size_t b) {
    return ascending ? IsLess(fValues[a], fValues[b]) : IsLess(fValues[b], fValues[a]);
  });
  for (std::size_t code = 0; code < fvPlaceOfCode.size(); ++code) {
    fvCodeOfPlace[fvPlaceOfCode[code]] = static_cast<int>(code);
  }
}

const OBS* Categories::Decode(int code) const {
  if (code < 0 || code >= Count()) return nullptr;
  return &fValues[fvPlaceOfCode[static_cast<std::size_t>(code)]];
}

}  // namespace BayesHost
