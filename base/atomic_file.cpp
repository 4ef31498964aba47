#include "atomic_file.h"

#include <system_error>

#include "links.h"
#include "temporary_file.h"
#include "temporary_name.h"

namespace fs = std::filesystem;

namespace {

fs::path folderOf(const fs::path& file) { return file.has_parent_path() ? file.parent_path() : "."; }

/// What killed writers of `target` left. A folder that cannot be read keeps them: the write itself may go
/// well.
void removeLeftovers(const fs::path& target) {
  std::error_code error;
  for (fs::directory_iterator entry(folderOf(target), error), end; !error && entry != end;
       entry.increment(error)) {
    if (isTemporaryName(entry->path().filename(), target.filename())) removeUnlessInUse(entry->path());
  }
}

}  // namespace

void replaceFile(const fs::path& path, std::string_view content, Readers ofNewFile) {
  const fs::path target = behindLinks(path);
  removeLeftovers(target);
  TemporaryFile file(target, ofNewFile);
  file.write(content);
  file.replace(target);
  syncFolder(folderOf(target));
}

bool makePrivateFile(const fs::path& path, std::string_view content) {
  const fs::path target = behindLinks(path);
  removeLeftovers(target);
  std::error_code ignored;
  if (fs::exists(fs::symlink_status(target, ignored))) return false;
  TemporaryFile file(target, Readers::kOwner);
  file.write(content);
  if (!file.become(target)) return false;
  syncFolder(folderOf(target));
  return true;
}
