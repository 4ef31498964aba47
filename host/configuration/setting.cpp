#include "configuration/setting.h"

#include <algorithm>
#include <set>

namespace host {

namespace {

bool names(const std::vector<Setting>& settings, const Option* option) {
  return std::any_of(settings.begin(), settings.end(),
                     [option](const Setting& setting) { return setting.option == option; });
}

}  // namespace

void applySettings(const std::vector<Setting>& settings, Options& options) {
  std::set<const Option*> seen;
  for (const Setting& setting : settings) {
    const bool isFirst = seen.insert(setting.option).second;
    if (!isFirst && !setting.option->mayRepeat) throw UsageError(setting.name + " is said twice");
    try {
      setting.option->take(options, setting.value);
    } catch (const ValueError& error) {
      throw UsageError(setting.name + ' ' + error.what());
    }
  }
}

std::vector<Setting> merged(const std::vector<Setting>& lower, const std::vector<Setting>& upper) {
  std::vector<Setting> all;
  std::copy_if(lower.begin(), lower.end(), std::back_inserter(all),
               [&](const Setting& setting) { return !names(upper, setting.option); });
  all.insert(all.end(), upper.begin(), upper.end());
  return all;
}

}  // namespace host
