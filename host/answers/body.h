#ifndef MIRN_HOST_ANSWERS_BODY_H
#define MIRN_HOST_ANSWERS_BODY_H

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

namespace host {

/// The bytes of an answer. Copies share them, so that one answer goes out to many without being copied; they
/// never change. Plain value.
class Body {
 public:
  Body() = default;
  Body(std::string bytes)
      : m_bytes(bytes.empty() ? nullptr : std::make_shared<const std::string>(std::move(bytes))) {}
  Body(const char* text) : Body(std::string(text)) {}

  const std::string& text() const {
    static const std::string kNone;
    return m_bytes ? *m_bytes : kNone;
  }
  std::size_t size() const { return m_bytes ? m_bytes->size() : 0; }
  bool empty() const { return !m_bytes; }

 private:
  std::shared_ptr<const std::string> m_bytes;  // null for none
};

}  // namespace host

#endif
