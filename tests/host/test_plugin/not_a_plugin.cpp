// A library like any other.
#include "export.h"

MIRN_TEST_EXPORT int something_else() { return 0; }  // NOLINT
