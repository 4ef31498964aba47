#include "scripted_library/scripted_call.h"

#include <algorithm>
#include <iterator>

std::string ScriptedCall::text() const {
  std::string result = operation + "(";
  const char* separator = "";
  for (const ScriptedArgument& argument : arguments) {
    result += separator + argument.text;
    separator = ", ";
  }
  return result + ")";
}

std::vector<std::string> textsOf(const ScriptedCalls& calls) {
  std::vector<std::string> texts;
  std::transform(calls.begin(), calls.end(), std::back_inserter(texts),
                 [](const ScriptedCall& call) { return call.text(); });
  return texts;
}

ScriptedCalls onlyOf(OperationKind kind, const ScriptedCalls& calls) {
  ScriptedCalls chosen;
  std::copy_if(calls.begin(), calls.end(), std::back_inserter(chosen),
               [kind](const ScriptedCall& call) { return call.kind == kind; });
  return chosen;
}
