// Walks a declared grammar: commands made from the declaration itself, one for each boundary and
// abbreviation.
#pragma once

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "host/parser/GrammarCheck.h"
#include "support/ParserDump.h"

namespace BayesHost {

class GrammarWalk {
 public:
  explicit GrammarWalk(const CommandDescriptor& grammar) : fGrammar(grammar) {}

  // Each boundary: the value at it, the nearest value beyond it, one well inside. Returns the number of
  // boundaries.
  int CheckBoundaries();
  // Each prefix of each name: accepted, and read as the name, if it is the name or has three letters and
  // begins no other name of its place. Returns the number of prefixes.
  int CheckAbbreviations();

 private:
  using Subject = const ParamDescriptor&;

  // The dump of the accepted command; "" for a refused one.
  std::string Accept(const std::string& command) const;
  // A command as short as the grammar allows, with `text` as the parameter `name` of the subcommand.
  std::string MakeCommand(const SubComDescriptor& target, const std::string& targetText,
                          const std::string& name, const std::string& text) const;
  static std::string MakeValue(Subject param);
  static double GetInside(Subject param);
  template <class MakeText>
  int CheckNumbers(const SubComDescriptor& subcommand, const std::string& name, Subject param,
                   MakeText makeText);
  template <class MakeText>
  int CheckNames(const std::vector<std::string>& names, MakeText makeText);

  const CommandDescriptor& fGrammar;
};

inline std::string GrammarWalk::Accept(const std::string& command) const {
  std::vector<SubComObj> accepted;
  const auto fault = CheckCommand(LexStatement(command), true, fGrammar, accepted);
  return fault ? "" : DumpCommand(fGrammar.GetCommandName(), accepted);
}

inline double GrammarWalk::GetInside(Subject param) {
  const auto& lower = param.GetLowerBoundary();
  const auto& upper = param.GetUpperBoundary();
  if (lower && upper) return (lower->value + upper->value) / 2;
  return lower ? lower->value + 1 : upper ? upper->value - 1 : 1;
}

inline std::string GrammarWalk::MakeValue(Subject param) {
  switch (param.GetSpec()) {
    case UPSpecTypes::kKeyword:
    case UPSpecTypes::kKeywords:
      return param.GetStringValues().front();
    case UPSpecTypes::kQualifier:
      return param.GetQualifiers().front().GetName();
    case UPSpecTypes::kQuotedText:
    case UPSpecTypes::kFile:
      return "'text'";
    case UPSpecTypes::kNumber:
    case UPSpecTypes::kNumbers:
      return fmt::format("{}", GetInside(param));
    case UPSpecTypes::kInteger:
      return fmt::format("{}", std::floor(GetInside(param)));
    case UPSpecTypes::kVariablePairs:
      return "a WITH b";
    case UPSpecTypes::kTable:
      return "a BY b";
    default:
      return "a";
  }
}

inline std::string GrammarWalk::MakeCommand(const SubComDescriptor& target, const std::string& targetText,
                                            const std::string& name, const std::string& text) const {
  std::string command = fGrammar.GetCommandName();
  for (const SubComDescriptor& subcommand : fGrammar.GetSubComs()) {
    const bool isTarget = &subcommand == &target;
    if (!isTarget && !subcommand.IsRequired()) continue;
    if (!subcommand.GetName().empty()) command += " /" + (isTarget ? targetText : subcommand.GetName());
    if (subcommand.GetSpec() == UPSpecTypes::kUnnamedBody)
      command += " " + (subcommand.GetExportParam() ? MakeValue(*subcommand.GetExportParam()) : "y BY a");
    for (const ParamDescriptor& param : subcommand.GetParams())
      if (param.IsRequired() && !(isTarget && param.GetName() == name))
        command += " " + param.GetName() + "=" + MakeValue(param);
    if (isTarget && !text.empty()) command += " " + text;
  }
  return command + ".";
}

template <class MakeText>
int GrammarWalk::CheckNumbers(const SubComDescriptor& subcommand, const std::string& name, Subject param,
                              MakeText makeText) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const auto expect = [&](double value, bool accepted) {
    const std::string command =
        MakeCommand(subcommand, subcommand.GetName(), name, makeText(fmt::format("{}", value)));
    EXPECT_EQ(!Accept(command).empty(), accepted) << command;
  };
  const bool isInteger = param.GetSpec() == UPSpecTypes::kInteger;
  const auto next = [&](double value, double towards) {
    return isInteger ? value + (towards > 0 ? 1 : -1) : std::nextafter(value, towards);
  };
  int count = 0;
  if (const auto& lower = param.GetLowerBoundary()) {
    expect(lower->value, lower->option == UPSpecTypes::kAtLeast);
    expect(next(lower->value, -kInfinity), false);
    expect(next(lower->value, kInfinity), true);
    ++count;
  }
  if (const auto& upper = param.GetUpperBoundary()) {
    expect(upper->value, upper->option == UPSpecTypes::kAtMost);
    expect(next(upper->value, kInfinity), false);
    expect(next(upper->value, -kInfinity), true);
    ++count;
  }
  return count;
}

