#include "app/Module.h"

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>

namespace BayesApp {

namespace {

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

const std::vector<Procedure>& GetProcedures() {
  static const std::vector<Procedure> procedures{
      {"ONESAMPLE", "bayesone_"},  {"RELATED", "bayesrel_"},    {"INDEPENDENT", "bayesidp_"},
      {"CORRELATION", "bayescor_"}, {"REGRESSION", "bayesrgr_"}, {"ANOVA", "bayesanv_"},
      {"LOGLINEAR", "bayeslgl_"}};
  return procedures;
}

// Its symbols are resolved at once, so that a library that doesn't fit is refused here and not in the middle of a run.
Module::Module() : fpLibrary(dlopen(FindLibrary().c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (fpLibrary == nullptr) ThrowLoaderError();
}

Module::~Module() { dlclose(fpLibrary); }

Module::EntryPoint Module::Find(const char* entryPoint) const {
  void* symbol = dlsym(fpLibrary, entryPoint);
  if (symbol == nullptr) ThrowLoaderError();
  return reinterpret_cast<EntryPoint>(symbol);
}

}  // namespace BayesApp
