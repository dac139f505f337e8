// A declared grammar in words, for messages and help alike.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/parser/Fault.h"
#include "platform/host/Grammar.h"

namespace BayesHost {

using LowerBoundary = UPBoundary<UPSpecTypes::LowerBdryOptions>;
using UpperBoundary = UPBoundary<UPSpecTypes::UpperBdryOptions>;

// As few digits as tell the number from every other.
std::string FormatNumber(double number);

// "at least 0", "less than 100": one phrase for each boundary there is.
std::vector<std::string> DescribeBoundaries(const ParamDescriptor& param);
// What a value of the parameter is: "a whole number, greater than 0, or RANDOM".
std::string DescribeValue(const ParamDescriptor& param);
// What a body without named parameters is: "BY variables, or OFF".
std::string DescribeBody(const ParamDescriptor& body);
// What stands for a value in a syntax diagram; empty for a kind whose values are keywords only.
std::string ShowPlaceholder(UPSpecTypes::ParamSpec spec);

std::vector<std::string> GetNames(const std::vector<ParamDescriptor>& params);
std::vector<std::string> GetNames(const std::vector<SubComDescriptor>& subcommands);

// The complaint about a number outside its boundaries, of which at least one is given.
Fault MakeBoundaryFault(const std::string& param, const std::string& subcommand,
                        const std::optional<LowerBoundary>& lower, const std::optional<UpperBoundary>& upper,
                        std::size_t position);

}  // namespace BayesHost
