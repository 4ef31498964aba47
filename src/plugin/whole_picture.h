#ifndef MIRN_PLUGIN_WHOLE_PICTURE_H
#define MIRN_PLUGIN_WHOLE_PICTURE_H

#include "dated_picture.h"
#include "ServiceObject.h"

/// What `watched_plugin_1::picture` gives for a picture; every list is the answer of its route.
ovra::data_transfer::ServiceObject wholePicture(const DatedPicture& dated);

#endif
