#ifndef MIRN_TESTS_SUPPORT_LIBRARY_IN_PROCESS_H
#define MIRN_TESTS_SUPPORT_LIBRARY_IN_PROCESS_H

#include <filesystem>
#include <string>

// A library that something else has brought into this process, by its bare name, such as "VEXL2".

/// Where the loader took it from; empty when it is not there.
std::filesystem::path pathOfLibrary(const std::string& name);

/// The address of what it exports; null when it is not there or exports no such thing.
void* exportOfLibrary(const std::string& name, const char* symbol);

#endif
