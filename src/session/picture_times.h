#ifndef MIRN_SESSION_PICTURE_TIMES_H
#define MIRN_SESSION_PICTURE_TIMES_H

#include <boost/optional.hpp>
#include <cstdint>
#include <string>

/// How old a picture is, and whether the last try to renew it failed. Ticks since the Unix epoch.
struct PictureTimes {
  struct Failure {
    std::int64_t at;
    std::string words;
  };

  boost::optional<std::int64_t> takenAt;  ///< None of the empty picture that stands in for one.
  boost::optional<Failure> failure;       ///< Of the last try; none when that succeeded.
};

#endif
