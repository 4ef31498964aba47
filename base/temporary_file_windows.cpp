#include "temporary_file.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "owner_only_windows.h"
#include "system_reason.h"
#include "temporary_name.h"

namespace fs = std::filesystem;

namespace {

HANDLE asHandle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

/// The access list of a file that is there.
std::vector<unsigned char> accessOf(const fs::path& file) {
  DWORD size = 0;
  ::GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<unsigned char> descriptor(size);
  if (!::GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size)) {
    throw lastSystemFailure();
  }
  return descriptor;
}

/// Nobody else may write the file, and nobody may remove or rename it, until the handle is closed.
HANDLE makeNew(const fs::path& path, SECURITY_ATTRIBUTES* access) {
  const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ, access, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_WRITE_THROUGH, nullptr);
  if (file == INVALID_HANDLE_VALUE) throw lastSystemFailure();
  return file;
}

HANDLE makeNew(const fs::path& path, const fs::path& target, Readers ofNewFile) {
  const DWORD attributes = ::GetFileAttributesW(target.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) {
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) throw std::runtime_error("is not a regular file");
    std::vector<unsigned char> descriptor = accessOf(target);
    SECURITY_ATTRIBUTES same{sizeof same, descriptor.data(), FALSE};
    return makeNew(path, &same);
  }
  if (ofNewFile == Readers::kEveryone) return makeNew(path, nullptr);
  OwnerOnly access(OwnerOnly::Kind::kFile);
  return makeNew(path, access.attributes());
}

/// By its handle, which stays: between a close and a renaming by name, others could remove the file.
bool rename(HANDLE file, const fs::path& target, bool isReplaced) {
  const std::wstring name = fs::absolute(target).make_preferred().wstring();
  const std::size_t bytes = name.size() * sizeof(wchar_t);
  std::vector<unsigned char> record(sizeof(FILE_RENAME_INFO) + bytes);
  auto& order = *reinterpret_cast<FILE_RENAME_INFO*>(record.data());
  order.ReplaceIfExists = isReplaced ? TRUE : FALSE;
  order.FileNameLength = static_cast<DWORD>(bytes);
  std::memcpy(order.FileName, name.data(), bytes);
  return ::SetFileInformationByHandle(file, FileRenameInfo, &order, static_cast<DWORD>(record.size())) != 0;
}

}  // namespace

TemporaryFile::TemporaryFile(const fs::path& target, Readers ofNewFile)
    : m_path(temporaryNameFor(target)),
      m_handle(reinterpret_cast<std::intptr_t>(makeNew(m_path, target, ofNewFile))) {}

TemporaryFile::~TemporaryFile() {
  if (!m_isGone) {
    FILE_DISPOSITION_INFO order{TRUE};
    ::SetFileInformationByHandle(asHandle(m_handle), FileDispositionInfo, &order, sizeof order);
  }
  ::CloseHandle(asHandle(m_handle));
}

void TemporaryFile::write(std::string_view content) {
  constexpr std::size_t kMostAtOnce = std::numeric_limits<DWORD>::max();
  while (!content.empty()) {
    const auto size = static_cast<DWORD>(std::min(content.size(), kMostAtOnce));
    DWORD count = 0;
    if (!::WriteFile(asHandle(m_handle), content.data(), size, &count, nullptr)) throw lastSystemFailure();
    content.remove_prefix(count);
  }
  if (!::FlushFileBuffers(asHandle(m_handle))) throw lastSystemFailure();
}

void TemporaryFile::replace(const fs::path& target) {
  if (!rename(asHandle(m_handle), target, true)) throw lastSystemFailure();
  m_isGone = true;
}

bool TemporaryFile::become(const fs::path& target) {
  m_isGone = rename(asHandle(m_handle), target, false);
  if (m_isGone) return true;
  const DWORD error = ::GetLastError();
  if (error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS) throw lastSystemFailure();
  return false;
}

void removeUnlessInUse(const fs::path& temporary) { ::DeleteFileW(temporary.c_str()); }

/// The system writes names through with the file that was opened to be written through.
void syncFolder(const fs::path&) {}
