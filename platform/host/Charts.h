// Where chart templates come from.
#pragma once

#include <string>

#include "platform/Visibility.h"

struct BAYES_PLATFORM PathFactory {
  // Kind 3: the folder of the chart templates.
  static std::string getPathInstance(int kind);
};

// The chart templates of one procedure.
class BAYES_PLATFORM FacSTDictionary {
 public:
  // `path`: as PathFactory gives it.
  explicit FacSTDictionary(std::string path);
  void SetProcedure(const std::string& title);

 private:
  std::string fPath;
  std::string fProcedure;
};
