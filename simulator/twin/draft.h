#ifndef MIRN_SIMULATOR_TWIN_DRAFT_H
#define MIRN_SIMULATOR_TWIN_DRAFT_H

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <map>
#include <string>
#include <vector>

namespace simulator {

/// The lists of the plug-in's answers that a twin is made from: objects under the names of their routes.
/// Texts are UTF-8. Raises a `TwinError` where one is missing.
struct Answers {
  explicit Answers(const boost::json::object& answers);

  const boost::json::object& version;
  const boost::json::array& engines;
  /// In the order of their handles, as far as that is known.
  const boost::json::array controllers;
  const boost::json::array& devices;
  const boost::json::array& ports;
  const boost::json::array& arrays;
  const boost::json::array& volumes;
};

/// A scenario that says all that the answers tell outright: without the work of volumes, and with the members
/// of an array in the order of the list of devices.
struct Draft {
  boost::json::object system;
  boost::json::array engines;
  boost::json::array controllers;
  boost::json::array devices;
  boost::json::array ports;
  boost::json::array arrays;
  boost::json::array volumes;

  /// In the form of a scenario file.
  boost::json::object scenario() const;
};

Draft draftOf(const Answers& answers);

}  // namespace simulator

#endif
