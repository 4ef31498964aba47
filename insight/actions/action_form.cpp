#include "actions/action_form.h"

#include <boost/json/array.hpp>

#include "text.h"
#include "view/object_form.h"

namespace insight {

namespace {

using boost::json::array;
using boost::json::object;
using boost::json::value;

/// Null where there is none.
value textForm(const std::wstring& text) { return text.empty() ? value(nullptr) : value(wideToUtf8(text)); }

const char* verdictWord(Verdict verdict) {
  switch (verdict) {
    case Verdict::kAllowed:
      return "allowed";
    case Verdict::kRefused:
      return "refused";
    case Verdict::kNeeds:
      break;
  }
  return "needs";
}

object formOf(const Action& action) {
  array needs;
  for (const OperationField* const field : action.needs) {
    needs.push_back(object{{"name", wideToUtf8(field->name)},
                           {"type", wideToUtf8(field->type)},
                           {"help", wideToUtf8(field->help)}});
  }
  return {{"operation", wideToUtf8(action.operation->id)},
          {"effect", wideToUtf8(action.operation->effect)},
          {"role", wideToUtf8(action.operation->role)},
          {"argument", textForm(action.field)},
          {"word", textForm(action.word)},
          {"verdict", verdictWord(action.verdict)},
          {"errorId", textForm(action.errorId)},
          {"words", textForm(action.words)},
          {"needs", std::move(needs)}};
}

}  // namespace

object formOf(const ObjectRef& ref, const std::vector<Action>& actions) {
  array forms;
  for (const Action& action : actions) forms.push_back(formOf(action));
  return {{"object", formOf(ref)}, {"actions", std::move(forms)}, {"libraryDecides", true}};
}

object formOf(const std::vector<Candidate>& candidates, const std::optional<SizeBounds>& bounds,
              const std::string& next) {
  array items;
  for (const Candidate& each : candidates) {
    items.push_back(object{{"value", wideToUtf8(each.value)},
                           {"object", each.object ? value(formOf(*each.object)) : value(nullptr)},
                           {"allowed", each.isAllowed},
                           {"errorId", textForm(each.errorId)},
                           {"words", textForm(each.words)}});
  }
  value size = nullptr;
  if (bounds) {
    size = object{
        {"least", std::to_string(bounds->least)}, {"most", std::to_string(bounds->most)}, {"unit", "MiB"}};
  }
  return {{"items", std::move(items)},
          {"next", next.empty() ? value(nullptr) : value(next)},
          {"size", std::move(size)},
          {"libraryDecides", true}};
}

}  // namespace insight
