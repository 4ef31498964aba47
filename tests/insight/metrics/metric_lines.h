#ifndef MIRN_TESTS_INSIGHT_METRICS_METRIC_LINES_H
#define MIRN_TESTS_INSIGHT_METRICS_METRIC_LINES_H

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "metric_text.h"

/// The samples of a text by what stands ahead of their values: "mirn_state{state=\"NORMAL\"}". One that is
/// there twice has a value of its own.
inline std::map<std::string, std::string> samplesOf(const MetricText& text) {
  std::map<std::string, std::string> samples;
  std::istringstream lines(text.text());
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.front() == '#') continue;
    const std::size_t space = line.rfind(' ');
    const auto [place, isNew] = samples.emplace(line.substr(0, space), line.substr(space + 1));
    if (!isNew) place->second = "told twice";
  }
  return samples;
}

/// Those of one family.
inline std::map<std::string, std::string> samplesOf(const MetricText& text, const std::string& family) {
  std::map<std::string, std::string> samples;
  for (const auto& [name, value] : samplesOf(text)) {
    if (name.substr(0, name.find('{')) == family) samples.emplace(name, value);
  }
  return samples;
}

#endif
