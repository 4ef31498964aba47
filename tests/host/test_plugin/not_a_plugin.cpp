// A library like any other.
extern "C" __attribute__((visibility("default"))) int something_else() { return 0; }  // NOLINT
