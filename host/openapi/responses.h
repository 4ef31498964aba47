#ifndef MIRN_HOST_OPENAPI_RESPONSES_H
#define MIRN_HOST_OPENAPI_RESPONSES_H

#include <boost/json/object.hpp>
#include <map>
#include <string>

namespace host {

/// The answers that many operations share, by their names among a document's components.
boost::json::object sharedResponses();

/// The fields of the header that many answers share, by their names among a document's components.
boost::json::object sharedHeaders();

/// The schema of a problem document.
boost::json::object problemSchema();

/// The schema of what a request would do.
boost::json::object planSchema();

/// The answers of one operation, collected.
class Responses {
 public:
  /// The refusals that every operation has, and what comes of roles where it takes one.
  explicit Responses(bool takesRole);

  /// With a body unless `schema` is empty.
  void add(unsigned status, const std::string& description, const boost::json::object& schema = {},
           const std::string& mediaType = "application/json");

  /// A refusal that has no example of its own.
  void addRefusal(unsigned status);

  /// With the error id and the words of a refusal as an example.
  void addRefusal(unsigned status, const std::string& errorId, const std::string& words);

  /// The client has the answer already.
  void addNotModified();

  /// The operation can be rehearsed, which is answered as the schema of this name tells; and its answers tell
  /// tag and structure.
  void addRehearsed(const std::string& schema);

  /// Gives the answer `status` an example, if there is one.
  void addExample(unsigned status, const std::string& name, const boost::json::value& value);

  /// As the member "responses".
  boost::json::object toJson() const;

 private:
  std::map<unsigned, boost::json::object> m_responses;  ///< By status.
};

}  // namespace host

#endif
