#ifndef MIRN_CATALOGUE_SCHEMAS_H
#define MIRN_CATALOGUE_SCHEMAS_H

#include "ServiceObject.h"

/// The schemas of all that routes answer, an object with a member for each name of schema_names.h; each as
/// `field::schemaOf` gives it.
ovra::data_transfer::ServiceObject allSchemas();

#endif
