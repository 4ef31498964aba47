#ifndef MIRN_HOST_BUNDLE_BUNDLE_ENDPOINT_H
#define MIRN_HOST_BUNDLE_BUNDLE_ENDPOINT_H

#include <memory>

#include "api/endpoint_table.h"
#include "bundle/bundle_subject.h"

namespace host {

/// "bundle": what the host can be asked of `subject`, in one file. The operations of `subject` are to learn
/// the table when it is complete.
void addBundleEndpoint(EndpointTable& table, std::shared_ptr<const BundleSubject> subject);

}  // namespace host

#endif