inline int GrammarWalk::CheckBoundaries() {
  int count = 0;
  for (const SubComDescriptor& subcommand : fGrammar.GetSubComs()) {
    for (const ParamDescriptor& param : subcommand.GetParams()) {
      const std::string& name = param.GetName();
      count += CheckNumbers(subcommand, name, param,
                            [&](const std::string& number) { return name + "=" + number; });
      for (const ParamDescriptor& qualifier : param.GetQualifiers())
        count += CheckNumbers(subcommand, name, qualifier, [&](const std::string& number) {
          return name + "=" + qualifier.GetName() + "(" + number + ")";
        });
    }
  }
  return count;
}

// What a prefix must be read as: the name that it is, else the only one that it begins; "" for none.
inline std::string FindMeant(const std::string& prefix, const std::vector<std::string>& names) {
  std::vector<std::string> begun;
  for (const std::string& name : names) {
    if (name == prefix) return name;
    if (name.starts_with(prefix)) begun.push_back(name);
  }
  return prefix.size() >= 3 && begun.size() == 1 ? begun.front() : "";
}

// `makeText` gives the command in which a prefix of one of the names stands in its place.
template <class MakeText>
int GrammarWalk::CheckNames(const std::vector<std::string>& names, MakeText makeText) {
  int count = 0;
  for (const std::string& name : names) {
    const std::string whole = Accept(makeText(name, name));
    EXPECT_NE(whole, "") << makeText(name, name);
    for (std::size_t length = 1; length < name.size(); ++length, ++count) {
      const std::string prefix = name.substr(0, length);
      const std::string meant = FindMeant(prefix, names);
      const std::string accepted = Accept(makeText(name, prefix));
      if (meant.empty() || meant == name) {
        EXPECT_EQ(accepted, meant.empty() ? "" : whole) << makeText(name, prefix);
      } else {
        EXPECT_NE(accepted, whole) << makeText(name, prefix);
      }
    }
  }
  return count;
}

inline int GrammarWalk::CheckAbbreviations() {
  int count = 0;
  std::vector<std::string> subcommands;
  for (const SubComDescriptor& subcommand : fGrammar.GetSubComs())
    if (!subcommand.GetName().empty()) subcommands.push_back(subcommand.GetName());
  for (const SubComDescriptor& subcommand : fGrammar.GetSubComs()) {
    const std::string& name = subcommand.GetName();
    std::vector<std::string> params;
    for (const ParamDescriptor& param : subcommand.GetParams()) params.push_back(param.GetName());
    for (const ParamDescriptor& param : subcommand.GetParams()) {
      std::vector<std::string> keywords = param.GetStringValues();
      for (const ParamDescriptor& qualifier : param.GetQualifiers()) keywords.push_back(qualifier.GetName());
      count += CheckNames(keywords, [&](const std::string&, const std::string& prefix) {
        return MakeCommand(subcommand, name, param.GetName(), param.GetName() + "=" + prefix);
      });
    }
    count += CheckNames(params, [&](const std::string& whole, const std::string& prefix) {
      for (const ParamDescriptor& param : subcommand.GetParams())
        if (param.GetName() == whole)
          return MakeCommand(subcommand, name, whole, prefix + "=" + MakeValue(param));
      return std::string();
    });
  }
  return count + CheckNames(subcommands, [&](const std::string& whole, const std::string& prefix) {
           for (const SubComDescriptor& subcommand : fGrammar.GetSubComs())
             if (subcommand.GetName() == whole) return MakeCommand(subcommand, prefix, "", "");
           return std::string();
         });
}

}  // namespace BayesHost
