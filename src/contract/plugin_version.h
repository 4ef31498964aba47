#ifndef MIRN_CONTRACT_PLUGIN_VERSION_H
#define MIRN_CONTRACT_PLUGIN_VERSION_H

/// The one place of the product's version numbers and of the plug-in's names. Read by the C++ sources, by the
/// resource compiler (so: macros, no C++), and by CMake, which takes the project's version from these lines.

#define MIRN_VERSION_MAJOR 5
#define MIRN_VERSION_MINOR 4
#define MIRN_VERSION_PATCH 0
#define MIRN_VERSION_BUILD 1465

#define MIRN_NAME "Ordan Mirn plugin"
#define MIRN_SHORT_NAME "Mirn plugin"

#endif
