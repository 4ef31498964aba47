#include "version.h"

#include "published_form.h"
#include "published_keys.h"

Version Version::Builder::build() const { return builtOrAssert("src\\common\\version", __LINE__); }

ovra::data_transfer::ServiceObject Version::toServiceObject() const {
  return PublishedForm()
      .text(keys::kProductVersion, m_productVersion)
      .text(keys::kPluginVersion, m_pluginVersion)
      .text(keys::kVexInterfaceVersion, m_vexInterfaceVersion)
      .text(keys::kVexVersion, m_vexVersion)
      .flag(keys::kVolSetSizeSupport, m_volSetSizeSupport)
      .flag(keys::kPassThroughSupport, m_passThroughSupport)
      .take();
}
