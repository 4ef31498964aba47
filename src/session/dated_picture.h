#ifndef MIRN_SESSION_DATED_PICTURE_H
#define MIRN_SESSION_DATED_PICTURE_H

#include <boost/optional.hpp>
#include <cstdint>
#include <string>

#include "indexed_snapshot.h"
#include "plugin_extensions.h"

/// How old a picture is, and whether the last try to renew it failed. Ticks since the Unix epoch.
struct PictureTimes {
  struct Failure {
    std::int64_t at;
    std::string words;
  };

  boost::optional<std::int64_t> takenAt;  ///< None of the empty picture that stands in for one.
  boost::optional<Failure> failure;       ///< Of the last try; none when that succeeded.
};

/// A picture with what belongs to it.
struct DatedPicture {
  Picture picture;
  PictureTimes times;
  ovra::PluginPosition position;
};

#endif
