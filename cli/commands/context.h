#ifndef MIRN_CLI_COMMANDS_CONTEXT_H
#define MIRN_CLI_COMMANDS_CONTEXT_H

#include "answers/presentation.h"
#include "arguments/object_names.h"
#include "destination/destination.h"
#include "document/api_document.h"
#include "exit_status.h"
#include "terminal/terminal.h"
#include "wire/client.h"

namespace mirnctl {

/// What the command line wishes besides the arguments of its operation. Plain value.
struct Wishes {
  Presentation presentation;
  bool isSure = false;    ///< Nobody is asked.
  bool isDryRun = false;  ///< The plan alone.
  bool waits = false;     ///< For the work that a change begins.
  bool asCurl = false;    ///< The request is printed and not sent.
};

/// What a command works with.
struct Context {
  const ApiDocument& document;
  const Destination& destination;
  IService& service;
  ObjectNames& names;
  const Wishes& wishes;
  Terminal& terminal;
};

/// For what a bundle cannot do, such as following events: raises `Failure` (usage) where there is one.
inline void requireService(const Context& context, const std::string& deed) {
  if (!context.destination.bundle.empty()) {
    throw Failure(ExitStatus::kUsage, "a bundle cannot " + deed, "leave out --bundle");
  }
}

}  // namespace mirnctl

#endif
