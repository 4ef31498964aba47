#ifndef MIRN_CATALOGUE_SCHEMAS_H
#define MIRN_CATALOGUE_SCHEMAS_H

#include <string>
#include <vector>

#include "ServiceObject.h"

/// The schemas of all that routes answer, an object with a member for each name of schema_names.h; each as
/// `field::schemaOf` gives it.
ovra::data_transfer::ServiceObject allSchemas();

/// The properties that a table of such objects shows, in order; all are texts, numbers or booleans. Empty for
/// what no route lists.
std::vector<std::wstring> columnsOf(const std::wstring& schema);

#endif
