#ifndef MIRN_TESTS_HOST_TEST_PLUGIN_EXPORT_H
#define MIRN_TESTS_HOST_TEST_PLUGIN_EXPORT_H

/// Stands ahead of a function that a module shows.
#ifdef _WIN32
#define MIRN_TEST_EXPORT extern "C" __declspec(dllexport)
#else
#define MIRN_TEST_EXPORT extern "C" __attribute__((visibility("default")))
#endif

#endif
