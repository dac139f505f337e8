// Keys of the messages that the host itself issues. Their texts stand in share/strings/en.json, like those of
// every other key.
//
// A key tells its arguments: "subcom ^2" is the subcommand's name as second argument. Three kinds of argument
// are lists (see StringTable) and may be empty: candidates for an ambiguous name, the values allowed, and the
// nearest names ("did you mean"). They come last, in this order.
#pragma once

namespace BayesHost {

// Reading the command text.
inline constexpr char kHostOpenQuote[] = "Host open quote ...";
inline constexpr char kHostBadCharacter[] = "Host bad character ^1 ...";
inline constexpr char kHostBadNumber[] = "Host bad number ^1 ...";
inline constexpr char kHostOpenBracket[] = "Host open bracket ^1 ...";
inline constexpr char kHostExtraBracket[] = "Host extra bracket ^1 ...";

// Commands and subcommands. "Subcom" is the command itself where a body has no name.
inline constexpr char kHostUnknownCommand[] = "Host unknown command ^1 ...";
inline constexpr char kHostAmbiguousCommand[] = "Host ambiguous command ^1 ...";
inline constexpr char kHostMissingPeriod[] = "Host missing period before ^1 ...";
inline constexpr char kHostNeedBehind[] = "Host found ^1, command ^2, need ^3 ...";
inline constexpr char kHostNeedEnd[] = "Host need end, found ^1, command ^2 ...";
inline constexpr char kHostNeedSubCommand[] = "Host need subcommand, found ^1, command ^2 ...";
inline constexpr char kHostUnknownSubCommand[] = "Host unknown subcommand ^1, command ^2 ...";
inline constexpr char kHostAmbiguousSubCommand[] = "Host ambiguous subcommand ^1, command ^2 ...";
inline constexpr char kHostRepeatedSubCommand[] = "Host repeated subcommand ^1, command ^2 ...";
inline constexpr char kHostMissingSubCommand[] = "Host missing subcommand ^1, command ^2 ...";
inline constexpr char kHostMissingBody[] = "Host missing body, found ^1, command ^2 ...";
inline constexpr char kHostNoSubCom[] = "Host no subcommands, command ^1 ...";

// Parameters.
inline constexpr char kHostUnknownParam[] = "Host unknown param ^1, subcom ^2 ...";
inline constexpr char kHostAmbiguousParam[] = "Host ambiguous param ^1, subcom ^2 ...";
inline constexpr char kHostRepeatedParam[] = "Host repeated param ^1, subcom ^2 ...";
inline constexpr char kHostMissingParam[] = "Host missing param ^1, subcom ^2 ...";
inline constexpr char kHostNeedParam[] = "Host need param, found ^1, subcom ^2 ...";
inline constexpr char kHostNeedEquals[] = "Host need equals, param ^1, subcom ^2 ...";
inline constexpr char kHostParamExclusive[] = "Host params ^1 and ^2 exclusive, subcom ^3 ...";

// Values. "Need" is what the parameter takes, in words.
inline constexpr char kHostParamNeedValue[] = "Host no value, param ^1, subcom ^2, need ^3 ...";
inline constexpr char kHostNeedValue[] = "Host found ^1, param ^2, subcom ^3, need ^4 ...";
inline constexpr char kHostUnknownValue[] = "Host unknown value ^1, param ^2, subcom ^3, need ^4 ...";
inline constexpr char kHostAmbiguousValue[] = "Host ambiguous value ^1, param ^2, subcom ^3 ...";
inline constexpr char kHostOneValue[] = "Host one value, param ^1, subcom ^2 ...";
inline constexpr char kHostOneQualifier[] = "Host one qualifier, param ^1, subcom ^2 ...";
inline constexpr char kHostNeedParentheses[] = "Host need parentheses, option ^1, subcom ^2 ...";
inline constexpr char kHostTokenNoQualif[] = "Host takes no value, option ^1, subcom ^2 ...";
inline constexpr char kHostBadMatrix[] = "Host bad matrix, param ^1, subcom ^2 ...";
inline constexpr char kHostNeedTable[] = "Host need table, subcom ^1 ...";
inline constexpr char kHostParamNeedNumber[] = "Host need one number, param ^1, subcom ^2 ...";
// The third argument lists the boundaries in words, one or two.
inline constexpr char kHostBoundary[] = "Host number, param ^1, subcom ^2, boundaries [%1:, ^1:]3 ...";

// Variables and their values.
inline constexpr char kHostUnknownVariable[] = "Host unknown variable ^1 ...";
inline constexpr char kHostAmbiguousVariable[] = "Host ambiguous variable ^1 ...";
inline constexpr char kHostNoData[] = "Host no data ...";
inline constexpr char kHostDataFailed[] = "Host data failed ...";
inline constexpr char kHostVariableNotNumeric[] = "Host variable ^1 not numeric, param ^2, subcom ^3 ...";
inline constexpr char kHostDependentNotNumeric[] = "Host dependent ^1 not numeric ...";
inline constexpr char kHostCovariateNotNumeric[] = "Host covariate ^1 not numeric ...";
inline constexpr char kHostVariableRange[] = "Host range ^1 TO ^2 ...";
inline constexpr char kHostVariableRepeated[] = "Host variable ^1 repeated ...";
inline constexpr char kHostVariableCommon[] = "Host variable ^1 common to ^2 and ^3 ...";
inline constexpr char kHostVariableNotInList[] = "Host variable ^1 of ^2 not in ^3 ...";
inline constexpr char kHostNeedDependent[] = "Host need dependent, command ^1 ...";
inline constexpr char kHostCategoryNeedNumber[] = "Host category ^1 not number, variable ^2 ...";
inline constexpr char kHostCategoryNeedText[] = "Host category ^1 not text, variable ^2 ...";
inline constexpr char kHostNameTaken[] = "Host name ^1 taken, subcom ^2 ...";
inline constexpr char kHostNameBad[] = "Host name ^1 bad, subcom ^2 ...";
inline constexpr char kHostNameRoot[] = "Host no name from root ^1, subcom ^2 ...";

// Model files.
inline constexpr char kHostFileNotWritten[] = "Host file ^1 not written, reason ^2 ...";
inline constexpr char kHostNoModelForFile[] = "Host no model for file ^1 ...";

// Charts.
inline constexpr char kHostChartFile[] = "Host chart file ^1 ...";
inline constexpr char kHostChartTemplate[] = "Host chart template ^1 ...";
inline constexpr char kHostChartNotDrawn[] = "Host chart ^1 not drawn, reason ^2 ...";

// Cases and the run.
inline constexpr char kHostNoCasesForSelect[] = "Host no cases for select ...";
inline constexpr char kHostNoValidCases[] = "Host no valid cases ...";
inline constexpr char kHostNoValidCasesSplit[] = "Host no valid cases, split [%1 = %2:,^1 = ^2:]1 ...";
inline constexpr char kHostInterrupted[] = "Host interrupted ...";

}  // namespace BayesHost
