#ifndef MIRN_SIMULATOR_TWIN_PUBLISHED_ROWS_H
#define MIRN_SIMULATOR_TWIN_PUBLISHED_ROWS_H

#include <boost/json/object.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "twin/conversions.h"

/// What the plug-in publishes of each object, and which key of a scenario takes it: one row a field. What
/// follows from the rest, such as a free size, has no row; twin/derived_fields.h looks at it afterwards.
namespace simulator {

struct PublishedRow {
  std::string_view published;  ///< The path of a member.
  std::string_view key;
  Conversion convert;
};

using PublishedRows = std::vector<PublishedRow>;

extern const PublishedRows kVersionRows;
extern const PublishedRows kEngineRows;
extern const PublishedRows kLevelRows;
extern const PublishedRows kControllerRows;
extern const PublishedRows kDeviceRows;
extern const PublishedRows kDiskRows;  ///< Of a device that is a disk, beside the others.
extern const PublishedRows kPortRows;
extern const PublishedRows kArrayRows;
extern const PublishedRows kVolumeRows;

/// A word of a disk, and the fact of a scenario that it stands for.
struct FactRow {
  std::string_view published;  ///< The member.
  std::string_view word;
  std::string_view key;
  boost::json::value fact;
};

extern const std::vector<FactRow> kDiskFactRows;

/// Members that are missing in `published` are left out.
void take(const PublishedRows& rows, const boost::json::object& published, const std::string& place,
          boost::json::object& scenario);

void takeFacts(const boost::json::object& published, boost::json::object& scenario);

}  // namespace simulator

#endif
