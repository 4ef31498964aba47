#ifndef MIRN_CATALOGUE_VOLUME_CREATION_ROWS_H
#define MIRN_CATALOGUE_VOLUME_CREATION_ROWS_H

#include "route_row.h"

/// The row of the one request that has two forms: in an array, and from disks.
RouteRow volumeCreationRow(const wchar_t* branch);

#endif
