#include "app/Runner.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <numeric>
#include <thread>

#include "app/Version.h"
#include "host/data/DataError.h"
#include "host/data/DataSet.h"
#include "host/data/DataWriter.h"
#include "host/data/Fingerprint.h"
#include "host/output/Diagnostic.h"
#include "host/output/HostKeys.h"
#include "host/parser/Keywords.h"
#include "platform/host/VarSpec.h"

namespace BayesApp {

using BayesHost::CommandOutput;
using BayesHost::CommandText;
using BayesHost::DataSet;

namespace {

DataSet::Limits MakeLimits(const BayesHost::Session& session) {
  const BayesHost::RunOptions& options = session.GetOptions();
  const unsigned cores = std::max(1U, std::thread::hardware_concurrency());
  const int threads = options.fThreads > 0 ? options.fThreads : static_cast<int>(cores);
  return {options.fMemoryBytes, threads, options.fParserMode == BayesHost::ParserMode::Run,
          [&session] { return session.IsInterrupted(); }};
}

// What the report calls a statement; one that is none of them goes by its first word.
std::string GetName(const Statement& statement, const std::string& text) {
  struct Namer {
    const std::string& fText;
    std::string operator()(const DataStatement&) const { return "DATA"; }
    std::string operator()(const SplitStatement&) const { return "SPLIT FILE"; }
    std::string operator()(const WeightStatement&) const { return "WEIGHT"; }
    std::string operator()(const SaveStatement&) const { return "SAVE DATA"; }
    std::string operator()(const BayesStatement& command) const { return command.fName; }
    std::string operator()(const BayesHost::Fault&) const {
      return fText.substr(0, fText.find_first_of(" \t\r\n."));
    }
  };
  return std::visit(Namer{text}, statement.fContent);
}

// The runs of characters that an unquoted name can be made of.
std::vector<std::string> FindWords(const std::string& text) {
  constexpr const char* kBetweenWords = " \t\r\n=/(),.;{}'\"";
  std::vector<std::string> words;
  for (std::size_t begin = text.find_first_not_of(kBetweenWords); begin != std::string::npos;) {
    const std::size_t end = std::min(text.find_first_of(kBetweenWords, begin), text.size());
    words.push_back(text.substr(begin, end - begin));
    begin = text.find_first_not_of(kBetweenWords, end);
  }
  return words;
}

void AddError(CommandOutput& output, BayesHost::ShownText text) {
  BayesHost::Message message;
  message.fText = std::move(text);
  output.AddMessage(std::move(message));
}

}  // namespace

Runner::Runner(const Request& request, BayesHost::Session& session, bool colour)
    : fRequest(request), fSession(session), fColour(colour) {
  fReport.fHead.fVersion = kVersion;
}

bool Runner::Run() {
  if (!ReadSource()) return false;
  fvStatements = SplitStatements(fSource.fSource);
  if (fvStatements.empty()) {
    std::cerr << fmt::format("bayes: {} holds no command. Write one, ended by a period.\n",
                             fSource.fFile.empty() ? "-c" : fSource.fFile);
    return false;
  }
  try {
    if (!fRequest.fDataFile.empty()) OpenData({fRequest.fDataFile, {}, {}}, {});
  } catch (const std::exception& error) {
    const bool isInterrupted = fSession.IsInterrupted();
    std::cerr << "bayes: "
              << (isInterrupted ? BayesHost::ShowKey(BayesHost::kHostInterrupted).fText : error.what())
              << '\n';
    return false;
  }
  bool ok = true;
  fHasRun = true;
  for (; fNext < fvStatements.size() && !fSession.IsInterrupted(); ++fNext) {
    ok = RunStatement(fvStatements[fNext]) && ok;
  }
  CompleteHead();
  return ok && !fSession.IsInterrupted();
}

bool Runner::ReadSource() {
  if (fRequest.fCommandFile.empty()) {
    fSource.fSource = fRequest.fCommands;
    return true;
  }
  fSource.fFile = fRequest.fCommandFile;
  std::ifstream file(fSource.fFile, std::ios::binary);
  const bool isFolder = std::filesystem::is_directory(fSource.fFile);
  if (file && !isFolder) {
    fSource.fSource.assign(std::istreambuf_iterator<char>(file), {});
    if (!file.bad()) return true;
  }
  std::cerr << fmt::format("bayes: the command file {} can't be read: {}.\n", fSource.fFile,
                           isFolder ? "it is a folder" : "there is no such file, or it may not be read");
  return false;
}

bool Runner::RunStatement(const Statement& statement) {
  CommandText command = fSource;
  command.fBegin = statement.fBegin;
  command.fEnd = std::min(statement.fEnd, command.fSource.size());
  const int line = BayesHost::FindPlace(command, 0).fLine;
  auto output =
      std::make_shared<CommandOutput>(GetName(statement, command.GetText()), command.GetText(), line);
  fSession.BeginCommand(std::move(command), output);
  try {
    std::visit([this](const auto& content) { Execute(content); }, statement.fContent);
  } catch (const std::exception& error) {
    if (!fSession.IsInterrupted()) AddError(*output, BayesHost::ShownText::Plain(error.what()));
  }
  if (fSession.IsInterrupted()) {
    AddError(*output, BayesHost::ShowKey(BayesHost::kHostInterrupted));
  }
  ShowMessages(*output);
  const bool isCommand = std::holds_alternative<BayesStatement>(statement.fContent);
  if (isCommand || !output->GetItems().empty()) fReport.fvCommands.push_back(output);
  return !output->IsFailed();
}

void Runner::Execute(const DataStatement& data) {
  fSession.DropData();
  OpenData(data, GetFolder());
}

void Runner::Execute(const SplitStatement& split) {
  std::vector<int> indices;
  if (ResolveNames("SPLIT FILE", split.fvNames, false, indices)) fSession.GetData()->SetSplit(indices);
}

void Runner::Execute(const WeightStatement& weight) {
  std::vector<int> indices;
  if (!ResolveNames("WEIGHT", weight.fvNames, true, indices)) return;
  fSession.GetData()->SetWeight(indices.empty() ? -1 : indices.front());
}

void Runner::Execute(const SaveStatement& save) {
  std::vector<int> none;
  if (!ResolveNames("SAVE DATA", {}, false, none) || fRequest.fAction != Action::Run) return;
  const BayesHost::DataFile target{GetFolder() / save.fFile, save.fFile};
  BayesHost::SaveData(*fSession.GetData(), target, MakeLimits(fSession));
}

void Runner::Execute(const BayesStatement& command) {
  const std::uint64_t draws = fSession.CountDraws();
  if (!fModule) fModule.emplace();
  fModule->Find(command.fName)(nullptr);
  if (fRequest.fSeed != 0 || fSession.CountDraws() != draws) {
    fSession.GetOutput().SetSeed(fSession.GetSeed());
  }
}

// Commands after a DATA statement that was not understood must not go on with the file before it.
void Runner::Execute(const BayesHost::Fault& fault) {
  if (BayesHost::IsSameWord(fSession.GetOutput().GetName(), "DATA")) fSession.DropData();
  fSession.GetOutput().AddMessage(BayesHost::MakeMessage(fault, fSession.GetCommand()));
}

// False: a message was shown. No names (OFF) resolve to no variables, but need data all the same.
bool Runner::ResolveNames(const char* statement, const std::vector<ZARQ_Token>& names, bool numericOnly,
                          std::vector<int>& indices) const {
  if (fSession.GetData() == nullptr) {
    fSession.GetOutput().AddMessage(
        BayesHost::MakeMessage({fSession.GetNoDataKey(), {}, 0}, fSession.GetCommand()));
    return false;
  }
  if (names.empty()) return true;
  const CommandDescriptor grammar(statement, statement);
  VarSpecObj variables(statement, "BY", numericOnly, grammar);
  if (!variables.ValidateVariables(names)) return false;
  indices = variables.GetVariables();
  return true;
}

// Paths are relative to the command file.
std::filesystem::path Runner::GetFolder() const {
  return std::filesystem::path(fSource.fFile).parent_path();
}

void Runner::OpenData(const DataStatement& data, const std::filesystem::path& folder) {
  BayesHost::DataOptions options;
  if (!data.fDictionary.empty()) options.fDictionary = {folder / data.fDictionary, data.fDictionary};
  options.fSql = data.fSql;
  const BayesHost::DataFile file{folder / data.fFile, data.fFile};
  const auto opened = std::make_shared<DataSet>(file, MakeLimits(fSession), options);
  ExpectColumns(*opened);
  fSession.SetData(opened);
}

// A text file is read once: along with the columns of the first command that needs any come those that the
// later commands on the same data name, and all columns when one of these saves the data. A word that only
// looks like a name costs memory, not correctness; a name that stands between quotes, or inside a range, is
// read when its command comes.
void Runner::ExpectColumns(DataSet& data) const {
  std::vector<int> columns;
  for (std::size_t i = fNext; i < fvStatements.size(); ++i) {
    const Statement& statement = fvStatements[i];
    if (i > fNext && std::holds_alternative<DataStatement>(statement.fContent)) break;
    if (std::holds_alternative<SaveStatement>(statement.fContent)) {
      columns.resize(static_cast<std::size_t>(data.CountVariables()));
      std::iota(columns.begin(), columns.end(), 0);
      break;
    }
    const std::string text = fSource.fSource.substr(statement.fBegin, statement.fEnd - statement.fBegin);
    for (const std::string& word : FindWords(text)) {
      if (const int column = data.FindVariable(word); column >= 0) columns.push_back(column);
    }
  }
  data.Expect(columns);
}

// The head speaks of the data in force at the end, as far as they can be read.
void Runner::CompleteHead() {
  if (DataSet* data = fSession.GetData(); data != nullptr && fRequest.fAction == Action::Run) {
    BayesHost::DataOrigin origin;
    origin.fFile = data->GetFileName();
    origin.fBytes = data->GetFileBytes();
    origin.fVariables = static_cast<std::uint64_t>(data->CountFileVariables());
    try {
      if (fRequest.fFingerprint && !fSession.IsInterrupted())
        origin.fFingerprint = BayesHost::FingerprintFile(data->GetFile());
      origin.fCases = data->CountCases();
      // An interrupt leaves cases uncounted that were not read before.
      if (origin.fCases > 0 || !fSession.IsInterrupted()) fReport.fHead.fData = origin;
    } catch (const std::exception&) {
      // The command that needed the data has said so.
    }
  }
  if (fRequest.fSeed != 0 || fSession.CountDraws() > 0) fReport.fHead.fSeed = fSession.GetSeed();
}

void Runner::ShowMessages(const CommandOutput& output) const {
  const auto show = [&](const auto& self, const BayesHost::ItemList& items) -> void {
    for (const BayesHost::Item& item : items) {
      if (const auto* heading = std::get_if<BayesHost::Heading>(&item.fContent)) self(self, heading->fItems);
      const auto* message = std::get_if<BayesHost::Message>(&item.fContent);
      if (message == nullptr) continue;
      if (fRequest.fQuiet && message->fLevel == BayesHost::Message::Level::Warning) continue;
      std::cerr << BayesHost::Diagnostic::Of(*message, fSource.fFile.empty() ? "-c" : fSource.fFile,
                                             output.GetLine())
                       .Format(fColour);
    }
  };
  show(show, output.GetItems());
}

}  // namespace BayesApp
