// A library like any other.
#include "host/test_plugin/export.h"

MIRN_TEST_EXPORT int something_else() { return 0; }  // NOLINT
