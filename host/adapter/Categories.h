#pragma once

#include <memory>
#include <vector>

#include "host/data/ValueNumbers.h"
#include "platform/host/Data.h"

namespace BayesHost {

// The categories of one variable in one split. A category is known by the number that stands for it in the
// data (a numeric value, or the code of a string); its own code is its place in the order last asked for, at
// first the order of appearance.
class Categories {
 public:
  int Count() const { return static_cast<int>(fvValues.size()); }
  // Code of a value, -1 when it isn't among the categories.
  int Find(double value) const;
  // A value that Find doesn't know gets the next code.
  void Add(double value, const OBS& shown);
  // By value: numbers by size, strings by bytes.
  void Sort(bool ascending);
  // Null when there is no such code. Stays where it is for the life of the object.
  const OBS* Decode(int code) const;

 private:
  ValueNumbers fPlaces;                              // of appearance
  std::vector<std::unique_ptr<const OBS>> fvValues;  // by place
  std::vector<std::size_t> fvPlaceOfCode;
  std::vector<int> fvCodeOfPlace;
};

}  // namespace BayesHost
