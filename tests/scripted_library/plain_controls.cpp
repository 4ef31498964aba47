#include "scripted_library/scripted_library.h"

/// For a program that finds the library at run time and so has no C++ names of it.
extern "C" __attribute__((visibility("default"))) void scripted_library_release_events();

void scripted_library_release_events() { ScriptedLibrary::instance().events().release(); }
