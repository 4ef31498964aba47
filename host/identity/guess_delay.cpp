#include "identity/guess_delay.h"

#include <algorithm>
#include <boost/asio/ip/address.hpp>

namespace host {

namespace {

constexpr std::size_t kNetworkBytes = 8;

std::string keyOf(const std::string& address) {
  boost::system::error_code error;
  const auto parsed = boost::asio::ip::make_address(address, error);
  if (error || !parsed.is_v6() || parsed.to_v6().is_v4_mapped()) return address;
  const auto bytes = parsed.to_v6().to_bytes();
  return {bytes.begin(), bytes.begin() + kNetworkBytes};
}

}  // namespace

std::chrono::milliseconds GuessDelay::afterWrong(const std::string& address) {
  const std::string key = keyOf(address);
  const std::lock_guard<std::mutex> lock(m_mutex);
  const auto now = m_clock();
  forgetOld();
  const auto known = m_byKey.find(key);
  if (known == m_byKey.end()) {
    m_guessers.push_front({key, kFirst, now});
    m_byKey.emplace(key, m_guessers.begin());
    if (m_guessers.size() > kAddresses) {
      m_byKey.erase(m_guessers.back().key);
      m_guessers.pop_back();
    }
    return kFirst;
  }
  m_guessers.splice(m_guessers.begin(), m_guessers, known->second);
  Guesser& guesser = m_guessers.front();
  guesser.last = now;
  guesser.delay = std::min(2 * guesser.delay, kLongest);
  return guesser.delay;
}

std::size_t GuessDelay::size() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_guessers.size();
}

void GuessDelay::forgetOld() {
  while (!m_guessers.empty() && m_clock() - m_guessers.back().last >= kMemory) {
    m_byKey.erase(m_guessers.back().key);
    m_guessers.pop_back();
  }
}

}  // namespace host
