#ifndef MIRN_HOST_ANSWERS_ANSWER_PARTS_H
#define MIRN_HOST_ANSWERS_ANSWER_PARTS_H

#include <functional>
#include <memory>
#include <string>

#include "answers/answer.h"

namespace host {

/// A piece of an answer that comes in pieces.
struct AnswerPart {
  enum class Next {
    kAtOnce,  ///< There is more already.
    kLater,   ///< That is all for now.
    kNone,    ///< That was all.
  };

  std::string bytes{};  ///< May be empty.
  Next next = Next::kLater;
};

/// Where the pieces come from. One thread at a time, not always the same.
class AnswerSource {
 public:
  virtual ~AnswerSource() = default;

  /// The next piece. May block for as long as a read of a file takes; a failure cuts the answer off.
  virtual AnswerPart take() = 0;
};

/// An answer of which the head is known.
struct OpenAnswer {
  Answer head;  ///< Without a body, which is what `source` gives.
  std::unique_ptr<AnswerSource> source;
};

/// Has a source asked soon that had nothing more for the moment. Safe from any thread, also under a lock that
/// the source takes; comes back at once, and may be called in vain or when the source has gone.
using WakeSource = std::function<void()>;

/// Opens an answer. Raises what the request is refused with.
using OpenParts = std::function<OpenAnswer(const WakeSource& wake)>;

}  // namespace host

#endif
