#ifndef MIRN_HOST_BUNDLE_MANIFEST_H
#define MIRN_HOST_BUNDLE_MANIFEST_H

#include <boost/json/object.hpp>
#include <cstddef>
#include <string>
#include <vector>

#include "bundle/bundled_reads.h"

namespace host {

/// Lists what has come into a bundle, as text, since there may be many files.
class FileList {
 public:
  /// `answer` to a request of `target`, with so many bytes as `name`, which is empty where it has no body.
  void add(const BundledRead& read, const std::string& name, const std::string& target, const Answer& answer,
           std::size_t bytes);

  const std::string& elements() const { return m_elements; }

 private:
  std::string m_elements;
};

/// The manifest as JSON: the members of `form`, the files, and what is left out.
std::string manifestText(const boost::json::object& form, const FileList& files,
                         const std::vector<LeftOut>& leftOut);

}  // namespace host

#endif
