#ifndef MIRN_CLI_ARGUMENTS_OBJECT_NAMES_H
#define MIRN_CLI_ARGUMENTS_OBJECT_NAMES_H

#include <boost/json/array.hpp>
#include <map>
#include <string>
#include <vector>

#include "document/api_document.h"
#include "wire/client.h"

namespace mirnctl {

/// Who is meant by a word of the command line. Asks each list of objects once.
class ObjectNames {
 public:
  ObjectNames(const ApiDocument& document, IService& service) : m_document(document), m_service(service) {}

  /// The object of this type with that id, name or serial number, or the only one whose id begins so; what
  /// has no name, such as an alarm, goes by that of its object. Raises `Failure` where there is none, or more
  /// than one. Of a type without a list, or with one that has pages, what is not there is taken for an id.
  std::string idOf(const std::string& type, const std::string& text);

  /// Its record.
  const boost::json::object& recordOf(const std::string& type, const std::string& text);

  /// An object by the word that people know it by: its name, else its serial number, else its id, which also
  /// stands for a name that more than one has.
  struct Named {
    std::string id, name;
    const boost::json::object* record;
  };

  /// All of a type; none where nothing lists them. Their records live as long as this.
  std::vector<Named> allOf(const std::string& type);

  /// Its name, else its serial number, else its id.
  std::string nameOf(const std::string& type, const std::string& id);

 private:
  const boost::json::array* listOf(const std::string& type);

  const ApiDocument& m_document;
  IService& m_service;
  std::map<std::string, boost::json::array> m_lists;
};

}  // namespace mirnctl

#endif
