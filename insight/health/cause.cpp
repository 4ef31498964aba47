#include "health/cause.h"

#include "text.h"

namespace insight {

std::string Cause::id() const {
  if (object.id.empty()) return kind;
  return kind + '-' + wideToUtf8(object.id);
}

}  // namespace insight
