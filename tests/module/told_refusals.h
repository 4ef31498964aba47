#ifndef MIRN_TESTS_MODULE_TOLD_REFUSALS_H
#define MIRN_TESTS_MODULE_TOLD_REFUSALS_H

#include <string>

#include "module/request.h"

/// Holds refusals against what a plug-in tells of itself ahead of any request.
class ToldRefusals {
 public:
  /// `description` is what `describe` answers.
  explicit ToldRefusals(ovra::data_transfer::ServiceObject description)
      : m_description(std::move(description)) {}

  /// Where a refusal of the request, in the words of `failureText`, is told: "told by its route", "told of
  /// all routes", "told as the report", or "told as a status" where the plug-in refuses as the library would;
  /// or "without a route" or "without a key" where the request takes none that is told and is refused for
  /// that. Empty when it is told nowhere.
  std::string placeOf(const Request& request, const std::string& refusal) const;

 private:
  ovra::data_transfer::ServiceObject m_description;
};

#endif
