#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace BayesHost {

// The distinct strings of a column; a string's code is its place in the order of first appearance. Trailing
// blanks don't count.
class StringPool {
 public:
  double Encode(std::string_view text);
  // Code of a string that Encode has seen, negative for any other.
  double Find(std::string_view text) const;
  // A code that Encode has given.
  const std::string& Decode(double code) const { return fStrings[static_cast<std::size_t>(code)]; }
  std::size_t CountStrings() const { return fStrings.size(); }

 private:
  std::deque<std::string> fStrings;  // stays in place, so that the map can look into it
  std::unordered_map<std::string_view, double> fCodes;
};

}  // namespace BayesHost
