#include "rehearsal.h"

#include <new>

#include "list_form.h"
#include "listener_table.h"
#include "lookup.h"
#include "mirn_exception.h"
#include "rehearsal_forms.h"
#include "rehearsed_argument.h"
#include "rehearsed_session.h"
#include "request_error.h"

using ovra::common::HttpClientErrorException;
using ovra::data_transfer::ServiceObject;
using ovra::request_validator::RequestError;

Rehearsal::Rehearsal(MirnSession& session)
    : m_picture(session.picture()), m_locateTimeout(session.getLocateTimeout()) {}

ServiceObject Rehearsal::plan(const PluginRequest& request) const {
  RehearsedSession session(m_picture, m_locateTimeout);
  const auto listener = lookUp(listenerMakers(), request.path)(session, session);
  try {
    listener->handleRequest(request.method, request.segments, request.parameters, request.body);
  } catch (const EndOfRehearsal&) {
    // The deed is all there.
  }
  return planForm(session.deed());
}

ServiceObject Rehearsal::planOrRefusal(const PluginRequest& request) const {
  ServiceObject form = ServiceObject::object();
  try {
    form.member(L"plan") = plan(request);
  } catch (const RequestError& error) {
    form.member(L"refusal") = refusalForm(L"request", error);
  } catch (const ListenerException& error) {
    form.member(L"refusal") = refusalForm(L"listener", error);
  } catch (const MirnException& error) {
    form.member(L"refusal") = refusalForm(L"plugin", error);
  } catch (const HttpClientErrorException& error) {
    form.member(L"refusal") = refusalForm(error);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    form.member(L"refusal") = refusalForm(L"other", error);
  }
  return form;
}

ServiceObject Rehearsal::planEach(PluginRequest request, const std::wstring& argument,
                                  const std::vector<ServiceObject>& values) const {
  return listOf(values, [&](const ServiceObject& value) {
    putArgument(request, argument, value);
    return planOrRefusal(request);
  });
}
