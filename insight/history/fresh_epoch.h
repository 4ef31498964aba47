#ifndef MIRN_INSIGHT_HISTORY_FRESH_EPOCH_H
#define MIRN_INSIGHT_HISTORY_FRESH_EPOCH_H

#include <string>

namespace insight {

/// 16 hexadecimal digits that nobody else has.
std::string freshEpoch();

}  // namespace insight

#endif
