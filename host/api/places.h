#ifndef MIRN_HOST_API_PLACES_H
#define MIRN_HOST_API_PLACES_H

#include <atomic>
#include <cstddef>
#include <memory>
#include <utility>

namespace host {

/// Places for what lasts, so that there are only so many at once. Safe from any thread.
class Places : public std::enable_shared_from_this<Places> {
 public:
  explicit Places(std::size_t most) : m_most(most) {}

  /// One of them, given back at its end. Null when none is left.
  class Place {
   public:
    explicit Place(std::shared_ptr<Places> places) : m_places(std::move(places)) {}
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place() { --m_places->m_taken; }

   private:
    const std::shared_ptr<Places> m_places;
  };
  std::unique_ptr<Place> take() {
    if (m_taken.fetch_add(1) < m_most) return std::make_unique<Place>(shared_from_this());
    --m_taken;
    return {};
  }

 private:
  const std::size_t m_most;
  std::atomic<std::size_t> m_taken{0};
};

}  // namespace host

#endif
