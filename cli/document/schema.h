#ifndef MIRN_CLI_DOCUMENT_SCHEMA_H
#define MIRN_CLI_DOCUMENT_SCHEMA_H

#include <boost/json/object.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "document/operation.h"

namespace mirnctl {

/// A document's parts, and what its references lead to. Lives as long as the document's value.
class Schemas {
 public:
  explicit Schemas(const boost::json::object& document) : m_document(document) {}

  /// `value`, or what its reference leads to. An empty object where that is nowhere.
  const boost::json::object& resolved(const boost::json::value& value) const;

  /// How the schema of an argument describes it.
  Field field(std::string_view name, Place place, bool isRequired, const boost::json::object& described,
              const boost::json::value& schema) const;

  /// The members of the body's schema.
  std::vector<Field> bodyFields(const boost::json::value& schema) const;

  /// What the schema of a successful answer holds: goes into `operation`.
  void describeAnswer(const boost::json::value& schema, Operation& operation) const;

 private:
  void addAnswerFields(const boost::json::object& schema, const std::string& prefix,
                       std::vector<AnswerField>& fields) const;
  const boost::json::object& record(const boost::json::object& schema, Operation& operation) const;

  const boost::json::object& m_document;
};

/// The texts in a member that is a list; none where it is not there.
std::vector<std::string> wordsOf(const boost::json::object& object, std::string_view member);

/// The text of a member; empty where it is not there.
std::string textOf(const boost::json::object& object, std::string_view member);

/// The object of a member; an empty one where it is not there.
const boost::json::object& objectOf(const boost::json::object& object, std::string_view member);

}  // namespace mirnctl

#endif
