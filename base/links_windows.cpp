#include "links.h"

#include <windows.h>
// After the header that it needs.
#include <winioctl.h>

#include <array>
#include <memory>

#include "handle_windows.h"
#include "system_reason.h"

namespace fs = std::filesystem;

namespace {

constexpr int kMostLinks = 63;  // as many as the system itself follows

/// What FSCTL_GET_REPARSE_POINT answers of a symbolic link. Offsets and sizes are in bytes.
struct LinkRecord {
  DWORD tag;
  WORD size;
  WORD reserved;
  WORD targetOffset;
  WORD targetSize;
  WORD shownOffset;
  WORD shownSize;
  DWORD flags;
  std::array<wchar_t, MAXIMUM_REPARSE_DATA_BUFFER_SIZE / sizeof(wchar_t)> names;
};

bool isLinkOrMount(const fs::path& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

/// Where the link leads, as it is written in it; empty for a reparse point of another kind, which is no link.
fs::path leadOf(const fs::path& link) {
  const HANDLE opened =
      ::CreateFileW(link.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (opened == INVALID_HANDLE_VALUE) throw lastSystemFailure();
  const Handle owned(opened);
  const auto record = std::make_unique<LinkRecord>();
  DWORD size = 0;
  if (!::DeviceIoControl(opened, FSCTL_GET_REPARSE_POINT, nullptr, 0, record.get(), sizeof *record, &size,
                         nullptr)) {
    throw lastSystemFailure();
  }
  if (record->tag != IO_REPARSE_TAG_SYMLINK) return {};
  std::wstring target(record->names.data() + record->targetOffset / sizeof(wchar_t),
                      record->targetSize / sizeof(wchar_t));
  constexpr wchar_t kSystemsOwn[] = L"\\??\\";  // ahead of an absolute path in the system's own form
  if (target.compare(0, 4, kSystemsOwn) == 0) target[1] = L'\\';
  return target;
}

}  // namespace

fs::path behindLinks(const fs::path& path) {
  fs::path file = path;
  for (int links = 0; isLinkOrMount(file); ++links) {
    ::SetLastError(ERROR_CANT_RESOLVE_FILENAME);
    if (links == kMostLinks) throw lastSystemFailure();
    const fs::path next = leadOf(file);
    if (next.empty()) return file;
    file = file.parent_path() / next;
  }
  return file;
}
