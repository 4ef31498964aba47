#ifndef MIRN_INSIGHT_SERVICE_HISTORY_PAST_H
#define MIRN_INSIGHT_SERVICE_HISTORY_PAST_H

#include <string>
#include <vector>

#include "history/history.h"
#include "stream/stream.h"

namespace insight {

/// What a stream finds in a history, which tells the stream in turn: each needs the other.
class HistoryPast : public StreamPast {
 public:
  /// Before anybody asks. `history` outlives this.
  void use(History& history) { m_history = &history; }

  std::string epoch() override { return m_history->epoch(); }
  std::int64_t oldestRow() override { return m_history->oldestRow(); }
  std::int64_t newestRow() override { return m_history->newestRow(); }
  std::vector<Entry> entriesAfter(std::int64_t row, std::size_t limit) override {
    return m_history->entriesAfter(row, limit);
  }

 private:
  History* m_history = nullptr;
};

}  // namespace insight

#endif
