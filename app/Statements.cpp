#include "app/Statements.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "host/output/HostKeys.h"
#include "host/parser/CommandState.h"
#include "host/parser/GrammarCheck.h"
#include "host/parser/Keywords.h"
#include "host/parser/Lexer.h"

namespace BayesApp {
namespace {

using BayesHost::Fault;
using BayesHost::LexedText;
using Content = decltype(Statement::fContent);
using Words = std::vector<std::string>;

constexpr char kOff[] = "OFF";

// A statement by its first word. `fvSecond` are the words that may follow; they belong to its name only if
// `fNamedByTwo`.
struct CommandRow {
  std::string fFirst;
  Words fvSecond;
  bool fNamedByTwo;
  // From the lexed statement; null for the module's commands.
  Content (*fRead)(const LexedText& text, const CommandDescriptor& grammar);
};

ParamDescriptor MakeParam(const char* name, UPSpecTypes::ParamSpec spec, bool required) {
  return {name, spec, required, true, UPSpecTypes::kBracketsFree};
}

CommandDescriptor MakeGrammar(const char* name, const char* title,
                              const std::vector<ParamDescriptor>& params) {
  SubComDescriptor body("", UPSpecTypes::kNamedParameters, true, false);
  for (const ParamDescriptor& param : params) body.addParamDesc(param);
  CommandDescriptor grammar(name, title);
  grammar.addSubComDesc(body);
  return grammar;
}

// `BY names` or `OFF`.
CommandDescriptor MakeByOrOff(const char* name, const char* title, UPSpecTypes::ParamSpec names) {
  ParamDescriptor by = MakeParam("BY", names, true);
  by.addStringValue(kOff);
  SubComDescriptor body("", UPSpecTypes::kUnnamedBody, true, false);
  body.setExportParamDesc(by);
  CommandDescriptor grammar(name, title);
  grammar.addSubComDesc(body);
  return grammar;
}

// The statement's only body, or the fault that it has instead.
std::variant<SubComObj, Fault> ReadBody(const LexedText& text, const CommandDescriptor& grammar) {
  std::vector<SubComObj> accepted;
  if (auto fault = BayesHost::CheckCommand(text, true, grammar, accepted)) return *std::move(fault);
  if (!accepted.empty()) return accepted.front();
  const std::string end = BayesHost::StringTable::English().Find("the end of the command");
  return Fault{BayesHost::kHostMissingBody, {end, grammar.GetCommandName()}, text.fStop};
}

std::string GetText(const SubComObj& body, const char* param) {
  const ParamObj* const found = BayesHost::FindParam(body.GetState(), param);
  return found == nullptr ? std::string() : found->getTokenList().front().GetText();
}

Content ReadData(const LexedText& text, const CommandDescriptor& grammar) {
  const auto body = ReadBody(text, grammar);
  if (const Fault* const fault = std::get_if<Fault>(&body)) return *fault;
  const auto& params = std::get<SubComObj>(body);
  return DataStatement{GetText(params, "FILE"), GetText(params, "DICTIONARY"), GetText(params, "SQL")};
}

Content ReadSave(const LexedText& text, const CommandDescriptor& grammar) {
  const auto body = ReadBody(text, grammar);
  if (const Fault* const fault = std::get_if<Fault>(&body)) return *fault;
  return SaveStatement{GetText(std::get<SubComObj>(body), "OUTFILE")};
}

bool IsWord(const ZARQ_Token& token, std::string_view word) {
  return token.GetKind() == ZARQ_Token::Kind::Identifier && BayesHost::IsSameWord(token.GetText(), word);
}

// Of `BY names` or `OFF`.
template <class NameStatement>
Content ReadNames(const LexedText& text, const CommandDescriptor& grammar) {
  const auto body = ReadBody(text, grammar);
  if (const Fault* const fault = std::get_if<Fault>(&body)) return *fault;
  return NameStatement{std::get<SubComObj>(body).GetState().fBody->getTokenList()};
}

const std::vector<CommandRow>& GetRows() {
  static const std::vector<CommandRow> rows{
      {"BAYES",
       {"ONESAMPLE", "RELATED", "INDEPENDENT", "CORRELATION", "REGRESSION", "ANOVA", "LOGLINEAR"},
       true,
       nullptr},
      {"DATA", {"FILE"}, false, ReadData},
      {"SPLIT", {"FILE"}, true, ReadNames<SplitStatement>},
      {"WEIGHT", {"BY", kOff}, false, ReadNames<WeightStatement>},
      {"SAVE", {"DATA"}, true, ReadSave},
  };
  return rows;
}

Words GetNames(const CommandRow& row) {
  if (!row.fNamedByTwo) return {row.fFirst};
  Words names;
  for (const std::string& second : row.fvSecond) names.push_back(row.fFirst + " " + second);
  return names;
}

Words GetAllNames() {
  Words all;
  for (const CommandRow& row : GetRows()) {
    const Words names = GetNames(row);
    all.insert(all.end(), names.begin(), names.end());
  }
  return all;
}

Fault MakeUnknownCommand(const std::string& written, const ZARQ_Token& token) {
  const Words names = GetAllNames();
  return {BayesHost::kHostUnknownCommand,
          {written, names, BayesHost::FindNearest(written, names)},
          token.GetPosition()};
}

// The command's row and full name, or what is wrong with its first words.
struct CommandMatch {
  const CommandRow* fpRow = nullptr;
  std::string fName;
  Fault fFault;
};

CommandMatch MatchSecondWord(const CommandRow& row, const std::vector<ZARQ_Token>& tokens) {
  const bool hasWord = tokens.size() > 1 && tokens[1].GetKind() == ZARQ_Token::Kind::Identifier;
  const std::string word = hasWord ? tokens[1].GetText() : std::string();
  const auto matches = BayesHost::MatchKeyword(word, row.fvSecond);
  if (matches.size() == 1) return {&row, row.fFirst + " " + row.fvSecond[matches.front()], {}};
  const std::string written = hasWord ? tokens[0].GetText() + " " + word : tokens[0].GetText();
  if (matches.empty()) return {nullptr, {}, MakeUnknownCommand(written, tokens[0])};
  return {nullptr,
          {},
          {BayesHost::kHostAmbiguousCommand,
           {written, BayesHost::Pick(GetNames(row), matches)},
           tokens[0].GetPosition()}};
}

CommandMatch MatchCommand(const std::vector<ZARQ_Token>& tokens) {
  Words firsts;
  for (const CommandRow& row : GetRows()) firsts.push_back(row.fFirst);
  const bool isWord = tokens[0].GetKind() == ZARQ_Token::Kind::Identifier;
  const auto matches =
      isWord ? BayesHost::MatchKeyword(tokens[0].GetText(), firsts) : std::vector<std::size_t>();
  if (matches.size() != 1) return {nullptr, {}, MakeUnknownCommand(tokens[0].GetText(), tokens[0])};
  const CommandRow& row = GetRows()[matches.front()];
  return row.fNamedByTwo ? MatchSecondWord(row, tokens) : CommandMatch{&row, row.fFirst, {}};
}

bool StartsLine(std::string_view text, std::size_t position) {
  const std::size_t before = text.substr(0, position).find_last_not_of(" \t\r");
  return before == std::string_view::npos || text[before] == '\n';
}

// The first place behind the statement's own first word where a line starts with the whole words of a
// command; null when there is none.
const ZARQ_Token* FindNextCommand(std::string_view text, const std::vector<ZARQ_Token>& tokens) {
  for (std::size_t i = 1; i + 1 < tokens.size(); ++i) {
    if (!StartsLine(text, tokens[i].GetPosition())) continue;
    for (const CommandRow& row : GetRows())
      if (IsWord(tokens[i], row.fFirst) &&
          std::any_of(row.fvSecond.begin(), row.fvSecond.end(),
                      [&](const std::string& second) { return IsWord(tokens[i + 1], second); }))
        return &tokens[i];
  }
  return nullptr;
}

CommandDescriptor FindGrammar(const std::string& name) {
  const auto grammars = MakeStatementGrammars();
  return *std::find_if(grammars.begin(), grammars.end(),
                       [&](const CommandDescriptor& grammar) { return grammar.GetCommandName() == name; });
}

Content ReadContent(const LexedText& text) {
  const CommandMatch match = MatchCommand(text.fvTokens);
  if (match.fpRow == nullptr) return text.fFault ? *text.fFault : match.fFault;
  if (match.fpRow->fRead == nullptr) return BayesStatement{match.fName};
  return match.fpRow->fRead(text, FindGrammar(match.fName));
}

Statement ReadStatement(std::string_view source, std::size_t begin) {
  const std::string_view text = source.substr(begin);
  const LexedText lexed = BayesHost::LexStatement(text);
  if (lexed.fvTokens.empty())
    return {begin, begin + lexed.fEnd, lexed.fFault ? Content(*lexed.fFault) : Content(BayesStatement{})};
  if (const ZARQ_Token* const next = FindNextCommand(text, lexed.fvTokens))
    return {begin, begin + next->GetPosition(),
            Fault{BayesHost::kHostMissingPeriod, {next->GetText()}, next->GetPosition()}};
  return {begin, begin + lexed.fEnd, ReadContent(lexed)};
}

}  // namespace

std::vector<Statement> SplitStatements(const std::string& source) {
  std::vector<Statement> statements;
  std::size_t position = BayesHost::SkipBlanks(source, 0);
  while (position < source.size()) {
    Statement statement = ReadStatement(source, position);
    position = BayesHost::SkipBlanks(source, statement.fEnd);
    const auto* const command = std::get_if<BayesStatement>(&statement.fContent);
    const bool isLonePeriod = command != nullptr && command->fName.empty();
    if (!isLonePeriod) statements.push_back(std::move(statement));
  }
  return statements;
}

std::vector<CommandDescriptor> MakeStatementGrammars() {
  return {MakeGrammar("DATA", "Opens a data file",
                      {MakeParam("FILE", UPSpecTypes::kFile, true),
                       MakeParam("DICTIONARY", UPSpecTypes::kFile, false),
                       MakeParam("SQL", UPSpecTypes::kQuotedText, false)}),
          MakeByOrOff("SPLIT FILE", "Analyses groups of cases one by one", UPSpecTypes::kTokenList),
          MakeByOrOff("WEIGHT", "Counts a case as often as a variable says", UPSpecTypes::kVariable),
          MakeGrammar("SAVE DATA", "Writes the data with their saved variables",
                      {MakeParam("OUTFILE", UPSpecTypes::kFile, true)})};
}

const std::vector<std::string>& GetBayesCommands() {
  static const std::vector<std::string> names = GetNames(GetRows().front());
  return names;
}

}  // namespace BayesApp
