// The procedure module: a shared library with one entry point for each command.
#pragma once

#include <string>

namespace BayesApp {

// The library stays loaded as long as the object lives.
class Module {
 public:
  using EntryPoint = void (*)(void* context);

  // Loads libbayesian.so from beside the program (lib/ next to bin/). Throws std::runtime_error with the
  // loader's reason.
  Module();
  ~Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  // The entry point of a command, "BAYES ONESAMPLE" for one. Throws std::runtime_error when the library
  // doesn't have it.
  EntryPoint Find(const std::string& command) const;

 private:
  void* fpLibrary;
};

}  // namespace BayesApp
