#include "notifications/webhook.h"

#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>
#include <exception>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "identity/base64url.h"
#include "notifications/signature.h"

namespace host {

namespace {

namespace http = boost::beast::http;

constexpr unsigned kHttp11 = 11;
constexpr unsigned kSuccess = 2;
constexpr unsigned kRedirect = 3;
constexpr unsigned kHundred = 100;

std::string nameOf(const WebhookTarget& target, std::size_t number) {
  return "webhook " + std::to_string(number) + " (" + target.url.origin() + ')';
}

/// Base64 as RFC 4648 has it in its section 4.
std::string base64(const std::string& text) {
  std::string digits = base64url(reinterpret_cast<const unsigned char*>(text.data()), text.size());
  for (char& digit : digits) {
    if (digit == '-') digit = '+';
    if (digit == '_') digit = '/';
  }
  while (digits.size() % 4 != 0) digits += '=';
  return digits;
}

/// Empty for one that says it was taken.
std::string refusalOf(unsigned status) {
  if (status / kHundred == kSuccess) return {};
  const std::string answer = "it answers with the status " + std::to_string(status);
  return status / kHundred == kRedirect ? answer + ", and redirects are not followed" : answer;
}

/// For as long as it lives, `stop` ends the exchange.
class UnderWay {
 public:
  UnderWay(std::mutex& mutex, HttpPost*& place, HttpPost& post) : m_mutex(mutex), m_place(place) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_place = &post;
  }
  UnderWay(const UnderWay&) = delete;
  UnderWay& operator=(const UnderWay&) = delete;
  ~UnderWay() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_place = nullptr;
  }

 private:
  std::mutex& m_mutex;
  HttpPost*& m_place;
};

}  // namespace

Webhook::Webhook(WebhookTarget target, std::size_t number, Settings settings)
    : m_target(std::move(target)), m_settings(std::move(settings)), m_name(nameOf(m_target, number)) {
  try {
    m_secret = secretIn(std::filesystem::u8path(m_target.secretFile));
    if (m_target.url.isEncrypted) m_encryption = makePostEncryption(m_target.authorities);
  } catch (const std::runtime_error& failure) {
    throw std::runtime_error(m_name + ": " + failure.what());
  }
}

std::string Webhook::tell(const Delivery& delivery) try {
  return refusalOf(exchange(requestOf(delivery)));
} catch (const std::exception& failure) {
  return failure.what();
}

unsigned Webhook::exchange(const std::string& request) {
  HttpPost post(m_target.url, m_encryption.get(), m_settings.patience);
  const UnderWay underWay(m_mutex, m_underWay, post);
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_isStopped) throw HttpPost::Failure("the host stops");
  }
  return post.exchange(request);
}

std::string Webhook::requestOf(const Delivery& delivery) const {
  const WebhookUrl& url = m_target.url;
  http::request<http::string_body> request(http::verb::post, url.target, kHttp11);
  request.set(http::field::host, url.hostField());
  request.set(http::field::user_agent, m_settings.userAgent);
  request.set(http::field::connection, "close");
  request.set(http::field::content_type, "application/json");
  if (!url.credentials.empty()) request.set(http::field::authorization, "Basic " + base64(url.credentials));
  request.set("Mirn-Delivery", delivery.id);
  request.set("Mirn-Signature", signatureOf(m_secret, m_settings.clock() / kTicksPerSecond, delivery.body));
  request.body() = delivery.body;
  request.prepare_payload();
  std::ostringstream text;
  text << request;
  return text.str();
}

void Webhook::stop() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_isStopped = true;
  if (m_underWay != nullptr) m_underWay->stop();
}

}  // namespace host
