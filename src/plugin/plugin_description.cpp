#include "plugin_description.h"

#include <map>

#include "catalogue.h"
#include "catalogue_form.h"
#include "list_form.h"
#include "schemas.h"
#include "service_exceptions.h"
#include "status_text.h"
#include "text.h"

using ovra::data_transfer::ServiceObject;

namespace {

/// No status has this number.
constexpr VEX_STATUS kUnknownStatus = ~VEX_STATUS{0};

RefusalRow refusalBy(VEX_STATUS status) {
  return {statusToErrorId(status), utf8ToWide(statusToText(status)), statusToKind(status)};
}

/// The row with what clients see where the library finds an object in no state for it.
RouteRow withStateRefusal(RouteRow row) {
  if (const char* const errorId = row.call.stateErrorId) {
    const std::wstring words = utf8ToWide(statusToText(statusOfInvalidState(errorId)));
    row.refusals.push_back({errorId, words, RefusalKind::kState});
  }
  return row;
}

ServiceObject routeForms() {
  return listOf(catalogue(), [](const RouteRow* row) { return formOf(withStateRefusal(*row)); });
}

ServiceObject refusalForms(const RefusalRows& rows) {
  return listOf(rows, [](const RefusalRow& row) { return formOf(row); });
}

ServiceObject statusForms() {
  return listOf(
      knownStatuses(), [](VEX_STATUS status) { return status != VEX_STATUS_SUCCESS; },
      [](VEX_STATUS status) {
        ServiceObject form = formOf(refusalBy(status));
        form.member(L"status") = std::uint64_t{status};
        return form;
      });
}

ServiceObject reportForm() {
  ServiceObject form = ServiceObject::object();
  form.member(L"errorId") = utf8ToWide(kErrorInvalidParameter);
  form.member(L"kind") = std::wstring(toText(RefusalKind::kRequest));
  return form;
}

ServiceObject fallbackForm() {
  ServiceObject form = ServiceObject::object();
  for (const auto& [errorId, kind] : kindsOfErrorIds()) {
    form.member(utf8ToWide(errorId)) = std::wstring(toText(kind));
  }
  return form;
}

}  // namespace

ServiceObject describePlugin() {
  ServiceObject form = ServiceObject::object();
  form.member(L"routes") = routeForms();
  form.member(L"refusals") = refusalForms(refusalsOfAllRoutes());
  form.member(L"report") = reportForm();
  form.member(L"statuses") = statusForms();
  form.member(L"unknownStatus") = formOf(refusalBy(kUnknownStatus));
  form.member(L"fallback") = fallbackForm();
  form.member(L"otherwise") = std::wstring(toText(kindOfErrorId("")));
  form.member(L"schemas") = allSchemas();
  return form;
}
