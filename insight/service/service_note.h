#ifndef MIRN_INSIGHT_SERVICE_SERVICE_NOTE_H
#define MIRN_INSIGHT_SERVICE_SERVICE_NOTE_H

#include <boost/json/object.hpp>
#include <string>

#include "health/severity.h"
#include "view/object_ref.h"

namespace insight {

/// Something that befell the service itself, for the history. Plain value.
struct ServiceNote {
  Severity severity = Severity::kWarning;
  ObjectRef object;
  std::string operation;
  std::string outcome;
  boost::json::object details;
};

}  // namespace insight

#endif
