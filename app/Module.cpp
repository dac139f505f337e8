#include "app/Module.h"

#include <dlfcn.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <stdexcept>

namespace BayesApp {

namespace {

struct Procedure {
  const char* fCommand;
  const char* fEntryPoint;
};
constexpr Procedure kProcedures[] = {
    {"BAYES ONESAMPLE", "bayesone_"},   {"BAYES RELATED", "bayesrel_"},    {"BAYES INDEPENDENT", "bayesidp_"},
    {"BAYES CORRELATION", "bayescor_"}, {"BAYES REGRESSION", "bayesrgr_"}, {"BAYES ANOVA", "bayesanv_"},
    {"BAYES LOGLINEAR", "bayeslgl_"},
};

std::filesystem::path FindLibrary() {
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  return program.parent_path().parent_path() / "lib" / "libbayesian.so";
}

[[noreturn]] void ThrowLoaderError() {
  const char* reason = dlerror();
  throw std::runtime_error(std::string("The procedure module can't be used: ") +
                           (reason == nullptr ? "unknown reason" : reason));
}

}  // namespace

// Its symbols are resolved at once, so that a library that doesn't fit is refused here and not in the middle
// of a command.
Module::Module() : fpLibrary(dlopen(FindLibrary().c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (fpLibrary == nullptr) ThrowLoaderError();
}

Module::~Module() {
  dlclose(fpLibrary);
}

Module::EntryPoint Module::Find(const std::string& command) const {
  const auto* procedure = std::find_if(std::begin(kProcedures), std::end(kProcedures),
                                       [&](const Procedure& row) { return row.fCommand == command; });
  if (procedure == std::end(kProcedures)) throw std::runtime_error("There is no command " + command + ".");
  void* symbol = dlsym(fpLibrary, procedure->fEntryPoint);
  if (symbol == nullptr) ThrowLoaderError();
  return reinterpret_cast<EntryPoint>(symbol);
}

}  // namespace BayesApp
