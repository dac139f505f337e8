// The platform's view of files that a command names, and of the application that writes them.
#include <filesystem>

#include "host/session/Session.h"
#include "platform/host/Files.h"

using BayesHost::Session;

bool ExtNameStr::Open(std::ofstream& stream, std::ios_base::openmode mode) const {
  stream.open(BayesHost::ResolvePath(Session::Current().GetCommand(), fName), mode);
  return stream.is_open();
}

ApplicationParams GetAppParams() {
  return {"bayes", Session::Current().GetOptions().fVersion, "A model of Bayesian inference"};
}

void TestAndStoreToPes(const std::string& name, int /*kind*/, int) {
  std::error_code error;
  if (std::filesystem::is_regular_file(BayesHost::ResolvePath(Session::Current().GetCommand(), name), error))
    return;
  Session::Current().StoreError("The file " + name + " was written but is no longer there.");
}

// A model of this host's data has one set of parameters for each split: there is always a document for it.
bool CanExportPMML(const ZARQ_DataSource&, bool) {
  return true;
}
