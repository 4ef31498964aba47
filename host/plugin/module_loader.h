#ifndef MIRN_HOST_PLUGIN_MODULE_LOADER_H
#define MIRN_HOST_PLUGIN_MODULE_LOADER_H

#include <string>

namespace host {

/// A module of this process, or a library that one is to find loaded. Unloaded by the destructor: no object
/// of it may be left then.
class LoadedModule {
 public:
  /// Raises `std::runtime_error` with the system's reason, which says `what` could not be loaded.
  explicit LoadedModule(const std::string& path, const std::string& what = "module");
  LoadedModule(const LoadedModule&) = delete;
  LoadedModule& operator=(const LoadedModule&) = delete;
  ~LoadedModule();

  /// The export `name` as a `Function`. Raises `std::runtime_error` when the module has none.
  template <class Function>
  Function find(const char* name) const {
    return reinterpret_cast<Function>(findSymbol(name));
  }

  /// The function `name` of the module or of a library that came with it; null when there is none.
  void* findAnywhere(const char* name) const;

 private:
  void* findSymbol(const char* name) const;

  std::string m_path;
  void* m_handle;
};

/// The file that the function or object came from, as UTF-8; empty when the system does not tell.
std::string fileOf(const void* symbol);

}  // namespace host

#endif
