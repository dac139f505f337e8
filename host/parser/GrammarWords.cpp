#include "host/parser/GrammarWords.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "host/output/HostKeys.h"

namespace BayesHost {
namespace {

std::string Say(const char* key, const Arguments& arguments = {}) {
  return StringTable::English().Fill(key, arguments);
}

struct KindWords {
  UPSpecTypes::ParamSpec fSpec;
  const char* fDescription;
  const char* fPlaceholder;
};
constexpr KindWords kKindWords[] = {
    {UPSpecTypes::kTokenList, "variables or values", "a b c"},
    {UPSpecTypes::kQuotedText, "a text in quotation marks", "'text'"},
    {UPSpecTypes::kNumber, "a number", "number"},
    {UPSpecTypes::kNumbers, "numbers", "number number"},
    {UPSpecTypes::kInteger, "a whole number", "integer"},
    {UPSpecTypes::kVariable, "a variable", "variable"},
    {UPSpecTypes::kVariablePairs, "variables, a b or a WITH b", "a WITH b"},
    {UPSpecTypes::kTable, "variables, rows BY columns", "rows BY columns"},
    {UPSpecTypes::kFile, "a file name in quotation marks", "'file'"},
};

// Null for a kind whose values are keywords only.
const KindWords* FindWords(UPSpecTypes::ParamSpec spec) {
  const auto words = std::find_if(std::begin(kKindWords), std::end(kKindWords),
                                  [spec](const KindWords& entry) { return entry.fSpec == spec; });
  return words == std::end(kKindWords) ? nullptr : words;
}

// The keywords that a value may be, several of them for a list of keywords.
std::string DescribeKeywords(const ParamDescriptor& param) {
  const bool qualifiers = param.GetSpec() == UPSpecTypes::kQualifier;
  const auto keywords = qualifiers ? GetNames(param.GetQualifiers()) : param.GetStringValues();
  if (param.GetSpec() == UPSpecTypes::kKeywords) return Say("one or more of [%1:, ^1:]1", {keywords});
  return keywords.size() == 1 ? keywords.front() : Say("one of [%1:, ^1:]1", {keywords});
}

std::string DescribeLower(const LowerBoundary& bound) {
  return Say(bound.option == UPSpecTypes::kAtLeast ? "at least ^1" : "greater than ^1",
             {FormatNumber(bound.value)});
}

std::string DescribeUpper(const UpperBoundary& bound) {
  return Say(bound.option == UPSpecTypes::kAtMost ? "at most ^1" : "less than ^1",
             {FormatNumber(bound.value)});
}

std::vector<std::string> DescribeInterval(const std::optional<LowerBoundary>& lower,
                                          const std::optional<UpperBoundary>& upper) {
  std::vector<std::string> phrases;
  if (lower) phrases.push_back(DescribeLower(*lower));
  if (upper) phrases.push_back(DescribeUpper(*upper));
  return phrases;
}

}  // namespace

std::string FormatNumber(double number) {
  return fmt::format("{}", number);
}

std::vector<std::string> DescribeBoundaries(const ParamDescriptor& param) {
  return DescribeInterval(param.GetLowerBoundary(), param.GetUpperBoundary());
}

std::string DescribeValue(const ParamDescriptor& param) {
  const KindWords* const words = FindWords(param.GetSpec());
  if (words == nullptr) return DescribeKeywords(param);
  return Say("^1[, %1: and ^1:]2[, or %1: or ^1:]3",
             {Say(words->fDescription), DescribeBoundaries(param), param.GetStringValues()});
}

std::string DescribeBody(const ParamDescriptor& body) {
  return body.GetName().empty() ? DescribeValue(body) : body.GetName() + " " + DescribeValue(body);
}

std::string ShowPlaceholder(UPSpecTypes::ParamSpec spec) {
  const KindWords* const words = FindWords(spec);
  return words == nullptr ? std::string() : Say(words->fPlaceholder);
}

std::vector<std::string> GetNames(const std::vector<ParamDescriptor>& params) {
  std::vector<std::string> names;
  names.reserve(params.size());
  for (const ParamDescriptor& param : params) names.push_back(param.GetName());
  return names;
}

std::vector<std::string> GetNames(const std::vector<SubComDescriptor>& subcommands) {
  std::vector<std::string> names;
  names.reserve(subcommands.size());
  for (const SubComDescriptor& subcommand : subcommands) names.push_back(subcommand.GetName());
  return names;
}

Fault MakeBoundaryFault(const std::string& param, const std::string& subcommand,
                        const std::optional<LowerBoundary>& lower, const std::optional<UpperBoundary>& upper,
                        std::size_t position) {
  return {kHostBoundary, {param, subcommand, DescribeInterval(lower, upper)}, position};
}

}  // namespace BayesHost
