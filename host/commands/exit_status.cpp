#include "commands/exit_status.h"

#include <exception>
#include <string>

#include "options.h"
#include "system/report.h"

namespace host {

int statusOf(const std::function<int()>& work) {
  try {
    return work();
  } catch (const UsageError& error) {
    report(std::string(error.what()) + " (--help tells more)");
    return kUsage;
  } catch (const std::exception& failure) {
    report(failure.what());
    return kFailure;
  } catch (...) {
    report("the plug-in failed without a reason");
    return kFailure;
  }
}

}  // namespace host
