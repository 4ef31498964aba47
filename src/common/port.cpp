#include "port.h"

#include "published_form.h"
#include "published_keys.h"

Port Port::Builder::build() const { return builtOrAssert("src\\common\\port", __LINE__); }

ovra::data_transfer::ServiceObject Port::toServiceObject() const {
  return PublishedForm()
      .text(keys::kId, m_id)
      .text(keys::kAddress, m_address)
      .number(keys::kNumPhys, m_numPhys)
      .text(keys::kLocalDeviceType, toText(m_localDeviceType))
      .text(keys::kLocalDeviceId, m_localDeviceId)
      .text(keys::kConnectedPortId, m_connectedPortId)
      .take();
}
