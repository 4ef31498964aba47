#ifndef MIRN_HOST_BUNDLE_ARCHIVE_H
#define MIRN_HOST_BUNDLE_ARCHIVE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "answers/gzip_stream.h"

namespace host {

/// A .tar.gz that comes into being file by file; only packed bytes are held.
class Archive {
 public:
  /// All files are of the same moment.
  explicit Archive(std::int64_t seconds) : m_seconds(seconds) {}

  /// As `tarHeader` takes names.
  void add(const std::string& name, std::string_view bytes);
  /// Nothing comes behind it.
  void finish();

  std::size_t packedSize() const { return m_packer.packedSize(); }
  std::string take() { return m_packer.take(); }

 private:
  const std::int64_t m_seconds;
  GzipStream m_packer;
};

}  // namespace host

#endif
