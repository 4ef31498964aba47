#ifndef MIRN_PLUGIN_PLUGIN_DESCRIPTION_H
#define MIRN_PLUGIN_PLUGIN_DESCRIPTION_H

#include "ServiceObject.h"

/// All that a host can be told of the plug-in ahead of any request. An object:
/// - `routes`: a list, a form for each route; see catalogue_form.h. To the refusals of a route's own belongs
///   what clients see where the library finds an object in no state for it.
/// - `refusals`: those that every route has. A refusal is an object with `errorId`, `words` and `kind`.
/// - `report`: how a request of the wrong shape is refused: `errorId` and `kind`; the words name its fields.
/// - `statuses`: a list with `status`, `errorId`, `words` and `kind` for each status by which the library may
///   refuse an operation of a route; `unknownStatus`: the same for all others, without `status`.
/// - `fallback`: an object, the kind of a refusal that nothing above names, by its error id; `otherwise`:
///   the kind of all that have another id or none.
/// - `schemas`: an object, the schemas of answers by their names; see `field::schemaOf`.
///
/// Made anew at each call.
ovra::data_transfer::ServiceObject describePlugin();

#endif
