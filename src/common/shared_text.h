#ifndef MIRN_COMMON_SHARED_TEXT_H
#define MIRN_COMMON_SHARED_TEXT_H

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>
#include <string>
#include <utility>

/// A text that never changes, so that its copies share it: a copy takes no memory and counts one up. It is
/// read as a `std::wstring`, whose reference stays valid as long as any of the copies. An empty text takes no
/// memory at all. Copies may belong to different threads.
class SharedText {
 public:
  SharedText() = default;
  // Both convert by themselves, so that whoever has a text need not know who shares it.
  SharedText(std::wstring text) : m_shared(text.empty() ? nullptr : new Shared(std::move(text))) {}
  SharedText(const wchar_t* text) : SharedText(std::wstring(text)) {}

  operator const std::wstring&() const { return text(); }
  const std::wstring& text() const { return m_shared ? m_shared->text : noText(); }
  bool empty() const { return !m_shared; }

  /// Whether another copy has the text, too. Whoever has the only one stays the only one until copying it.
  bool isShared() const { return m_shared && m_shared->use_count() > 1; }
  /// Whether both are one text in memory.
  bool isSharedWith(const SharedText& other) const { return m_shared == other.m_shared; }

  friend bool operator==(const SharedText& one, const SharedText& other) {
    return one.isSharedWith(other) || one.text() == other.text();
  }
  friend bool operator!=(const SharedText& one, const SharedText& other) { return !(one == other); }
  friend bool operator<(const SharedText& one, const SharedText& other) { return one.text() < other.text(); }

 private:
  struct Shared : boost::intrusive_ref_counter<Shared> {
    explicit Shared(std::wstring theText) : text(std::move(theText)) {}
    const std::wstring text;
  };

  static const std::wstring& noText() {
    static const std::wstring empty;
    return empty;
  }

  boost::intrusive_ptr<const Shared> m_shared;
};

#endif
