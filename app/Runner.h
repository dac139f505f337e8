// Runs the statements of a command file, or of the command line, one after the other.
#pragma once

#include <memory>
#include <string>

#include "app/CommandLine.h"
#include "app/Module.h"
#include "app/Statements.h"
#include "host/output/Report.h"
#include "host/session/Session.h"

namespace BayesApp {

// A statement that fails is reported, in the report and on standard error, and the next one runs. After an interrupt none does.
class Runner {
 public:
  // The session must be the thread's current one and outlive the runner.
  Runner(const Request& request, BayesHost::Session& session);

  // Runs everything. False: some statement failed.
  bool Run();
  const BayesHost::Report& GetReport() const { return fReport; }

 private:
  bool ReadSource();
  void RunStatement(const Statement& statement);
  void Execute(const Statement& statement);
  void OpenData(const std::string& file);
  void SetSplit(const Statement& statement);
  void SetWeight(const Statement& statement);
  void RunCommand(const Statement& statement);
  void CompleteHead();
  void Fail(const std::string& text);
  void ShowMessages(const BayesHost::CommandOutput& output) const;
  std::filesystem::path Resolve(const std::string& file) const;

  const Request& fRequest;
  BayesHost::Session& fSession;
  Module fModule;
  std::string fSource;
  BayesHost::Report fReport;
};

}  // namespace BayesApp
