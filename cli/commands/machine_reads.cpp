#include "commands/machine_reads.h"

#include "answers/record.h"
#include "exit_status.h"
#include "wire/answers.h"

namespace mirnctl {

namespace json = boost::json;

json::value askedOf(const Context& context, const char* operation, const std::string& query) {
  const Operation* const found = context.document.find(operation);
  if (found == nullptr) throw Failure(ExitStatus::kNotFound, "this service cannot tell how its machine is");
  return get(context.service, found->path + query);
}

json::array latestEntries(const Context& context, int most) {
  try {
    return recordsOf(askedOf(context, "listHistory", "?limit=" + std::to_string(most)));
  } catch (const Failure& failure) {
    if (failure.status() == ExitStatus::kUnauthorised) throw;
    return {};
  }
}

}  // namespace mirnctl
