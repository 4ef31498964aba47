#ifndef MIRN_CLI_DOCUMENT_OPERATION_H
#define MIRN_CLI_DOCUMENT_OPERATION_H

#include <string>
#include <vector>

namespace mirnctl {

enum class Place { kPath, kQuery, kBody };

enum class ValueKind { kText, kNumber, kBoolean, kList, kJson };

/// One argument of an operation. Plain value.
struct Field {
  std::string name;
  Place place = Place::kBody;
  ValueKind kind = ValueKind::kText;
  bool isRequired = false;
  bool takesNull = false;
  std::vector<std::string> words;  ///< The only ones that it may be; empty: any.
  std::string refersTo;            ///< The type of the object that it names, such as "disk"; empty: none.
  std::string unit;                ///< "MiB", "bytes", "s" …; empty: none.
  std::string help;
};

/// One member of what an operation answers, nested ones with a dot between. Plain value.
struct AnswerField {
  std::string name;
  std::string unit;
  std::string help;
  std::vector<std::string> columns{};  ///< Of records within the answer: those of their table; empty: none.
  std::vector<AnswerField> parts{};    ///< Members of these records.
};

/// What a service can be asked. Plain value.
struct Operation {
  std::string id;
  std::string noun;  ///< Empty: the verb stands alone.
  std::string verb;
  std::string method;
  std::string path;  ///< With "{name}" for arguments.
  std::string summary;
  std::string description;
  std::string effect;  ///< "read", "harmless", "changes" or "destroys".
  std::string role;
  std::vector<Field> fields;
  std::vector<std::string> columns;  ///< Of its table; empty: all that it answers.
  std::vector<AnswerField> answer;   ///< Of one record.
  bool answersList = false;          ///< Records, as a list or a page of them.
  bool answersPage = false;
  bool answersJson = false;
  bool answersFile = false;  ///< Which is no text.
  bool takesDryRun = false;

  bool isChange() const { return effect == "changes" || effect == "destroys"; }
};

}  // namespace mirnctl

#endif
