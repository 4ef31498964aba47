#ifndef MIRN_PLUGIN_REHEARSAL_FORMS_H
#define MIRN_PLUGIN_REHEARSAL_FORMS_H

#include <exception>

#include "rehearsed_session.h"
#include "service_exceptions.h"
#include "ServiceObject.h"

/// The objects of which `rehearsed_plugin_1` tells.

ovra::data_transfer::ServiceObject planForm(const RehearsedDeed& deed);

/// A refusal under the word for its class; with its error id where it has one.
ovra::data_transfer::ServiceObject refusalForm(const wchar_t* className, const std::exception& error);
/// One that knows its status.
ovra::data_transfer::ServiceObject refusalForm(const ovra::common::HttpClientErrorException& error);

#endif
