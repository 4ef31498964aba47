#ifndef MIRN_HOST_NOTIFICATIONS_DELIVERY_QUEUE_H
#define MIRN_HOST_NOTIFICATIONS_DELIVERY_QUEUE_H

#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// One thing that one target is to be told. Plain value.
struct Delivery {
  std::string id;     ///< The same at each try; nobody else's.
  std::string alarm;  ///< The alarm's id.
  std::string event;  ///< "raised" …
  std::string body;   ///< JSON.
};

/// What waits to be told, to each of some targets, and when it is tried. One thread at a time; moments are
/// of a clock that only goes on.
///
/// Of one alarm a target is told in order, one thing after another. What fails is tried again after a pause
/// that doubles; so does the pause between any two tries of a target that fails, until one goes well.
class DeliveryQueue {
 public:
  using Moment = std::chrono::steady_clock::time_point;
  using Duration = std::chrono::steady_clock::duration;

  struct Settings {
    std::size_t most = 1000;  ///< Of all targets.
    Duration firstPause = std::chrono::seconds(1);
    Duration longestPause = std::chrono::minutes(10);
    Duration longestLife = std::chrono::hours(24);
  };

  /// What had to make place.
  struct Loss {
    std::size_t target;
    Delivery delivery;
  };

  DeliveryQueue(std::size_t targets, Settings settings);

  /// Where the queue is full, the oldest makes place of those for the target for which most is waiting.
  std::optional<Loss> add(std::size_t target, Delivery delivery, Moment now);

  /// Takes out what has waited for too long.
  std::vector<Delivery> takeExpired(std::size_t target, Moment now);

  /// The one to be tried now, which counts as under way; nothing when there is none.
  std::optional<Delivery> begin(std::size_t target, Moment now);
  /// It is taken, or not tried again.
  void finish(std::size_t target);
  /// It is tried again later.
  void fail(std::size_t target, Moment now);
  /// The try was broken off from this side, and counts as none.
  void breakOff(std::size_t target);

  /// When there will be something to try or to take out; nothing when nothing waits.
  std::optional<Moment> nextTurn(std::size_t target) const;

  /// All that waits for a target.
  std::vector<Delivery> takeAll(std::size_t target);

  std::size_t size() const;

 private:
  struct Waiting {
    Delivery delivery;
    Moment since;
    Moment due;
    Duration pause;  ///< After the next failure.
    bool isUnderWay = false;
  };

  struct Target {
    std::deque<Waiting> waiting;  ///< As they came.
    Moment due{};                 ///< Not tried before.
    Duration pause;
  };

  std::optional<Loss> makePlace(std::size_t target);
  std::deque<Waiting>::iterator underWay(Target& target) const;
  Duration doubled(Duration pause) const;

  const Settings m_settings;
  std::vector<Target> m_targets;
};

}  // namespace host

#endif
