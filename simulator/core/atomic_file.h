#ifndef MIRN_SIMULATOR_CORE_ATOMIC_FILE_H
#define MIRN_SIMULATOR_CORE_ATOMIC_FILE_H

#include <string>

namespace simulator {

/// Replaces the file by one with this content. Whatever happens meanwhile, the path names the old file or the
/// new one, whole. Returns false, with the old file in place, when it cannot be done.
bool replaceFile(const std::string& path, const std::string& content);

}  // namespace simulator

#endif
