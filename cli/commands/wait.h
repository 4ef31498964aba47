#ifndef MIRN_CLI_COMMANDS_WAIT_H
#define MIRN_CLI_COMMANDS_WAIT_H

#include <boost/json/value.hpp>
#include <set>
#include <string>

#include "commands/context.h"

namespace mirnctl {

/// How far a job is, in one line: a bar, its rate and the time left.
std::string progressOf(const boost::json::value& job);

/// Ids of jobs that are no one's news.
using KnownJobs = std::set<std::string>;

KnownJobs knownJobs(const Context& context);

/// Waits for the jobs that a plan's work comes to, other than those that were there `before`. Raises
/// `Failure` when one of them fails.
void waitForWork(const Context& context, const boost::json::value& plan, const KnownJobs& before);

/// Waits for one job to end, with a line that shows how far it is. Raises `Failure` when it fails.
void waitForJob(const Context& context, const std::string& id);

}  // namespace mirnctl

#endif
