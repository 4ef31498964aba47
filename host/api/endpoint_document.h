#ifndef MIRN_HOST_API_ENDPOINT_DOCUMENT_H
#define MIRN_HOST_API_ENDPOINT_DOCUMENT_H

#include <string>
#include <vector>

namespace host {

/// One way in which an operation answers.
struct DocumentedAnswer {
  unsigned status;
  std::string description;
  std::string
      schema{};  ///< JSON Schema as JSON text; empty: without a body, or a problem document from 400 on.
  std::string mediaType = "application/json";
};

/// A name in the path or in the query of an operation.
struct DocumentedParameter {
  std::string name;
  bool isInPath = false;  ///< And needed then.
  std::string description;
  std::string schema;  ///< JSON Schema as JSON text.
};

/// What an operation of the host's own tells of itself to documents and command lines. Plain value.
struct EndpointDocument {
  std::string noun;
  std::string verb;
  std::string summary;                      ///< One sentence.
  std::string description;                  ///< What else there is to know.
  std::vector<DocumentedAnswer> answers{};  ///< But for the refusals that every operation has.
  std::string effect = "read";
  std::string body{};  ///< JSON Schema as JSON text; empty: there is none.
  bool needsBody = true;
  std::vector<DocumentedParameter> parameters{};
  std::vector<std::string> columns{};  ///< Of a list: what a table of it has; empty: everything.
};

}  // namespace host

#endif
