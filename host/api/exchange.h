#ifndef MIRN_HOST_API_EXCHANGE_H
#define MIRN_HOST_API_EXCHANGE_H

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <utility>

#include "answers/answer.h"
#include "answers/answer_parts.h"
#include "api/lane.h"

namespace host {

/// A request under way as whoever answers it sees it, who need not hold a thread meanwhile. Lives on one
/// strand: all but `post` is called there, and every step comes there, never from within the call that takes
/// it. Once the client has left, or is answered, nothing that is called does anything.
class Exchange {
 public:
  using Step = std::function<void()>;

  virtual ~Exchange() = default;

  /// `step` runs on the strand. Safe from any thread.
  virtual void post(Step step) = 0;

  /// `task` runs on a thread of `lane`, and raises nothing. False when too many wait there.
  virtual bool work(Lane lane, Step task) = 0;

  /// Keeps the client waiting until `time` is over, or the host stops; `onEnd` runs then, unless there was an
  /// answer before. What is in `onEnd` goes as soon as the client leaves.
  virtual void park(std::chrono::milliseconds time, Step onEnd) = 0;

  /// Who is still parked is to be answered now.
  virtual bool isStopping() const = 0;

  virtual void answer(std::shared_ptr<const Answer> answer) = 0;

  /// Answers in parts. `open` and the source that it opens are called on threads of `Lane::kParts`; no thread
  /// is held meanwhile. One part is under way at a time: the next is asked for when the client has taken the
  /// one before, and where there was none for the moment, at a wake and about each second. At the stop the
  /// source is asked once more, and the answer ends soon after that, finished or not. The source goes as soon
  /// as it has nothing more, or the client leaves.
  virtual void answerInParts(OpenParts open) = 0;

  void answer(Answer given) { answer(std::make_shared<const Answer>(std::move(given))); }
};

}  // namespace host

#endif
