#ifndef MIRN_SIMULATOR_BUNDLE_BUNDLE_FILES_H
#define MIRN_SIMULATOR_BUNDLE_BUNDLE_FILES_H

#include <boost/json/object.hpp>
#include <stdexcept>
#include <string>

namespace simulator {

/// A bundle that cannot be read. `what()` is one line.
class BundleError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The answers in a bundle, a packed one or the folder that it unpacks to, as `twinOf` takes them. Raises a
/// `BundleError` where one of them is missing or is no JSON.
boost::json::object answersInBundle(const std::string& path);

}  // namespace simulator

#endif
