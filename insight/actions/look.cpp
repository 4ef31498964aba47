#include "actions/look.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <utility>

#include "service_exceptions.h"
#include "text.h"

namespace insight {

namespace {

using ovra::data_transfer::ServiceObject;

/// A refusal of the plug-in, as its clients see it.
struct Refused {
  std::wstring errorId;
  std::wstring words;
};

/// The first argument that has to be one of a few words, which do different things.
const OperationField* wordFieldOf(const Operation& operation) {
  const auto found =
      std::find_if(operation.fields.begin(), operation.fields.end(), [](const OperationField& field) {
        return field.isRequired && !field.words.empty() && !field.candidates && field.whenField.empty();
      });
  return found == operation.fields.end() ? nullptr : &*found;
}

class Look {
 public:
  Look(const Operation& operation, const std::wstring& id, ovra::rehearsed_plugin_1& plugin)
      : m_operation(operation), m_id(id), m_plugin(plugin) {}

  Action at(const OperationField* field, const std::wstring& word) const {
    Action action;
    action.operation = &m_operation;
    ServiceObject body;
    if (!m_operation.fields.empty()) body = ServiceObject::object();
    if (field != nullptr) {
      action.field = field->name;
      action.word = word;
      body.member(field->name) = word;
    }
    action.needs = missing(action, true);
    if (action.needs.empty()) judge(std::move(body), action);
    if (!action.needs.empty()) action.verdict = Verdict::kNeeds;
    return action;
  }

 private:
  /// Fields that count with the word and are not told yet.
  std::vector<const OperationField*> missing(const Action& action, bool areRequired) const {
    std::vector<const OperationField*> fields;
    for (const OperationField& each : m_operation.fields) {
      if (each.name == action.field || each.isRequired != areRequired) continue;
      const bool counts = each.whenField.empty() || (each.whenField == action.field &&
                                                     (each.whenWord.empty() || each.whenWord == action.word));
      if (counts) fields.push_back(&each);
    }
    return fields;
  }

  /// Where the request lacks something that is not always needed, a yes or no is tried, so that a refusal for
  /// how the machine stands is not taken for a question.
  void judge(ServiceObject body, Action& action) const {
    std::optional<Refused> refused = rehearse(body);
    if (refused && isForRequest(*refused)) {
      action.needs = missing(action, false);
      for (const OperationField* const each : action.needs) {
        if (each->type == L"boolean") body.member(each->name) = false;
      }
      std::optional<Refused> again = rehearse(body);
      if (again && !isForRequest(*again)) {
        action.needs.clear();
        refused = std::move(again);
      }
    }
    if (!refused || !action.needs.empty()) return;
    action.verdict = Verdict::kRefused;
    action.errorId = refused->errorId;
    action.words = refused->words;
  }

  bool isForRequest(const Refused& refused) const {
    const auto& known = m_operation.requestRefusals;
    return std::find(known.begin(), known.end(), std::make_pair(refused.errorId, refused.words)) !=
           known.end();
  }

  std::optional<Refused> rehearse(const ServiceObject& body) const {
    try {
      m_plugin.rehearse(m_operation.key, m_operation.method, segmentsOn(m_id, m_operation), {}, body);
      return {};
    } catch (const ovra::common::IErrorIdException& refusal) {
      return Refused{utf8ToWide(refusal.getErrorId()), utf8ToWide(refusal.getMessage())};
    } catch (const std::exception& failure) {
      return Refused{{}, utf8ToWide(failure.what())};
    }
  }

  const Operation& m_operation;
  const std::wstring& m_id;
  ovra::rehearsed_plugin_1& m_plugin;
};

}  // namespace

std::vector<std::wstring> segmentsOn(const std::wstring& id, const Operation& operation) {
  std::vector<std::wstring> segments = operation.segments;
  std::replace(segments.begin(), segments.end(), L'{' + operation.argument + L'}', id);
  return segments;
}

std::vector<Action> actionsOn(const std::wstring& type, const std::wstring& id,
                              const std::vector<Operation>& operations, ovra::rehearsed_plugin_1& plugin) {
  std::vector<Action> actions;
  for (const Operation& operation : operations) {
    if (operation.objectType != type) continue;
    const Look look(operation, id, plugin);
    const OperationField* const field = wordFieldOf(operation);
    if (field == nullptr) {
      actions.push_back(look.at(nullptr, {}));
      continue;
    }
    for (const std::wstring& word : field->words) actions.push_back(look.at(field, word));
  }
  return actions;
}

}  // namespace insight
