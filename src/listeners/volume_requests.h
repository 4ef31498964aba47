#ifndef MIRN_LISTENERS_VOLUME_REQUESTS_H
#define MIRN_LISTENERS_VOLUME_REQUESTS_H

#include "action_interfaces.h"
#include "requests.h"

/// The handlers of the three requests on volumes that hold real decisions.

/// Creates a volume in an array or from disks, by "source" of the body.
ServiceObject createVolumeRequest(IMirnSession* session, IMirnVolumesActions* actions,
                                  const RouteMatch& match, const RequestParameters& parameters,
                                  const ServiceObject& body);

/// Migrates a volume to another level, strip size or number of disks.
ServiceObject changeLevelRequest(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                                 const RequestParameters& parameters, const ServiceObject& body);

/// Sets a volume's write-hole policy.
ServiceObject changeRwhRequest(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                               const RequestParameters& parameters, const ServiceObject& body);

#endif
