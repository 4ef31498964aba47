#ifndef MIRN_SIMULATOR_STATE_APPEND_FILE_H
#define MIRN_SIMULATOR_STATE_APPEND_FILE_H

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace simulator {

/// A file that grows at its end. A new one is for its owner alone. All but the destructor throw
/// std::runtime_error with the system's reason. One source a system.
class AppendFile {
 public:
  /// Opens or makes it.
  explicit AppendFile(const std::filesystem::path& path);
  AppendFile(const AppendFile&) = delete;
  AppendFile& operator=(const AppendFile&) = delete;
  ~AppendFile();

  /// The text is on the disk when this returns. After a failure nobody knows how much of it is in the file.
  void append(std::string_view text);

  /// Cuts off what stands behind the first `size` bytes.
  void cut(std::uint64_t size);

 private:
  std::intptr_t m_handle;  ///< the system's
};

}  // namespace simulator

#endif
