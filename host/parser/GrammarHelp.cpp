#include "host/parser/GrammarHelp.h"

#include <algorithm>
#include <deque>
#include <utility>

#include "host/output/StringTable.h"
#include "host/parser/GrammarWords.h"
#include "host/parser/Keywords.h"

namespace BayesHost {
namespace {

constexpr std::size_t kLineWidth = 96;

using Parts = std::vector<std::string>;

std::string Say(const std::string& key, const Arguments& arguments = {}) {
  return StringTable::English().Fill(key, arguments);
}

std::deque<CommandDescriptor>& GetGrammars() {
  static std::deque<CommandDescriptor> grammars;
  return grammars;
}

std::string Join(const Parts& parts, const char* between) {
  std::string joined;
  for (const std::string& part : parts) joined += (joined.empty() ? "" : between) + part;
  return joined;
}

std::string MarkOptional(const std::string& form, bool required) {
  return required ? form : "[" + form + "]";
}

std::string ShowQualifier(const ParamDescriptor& qualifier) {
  if (qualifier.IsBare()) return qualifier.GetName();
  return qualifier.GetName() + "[(" + ShowPlaceholder(qualifier.GetSpec()) + ")]";
}

std::string ShowValue(const ParamDescriptor& param) {
  Parts choices;
  if (const std::string any = ShowPlaceholder(param.GetSpec()); !any.empty()) choices.push_back(any);
  for (const std::string& keyword : param.GetStringValues()) choices.push_back(keyword);
  for (const ParamDescriptor& qualifier : param.GetQualifiers()) choices.push_back(ShowQualifier(qualifier));
  const std::string shown = Join(choices, " | ");
  const bool isList = param.GetSpec() == UPSpecTypes::kKeywords;
  return (choices.size() > 1 ? "{" + shown + "}" : shown) + (isList ? " ..." : "");
}

// `rows BY columns`, `{BY a b c | OFF}`
std::string ShowBody(const ParamDescriptor& body) {
  if (body.GetName().empty()) return ShowValue(body);
  Parts choices(body.GetStringValues());
  choices.insert(choices.begin(), body.GetName() + " " + ShowPlaceholder(body.GetSpec()));
  return choices.size() > 1 ? "{" + Join(choices, " | ") + "}" : choices.front();
}

std::string ShowParam(const ParamDescriptor& param) {
  return MarkOptional(param.GetName() + MarkOptional("=" + ShowValue(param), param.IsValueRequired()),
                      param.IsRequired());
}

// The syntax of a subcommand; a line may be broken between any two parts.
Parts ShowSyntax(const SubComDescriptor& subcommand) {
  Parts parts;
  if (!subcommand.GetName().empty()) parts.push_back("/" + subcommand.GetName());
  if (subcommand.GetSpec() == UPSpecTypes::kUnnamedBody) {
    const auto& body = subcommand.GetExportParam();
    parts.push_back(body ? ShowBody(*body) : Say("dependent [BY factors] [WITH covariates]"));
  }
  for (const ParamDescriptor& param : subcommand.GetParams()) parts.push_back(ShowParam(param));
  if (!subcommand.IsRequired()) {
    parts.front().insert(0, "[");
    parts.back() += "]";
  }
  if (subcommand.IsRepeatable()) parts.back() += " ...";
  return parts;
}

std::string WrapParts(const Parts& parts, std::size_t indent) {
  std::string text;
  std::size_t column = kLineWidth;
  for (const std::string& part : parts) {
    const bool fits = column + 1 + part.size() <= kLineWidth;
    const std::size_t start = text.empty() ? indent : indent + 4;
    text += fits ? " " : (text.empty() ? "" : "\n") + std::string(start, ' ');
    column = (fits ? column + 1 : start) + part.size();
    text += part;
  }
  return text;
}

std::string RenderSyntax(const CommandDescriptor& grammar, std::size_t indent) {
  std::string text = std::string(indent, ' ') + grammar.GetCommandName();
  for (const SubComDescriptor& subcommand : grammar.GetSubComs())
    text += "\n" + WrapParts(ShowSyntax(subcommand), indent + 2);
  return text + ".\n";
}

std::string GetHeading(const SubComDescriptor& subcommand) {
  return subcommand.GetName().empty() ? Say("Behind the command's name") : "/" + subcommand.GetName();
}

std::string DescribeUse(bool required, bool repeatable) {
  return Say("^1, ^2",
             {Say(required ? "required" : "optional"), Say(repeatable ? "may be repeated" : "once")});
}

// A parameter, or a qualifier of the parameter before, and its value in words.
struct HelpRow {
  std::string fForm;
  std::string fMeaning;
};

std::vector<HelpRow> DescribeParams(const SubComDescriptor& subcommand) {
  std::vector<HelpRow> rows;
  if (const auto& body = subcommand.GetExportParam()) rows.push_back({ShowBody(*body), DescribeBody(*body)});
  for (const ParamDescriptor& param : subcommand.GetParams()) {
    const std::string note = param.IsRequired() ? " (" + Say("required") + ")" : "";
    rows.push_back({param.GetName(), DescribeValue(param) + note});
    for (const ParamDescriptor& qualifier : param.GetQualifiers())
      if (!qualifier.IsBare())
        rows.push_back({param.GetName() + "=" + ShowQualifier(qualifier), DescribeValue(qualifier)});
  }
  return rows;
}

// Two columns, the first as wide as its longest form.
std::string AlignRows(const std::vector<HelpRow>& rows) {
  std::size_t width = 0;
  for (const HelpRow& row : rows) width = std::max(width, row.fForm.size());
  std::string text;
  for (const HelpRow& row : rows)
    text += "    " + row.fForm + std::string(width - row.fForm.size() + 2, ' ') + row.fMeaning + "\n";
  return text;
}

std::string MakeMarkdownTable(const std::vector<HelpRow>& rows) {
  if (rows.empty()) return {};
  std::string text = "\n| " + Say("Parameter") + " | " + Say("Value") + " |\n|---|---|\n";
  for (const HelpRow& row : rows) text += "| `" + row.fForm + "` | " + row.fMeaning + " |\n";
  return text;
}

}  // namespace

void GrammarHelp::Record(const CommandDescriptor& grammar) {
  auto& grammars = GetGrammars();
  const auto known = std::find_if(grammars.begin(), grammars.end(), [&](const CommandDescriptor& other) {
    return other.GetCommandName() == grammar.GetCommandName();
  });
  if (known == grammars.end())
    grammars.push_back(grammar);
  else
    *known = grammar;
}

std::vector<std::string> GrammarHelp::GetCommandNames() {
  std::vector<std::string> names;
  for (const CommandDescriptor& grammar : GetGrammars()) names.push_back(grammar.GetCommandName());
  return names;
}

const CommandDescriptor* GrammarHelp::Find(const std::string& commandName) {
  for (const CommandDescriptor& grammar : GetGrammars())
    if (IsSameWord(grammar.GetCommandName(), commandName)) return &grammar;
  return nullptr;
}

std::string RenderHelpText(const CommandDescriptor& grammar) {
  std::string text =
      grammar.GetCommandName() + ": " + Say(grammar.GetProcTitle()) + "\n\n" + RenderSyntax(grammar, 2);
  for (const SubComDescriptor& subcommand : grammar.GetSubComs())
    text += "\n  " + GetHeading(subcommand) + " (" +
            DescribeUse(subcommand.IsRequired(), subcommand.IsRepeatable()) + ")\n" +
            AlignRows(DescribeParams(subcommand));
  return text;
}

std::string RenderHelpMarkdown(const CommandDescriptor& grammar) {
  std::string text = "## " + grammar.GetCommandName() + "\n\n" + Say(grammar.GetProcTitle()) + "\n\n```\n" +
                     RenderSyntax(grammar, 0) + "```\n";
  for (const SubComDescriptor& subcommand : grammar.GetSubComs())
    text += "\n### " + GetHeading(subcommand) + "\n\n" +
            DescribeUse(subcommand.IsRequired(), subcommand.IsRepeatable()) + "\n" +
            MakeMarkdownTable(DescribeParams(subcommand));
  return text;
}

}  // namespace BayesHost
