#ifndef MIRN_INSIGHT_STREAM_STREAM_ID_H
#define MIRN_INSIGHT_STREAM_STREAM_ID_H

#include <cstdint>
#include <optional>
#include <string>

namespace insight {

/// Where an entry stands in what a listener hears: "EPOCH.ROW".
struct StreamId {
  std::string epoch;
  std::int64_t row = 0;

  std::string text() const { return epoch + '.' + std::to_string(row); }
  friend bool operator==(const StreamId& a, const StreamId& b) {
    return a.row == b.row && a.epoch == b.epoch;
  }
};

/// Nothing for a text that is none of ours.
std::optional<StreamId> streamIdOf(const std::string& text);

}  // namespace insight

#endif
