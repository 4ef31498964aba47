#ifndef MIRN_HOST_COMMANDS_CHECK_FILES_H
#define MIRN_HOST_COMMANDS_CHECK_FILES_H

#include "options.h"

namespace host {

/// Looks whether the files that a host needs to start are there, and whether the certificate is one. Loads no
/// module and writes nothing. Raises `UsageError` with the first that is wrong.
void checkFiles(const Options& options);

}  // namespace host

#endif
