// The module's only door: one exported entry point per command.
//
// Each takes the host's procedure context, which the module hands nowhere, and returns when the command is
// done. Everything the user learns, success or failure, went through the host's output by then.
#pragma once

#include "platform/component/Settings.h"

extern "C" {
__attribute__((visibility("default"))) void bayesone_(void* context);
__attribute__((visibility("default"))) void bayesrel_(void* context);
__attribute__((visibility("default"))) void bayesidp_(void* context);
__attribute__((visibility("default"))) void bayescor_(void* context);
__attribute__((visibility("default"))) void bayesrgr_(void* context);
__attribute__((visibility("default"))) void bayesanv_(void* context);
__attribute__((visibility("default"))) void bayeslgl_(void* context);
}

// Runs one command from parsing to teardown. Neither name may be null (an assertion).
void BayesEntry(void* context, BSNConst::ModelTypes type, const char* commandName, const char* procTitle);
