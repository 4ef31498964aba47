#ifndef MIRN_HOST_COMMANDS_EXIT_STATUS_H
#define MIRN_HOST_COMMANDS_EXIT_STATUS_H

#include <functional>

namespace host {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kUsage = 2;

/// What `work` gives, or what its failure becomes, after that was reported. Raises nothing.
int statusOf(const std::function<int()>& work);

}  // namespace host

#endif
