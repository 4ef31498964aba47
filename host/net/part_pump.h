#ifndef MIRN_HOST_NET_PART_PUMP_H
#define MIRN_HOST_NET_PART_PUMP_H

#include <boost/asio/any_io_executor.hpp>
#include <exception>
#include <functional>
#include <memory>
#include <string>

#include "api/exchange.h"
#include "net/lanes.h"

namespace host {

/// Brings the parts of one answer from their source, one at a time, on threads of `Lane::kParts`; between two
/// of them none is held.
class PartPump : public std::enable_shared_from_this<PartPump> {
 public:
  /// A part on its way to the client.
  struct Fetched {
    /// Goes ahead of the first part; where the request is refused, all there is. Null from then on.
    std::shared_ptr<const Answer> head{};
    std::string bytes{};  ///< As they go over the connection.
    AnswerPart::Next next = AnswerPart::Next::kLater;
    bool isBroken = false;  ///< The source gives no more: what has been sent is not all.
  };

  /// Takes a part over, on a thread of the lane; `written` is to be called when the client has taken it.
  using Deliver = std::function<void(Fetched fetched)>;

  /// `lanes` outlives the pump. The loop of `executor` goes on while the source is asked. `isChunked`: bytes
  /// are delivered as chunks of a body.
  PartPump(Lanes& lanes, const boost::asio::any_io_executor& executor, bool isChunked, OpenParts open,
           Deliver deliver);
  PartPump(const PartPump&) = delete;
  PartPump& operator=(const PartPump&) = delete;
  ~PartPump();

  /// Opens the answer, and asks for its first part. Comes first.
  void start();

  /// The source may have something by now. Safe from any thread, and comes back at once.
  void ask();

  /// What was delivered is with the client; it told of `next`.
  void written(AnswerPart::Next next);

 private:
  class Bell;

  void fetch();
  Fetched fetched();
  void take(Fetched& made);
  std::shared_ptr<const Answer> open();
  Fetched failed(bool isBegun, const std::exception& failure);

  const bool m_isChunked;
  const Deliver m_deliver;
  const std::shared_ptr<Bell> m_bell;

  // Of the thread that fetches.
  OpenParts m_open;  // empty once it is open
  std::unique_ptr<AnswerSource> m_source;
};

}  // namespace host

#endif
