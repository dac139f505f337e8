// Runs the statements of a command file, or of the command line, one after the other.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/CommandLine.h"
#include "app/Module.h"
#include "app/Statements.h"
#include "host/output/Report.h"
#include "host/session/Session.h"

namespace BayesApp {

// A statement that fails is reported, in the report and on standard error, and the next one runs. After an
// interrupt none does.
class Runner {
 public:
  // The session must be the thread's current one and outlive the runner. Throws std::runtime_error when the
  // module can't be loaded. `colour`: of the messages on standard error.
  Runner(const Request& request, BayesHost::Session& session, bool colour);

  // Runs everything. False: something failed.
  bool Run();
  // False when nothing could be run: there is no report then.
  bool HasRun() const { return fHasRun; }
  const BayesHost::Report& GetReport() const { return fReport; }

 private:
  bool ReadSource();
  bool RunStatement(const Statement& statement);
  void Execute(const DataStatement& data);
  void Execute(const SplitStatement& split);
  void Execute(const WeightStatement& weight);
  void Execute(const SaveStatement& save);
  void Execute(const BayesStatement& command);
  void Execute(const BayesHost::Fault& fault);
  bool ResolveNames(const char* statement, const std::vector<ZARQ_Token>& names, bool numericOnly,
                    std::vector<int>& indices) const;
  std::filesystem::path GetFolder() const;
  void OpenData(const DataStatement& data, const std::filesystem::path& folder);
  void ExpectColumns(BayesHost::DataSet& data) const;
  void CompleteHead();
  void ShowMessages(const BayesHost::CommandOutput& output) const;

  const Request& fRequest;
  BayesHost::Session& fSession;
  bool fColour;
  std::optional<Module> fModule;  // loaded for the first command: the data engine opens meanwhile
  BayesHost::CommandText fSource;
  BayesHost::Report fReport;
  bool fHasRun = false;
  std::vector<Statement> fvStatements;
  std::size_t fNext = 0;  // the statement under way
};

}  // namespace BayesApp
