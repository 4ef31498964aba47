#ifndef MIRN_CLI_COMMANDS_PLAN_H
#define MIRN_CLI_COMMANDS_PLAN_H

#include <boost/json/value.hpp>
#include <ostream>
#include <string>

#include "commands/context.h"

namespace mirnctl {

/// In words: what comes, goes, is lost; what goes on afterwards; what is to be known.
void tellPlan(const boost::json::value& plan, std::ostream& out, const Screen& screen);

/// Tells the plan to somebody at the terminal. Where something is lost by it, somebody types the name of the
/// first of it, or has said before to be sure. Raises `Failure` otherwise.
void agree(const Context& context, const boost::json::value& plan);

/// The machine that the plan holds for; empty where it does not say.
std::string structureOf(const boost::json::value& plan);

/// Whether something goes on after the answer.
bool hasWork(const boost::json::value& plan);

}  // namespace mirnctl

#endif
