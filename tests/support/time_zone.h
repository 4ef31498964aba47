#ifndef MIRN_TESTS_SUPPORT_TIME_ZONE_H
#define MIRN_TESTS_SUPPORT_TIME_ZONE_H

#include <cstdlib>
#include <string>

#include "support/environment.h"

/// While it lives, the machine stands in this time zone, given in the form of the variable TZ.
class TimeZone {
 public:
  explicit TimeZone(const char* zone) {
    if (const char* before = std::getenv("TZ")) {
      m_wasSet = true;
      m_before = before;
    }
    setVariable("TZ", zone);
    applyTimeZone();
  }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;
  ~TimeZone() {
    if (m_wasSet) {
      setVariable("TZ", m_before);
    } else {
      unsetVariable("TZ");
    }
    applyTimeZone();
  }

 private:
  bool m_wasSet = false;
  std::string m_before;
};

#endif
