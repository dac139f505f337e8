// The procedure module: a shared library with one entry point for each command.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace BayesApp {

// A command of the module and the name of its entry point.
struct Procedure {
  const char* fCommand;  // second word of the command, upper case
  const char* fEntryPoint;
};
const std::vector<Procedure>& GetProcedures();

// The library stays loaded as long as the object lives.
class Module {
 public:
  using EntryPoint = void (*)(void* context);

  // Loads libbayesian.so from beside the program (lib/ next to bin/). Throws std::runtime_error with the loader's reason.
  Module();
  ~Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  // Throws std::runtime_error when the library doesn't have it.
  EntryPoint Find(const char* entryPoint) const;

 private:
  void* fpLibrary;
};

}  // namespace BayesApp
