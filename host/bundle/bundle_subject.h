#ifndef MIRN_HOST_BUNDLE_BUNDLE_SUBJECT_H
#define MIRN_HOST_BUNDLE_BUNDLE_SUBJECT_H

#include <boost/json/object.hpp>
#include <memory>
#include <string>
#include <vector>

#include "bundle/bundled_reads.h"
#include "plugin_extensions.h"
#include "plugin_interface.h"

namespace insight {
class MachineViewSource;
}  // namespace insight

namespace host {

/// Of what bundles are made. Constant while requests are served, but for `operations`, which are filled ahead
/// of that.
struct BundleSubject {
  ovra::service_plugin_interface& plugin;
  ovra::watched_plugin_1* watched = nullptr;            ///< Null where the plug-in tells no position.
  std::shared_ptr<insight::MachineViewSource> views{};  ///< Null where nobody can read its picture.
  std::string hostVersion{};
  boost::json::value library{};  ///< Its name and whether it is simulated; null where it is not known.
  boost::json::object configuration{};
  std::vector<std::string> folders{};  ///< Of the host's files, UTF-8, whose paths nobody elsewhere is told.
  std::string maskKey{};               ///< Secret; with the same one, masks are the same.
  BundledOperations operations{};
};

}  // namespace host

#endif
