#include "identity/private_file.h"

#include "identity/owner_only_windows.h"
#include "identity/token.h"
#include "system/system_reason.h"
#include "text.h"

namespace host {

namespace {

/// A file of its own beside the one to be, gone at the end unless it became that one.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::wstring& besides) : m_path(besides + L'.' + utf8ToWide(makeToken())) {
    OwnerOnly access(OwnerOnly::Kind::kFile);
    m_handle = ::CreateFileW(m_path.c_str(), GENERIC_WRITE, 0, access.attributes(), CREATE_NEW,
                             FILE_ATTRIBUTE_NORMAL, nullptr);
    if (m_handle == INVALID_HANDLE_VALUE) throw lastSystemFailure();
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    close();
    ::DeleteFileW(m_path.c_str());
  }

  void write(const std::string& text) {
    DWORD written = 0;
    const bool isWritten =
        ::WriteFile(m_handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
        written == text.size() && ::FlushFileBuffers(m_handle);
    if (!isWritten) throw lastSystemFailure();
  }

  /// Takes the name of `file` unless there is one.
  void rename(const std::wstring& file) {
    close();
    if (::MoveFileExW(m_path.c_str(), file.c_str(), MOVEFILE_WRITE_THROUGH)) return;
    const DWORD error = ::GetLastError();
    if (error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS) throw lastSystemFailure();
  }

 private:
  void close() {
    if (m_handle != INVALID_HANDLE_VALUE) ::CloseHandle(m_handle);
    m_handle = INVALID_HANDLE_VALUE;
  }

  std::wstring m_path;
  HANDLE m_handle;
};

}  // namespace

const char* const kPrivacyRemedy = "icacls FILE /inheritance:r /grant:r \"%USERNAME%\":F";

bool othersMayReach(const std::filesystem::path& file) { return letsOthersIn(file.wstring()); }

void makePrivateDirectory(const std::filesystem::path& directory) {
  OwnerOnly access(OwnerOnly::Kind::kDirectory);
  if (::CreateDirectoryW(directory.c_str(), access.attributes())) return;
  if (::GetLastError() != ERROR_ALREADY_EXISTS) throw lastSystemFailure();
}

void makePrivateFile(const std::filesystem::path& file, const std::string& content) {
  TemporaryFile temporary(file.wstring());
  temporary.write(content);
  temporary.rename(file.wstring());
}

}  // namespace host
