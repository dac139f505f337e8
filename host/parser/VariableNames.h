// Names in a command to variables of the data.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "platform/host/Tokens.h"

namespace BayesHost {

// A variable by dictionary index, and the place of the word that brought it in.
struct NamedVariable {
  int fIndex;
  std::size_t fPosition;
};

// What messages call a list of variables: a parameter and the subcommand or command it stands in.
struct ListName {
  std::string fParam;
  std::string fWhere;
};

class VariableNames {
 public:
  // The data's variable names in dictionary order.
  explicit VariableNames(std::vector<std::string> names) : fvNames(std::move(names)) {}

  // The variables of a list in the order of their naming, repeats included. Knows `a TO d` (dictionary order)
  // and ALL; a quoted word is always a name. Throws a Rejection.
  std::vector<NamedVariable> Resolve(const std::vector<ZARQ_Token>& words, const ListName& list) const;

 private:
  int Find(const ZARQ_Token& word) const;

  std::vector<std::string> fvNames;
};

// The words of `dependent BY factors WITH covariates`, taken apart. BY and WITH may be absent and stand in
// any order, with a name before and behind each. Throws a Rejection.
struct RegressionWords {
  std::vector<ZARQ_Token> fvDependent;
  std::vector<ZARQ_Token> fvFactors;
  std::vector<ZARQ_Token> fvCovariates;
};
RegressionWords SplitRegressionWords(const std::vector<ZARQ_Token>& words, const std::string& by,
                                     const std::string& with, const ListName& list);

// True for the word itself, not for a quoted name that reads the same.
bool IsWord(const ZARQ_Token& token, const char* word);

}  // namespace BayesHost
