#ifndef MIRN_CLI_COMMANDS_STATUS_H
#define MIRN_CLI_COMMANDS_STATUS_H

#include "commands/context.h"

namespace mirnctl {

/// One screen: the worst state, what is wrong and what may help, running work, the latest events.
void status(const Context& context);

/// One screen: what makes the next fault worse than it need be, and what may help.
void ready(const Context& context);

}  // namespace mirnctl

#endif
