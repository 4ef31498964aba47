#include "local_time.h"

boost::optional<std::tm> localTime(std::time_t seconds) {
  std::tm calendar{};
  if (!::localtime_r(&seconds, &calendar)) return boost::none;
  return calendar;
}
