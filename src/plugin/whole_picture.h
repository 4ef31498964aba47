#ifndef MIRN_PLUGIN_WHOLE_PICTURE_H
#define MIRN_PLUGIN_WHOLE_PICTURE_H

#include "dated_picture.h"
#include "ServiceObject.h"
#include "session_actions.h"

/// What `watched_plugin_1::picture` gives for a picture. Every list is the answer of its route over this very
/// picture. `actions` go to the listeners, which ask nothing of them here.
ovra::data_transfer::ServiceObject wholePicture(const DatedPicture& dated, SessionActions& actions);

#endif
