#include "array.h"

#include "published_form.h"
#include "published_keys.h"

Array Array::Builder::build() const { return builtOrAssert("src\\common\\array", __LINE__); }

ovra::data_transfer::ServiceObject Array::toServiceObject() const {
  return PublishedForm()
      .text(keys::kId, m_id)
      .text(keys::kName, m_name)
      .texts(keys::kControllerIds, m_controllerIds)
      .text(keys::kState, toText(m_state))
      .size(keys::kTotalSize, m_totalSize)
      .size(keys::kFreeSize, m_freeSize)
      .text(keys::kWriteCachePolicy, toText(m_writeCachePolicy))
      .number(keys::kNumDisks, m_numDisks)
      .number(keys::kNumVolumes, m_numVolumes)
      .take();
}
