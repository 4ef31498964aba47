#ifndef MIRN_TESTS_SUPPORT_PROCESS_RESOURCES_H
#define MIRN_TESTS_SUPPORT_PROCESS_RESOURCES_H

#include <cstddef>

/// What this process holds at a moment.
struct ProcessResources {
  std::size_t threads;
  std::size_t handles;  ///< Of the system: file descriptors, where they are all there is.
  std::size_t bytes;    ///< Allocated and not freed.
};

ProcessResources processResources();

/// As many handles the system itself may take late, whatever the program does.
extern const std::size_t kLateHandles;

/// From now on the system's own libraries stay in the process that would come and go with a module: what they
/// leave behind is none of the module's.
void keepSystemLibraries();

#endif
