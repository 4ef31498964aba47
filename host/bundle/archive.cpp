#include "bundle/archive.h"

#include "bundle/tar_form.h"

namespace host {

void Archive::add(const std::string& name, std::string_view bytes) {
  m_packer.add(tarHeader(name, bytes.size(), m_seconds));
  m_packer.add(bytes);
  m_packer.add(tarPadding(bytes.size()));
}

void Archive::finish() {
  m_packer.add(tarEnd());
  m_packer.finish();
}

}  // namespace host
