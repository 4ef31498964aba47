#ifndef MIRN_CLI_DOCUMENT_API_DOCUMENT_H
#define MIRN_CLI_DOCUMENT_API_DOCUMENT_H

#include <boost/json/value.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "document/operation.h"

namespace mirnctl {

/// The operations of a service, as its OpenAPI document tells them. Plain value.
class ApiDocument {
 public:
  /// Raises `Failure` for a text that is no such document. What of it is not understood is left out.
  explicit ApiDocument(std::string_view text);

  const std::vector<Operation>& operations() const { return m_operations; }
  /// Null where there is none.
  const Operation* find(std::string_view id) const;
  const Operation* find(std::string_view noun, std::string_view verb) const;
  const std::string& version() const { return m_version; }

 private:
  std::vector<Operation> m_operations;
  std::string m_version;
};

/// The document that this program was built with.
std::string_view embeddedDocument();

}  // namespace mirnctl

#endif
