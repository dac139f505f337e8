// Marks a class or function that host or component define and that the module, loaded later, resolves by
// name.
#pragma once

#define BAYES_PLATFORM __attribute__((visibility("default")))
