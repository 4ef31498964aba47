#ifndef MIRN_SIMULATOR_SCENARIO_OBJECT_READER_H
#define MIRN_SIMULATOR_SCENARIO_OBJECT_READER_H

#include <boost/json.hpp>
#include <limits>
#include <list>
#include <optional>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "model/words.h"
#include "scenario/fields.h"
#include "scenario/loading.h"
#include "scenario/scenario.h"

namespace simulator {

/// Reads one JSON object into a struct by its list of fields, strictly: an unknown key, a missing one, a
/// wrong type and a number out of range are `ScenarioError`s that name the place.
template <class T>
class ObjectReader {
 public:
  ObjectReader(T& target, const boost::json::value& json, std::string path, Loading& loading)
      : m_target(target), m_path(std::move(path)), m_loading(loading) {
    if (!json.is_object()) fail(m_path, "not an object");
    m_json = &json.get_object();
  }

  void read() {
    fields(*this, Of<T>{});
    for (const auto& member : *m_json) {
      if (m_known.count(member.key()) == 0) fail(at(member.key()), "unknown key");
    }
  }

  void identity(Kind kind, std::size_t maxBytes) {
    text("id", &T::id, maxBytes, Need::REQUIRED);
    if (m_target.id.empty()) fail(at("id"), "is empty");
    handle();
    m_loading.addObject(m_target.id, kind, m_target.handle, m_path);
  }

  void handle() {
    number("handle", &T::handle);
    if (m_target.handle >= vexl2::kFirstSessionHandle) fail(at("handle"), "out of range");
    m_loading.addHandle(m_target.handle, m_path);
  }

  template <class Number>
  void number(std::string_view key, Number T::*member, Need need = Need::OPTIONAL) {
    const auto* const json = find(key, need);
    if (json == nullptr) return;
    if (!json->is_int64() && !json->is_uint64()) fail(at(key), "not a whole number");
    if (json->is_int64() && json->get_int64() < 0) fail(at(key), "out of range");
    const auto value = json->is_uint64() ? json->get_uint64() : static_cast<std::uint64_t>(json->get_int64());
    if (value > std::numeric_limits<Number>::max()) fail(at(key), "out of range");
    m_target.*member = static_cast<Number>(value);
  }

  void flag(std::string_view key, bool T::*member) {
    const auto* const json = find(key, Need::OPTIONAL);
    if (json == nullptr) return;
    if (!json->is_bool()) fail(at(key), "not true or false");
    m_target.*member = json->get_bool();
  }

  void text(std::string_view key, std::string T::*member, std::size_t maxBytes, Need need = Need::OPTIONAL) {
    const auto* const json = find(key, need);
    if (json == nullptr) return;
    m_target.*member = std::string(textOf(*json, at(key)));
    if ((m_target.*member).size() > maxBytes) {
      fail(at(key), "longer than " + std::to_string(maxBytes) + " bytes");
    }
  }

  template <class Code>
  void word(std::string_view key, Code T::*member, Need need = Need::OPTIONAL) {
    const auto* const json = find(key, need);
    if (json != nullptr) m_target.*member = codeOf<Code>(*json, at(key));
  }

  template <class Code>
  void words(std::string_view key, std::uint32_t T::*member) {
    const auto* const json = find(key, Need::OPTIONAL);
    if (json == nullptr) return;
    m_target.*member = 0;
    forEach(*json, at(key), [&](const boost::json::value& element, const std::string& path) {
      m_target.*member |= bitOf(codeOf<Code>(element, path));
    });
  }

  /// Four numbers from 0 to 255 in an array, lowest byte first.
  void address(std::string_view key, std::uint32_t T::*member) {
    const auto* const json = find(key, Need::OPTIONAL);
    if (json == nullptr) return;
    std::uint32_t shift = 0;
    m_target.*member = 0;
    forEach(*json, at(key), [&](const boost::json::value& element, const std::string& path) {
      if (!element.is_int64() || element.get_int64() < 0 || element.get_int64() > 255 || shift == 32) {
        fail(path, "an address has four numbers from 0 to 255");
      }
      m_target.*member |= static_cast<std::uint32_t>(element.get_int64()) << shift;
      shift += 8;
    });
    if (shift != 32) fail(at(key), "an address has four numbers from 0 to 255");
  }

  void reference(std::string_view key, Handle T::*member, unsigned kinds, Need need = Need::OPTIONAL) {
    const auto* const json = find(key, need);
    if (json != nullptr) {
      m_loading.addReference(std::string(textOf(*json, at(key))), kinds, m_target.*member, at(key));
    }
  }

  void references(std::string_view key, std::vector<Handle> T::*member, unsigned kinds,
                  Need need = Need::OPTIONAL) {
    const auto* const json = find(key, need);
    if (json == nullptr) return;
    auto& handles = m_target.*member;
    handles.assign(sizeOf(*json, at(key)), 0);
    auto handle = handles.begin();
    forEach(*json, at(key), [&](const boost::json::value& element, const std::string& path) {
      m_loading.addReference(std::string(textOf(element, path)), kinds, *handle++, path);
    });
  }

  template <class Part>
  void object(std::string_view key, Part T::*member) {
    const auto* const json = find(key, Need::OPTIONAL);
    if (json != nullptr) ObjectReader<Part>(m_target.*member, *json, at(key), m_loading).read();
  }

  template <class Part>
  void maybe(std::string_view key, std::optional<Part> T::*member) {
    const auto* const json = find(key, Need::OPTIONAL);
    if (json == nullptr) return;
    (m_target.*member).emplace();
    ObjectReader<Part>(*(m_target.*member), *json, at(key), m_loading).read();
  }

  template <class Part>
  void list(std::string_view key, std::vector<Part> T::*member) {
    const auto* const json = find(key, Need::OPTIONAL);
    if (json == nullptr) return;
    auto& parts = m_target.*member;
    parts.assign(sizeOf(*json, at(key)), Part{});
    auto part = parts.begin();
    forEach(*json, at(key), [&](const boost::json::value& element, const std::string& path) {
      ObjectReader<Part>(*part++, element, path, m_loading).read();
    });
  }

  /// The objects wait in the loading until all handles are known.
  template <class Part>
  void table(std::string_view key, Table<Part> T::*) {
    const auto* const json = find(key, Need::OPTIONAL);
    if (json == nullptr) return;
    auto& waiting = m_loading.waiting<Part>();
    forEach(*json, at(key), [&](const boost::json::value& element, const std::string& path) {
      waiting.emplace_back();
      ObjectReader<Part>(waiting.back(), element, path, m_loading).read();
    });
  }

 private:
  [[noreturn]] static void fail(const std::string& path, const std::string& text) {
    throw ScenarioError((path.empty() ? "the file" : path) + ": " + text);
  }

  std::string at(std::string_view key) const {
    return m_path.empty() ? std::string(key) : m_path + "." + std::string(key);
  }

  const boost::json::value* find(std::string_view key, Need need) {
    m_known.insert(key);
    const auto* const found = m_json->if_contains(key);
    if (found == nullptr && need == Need::REQUIRED) fail(at(key), "missing");
    return found;
  }

  static std::string_view textOf(const boost::json::value& json, const std::string& path) {
    if (!json.is_string()) fail(path, "not a text");
    const boost::json::string& text = json.get_string();
    if (text.find('\0') != boost::json::string::npos) fail(path, "holds a NUL");
    return {text.data(), text.size()};
  }

  template <class Code>
  static Code codeOf(const boost::json::value& json, const std::string& path) {
    const std::string_view word = textOf(json, path);
    const auto code = fromWord<Code>(word);
    if (!code) fail(path, "unknown word \"" + std::string(word) + "\"");
    return *code;
  }

  static std::size_t sizeOf(const boost::json::value& json, const std::string& path) {
    if (!json.is_array()) fail(path, "not an array");
    return json.get_array().size();
  }

  template <class Visit>
  static void forEach(const boost::json::value& json, const std::string& path, Visit visit) {
    const std::size_t size = sizeOf(json, path);
    for (std::size_t i = 0; i < size; ++i) visit(json.get_array()[i], path + "[" + std::to_string(i) + "]");
  }

  T& m_target;
  const boost::json::object* m_json = nullptr;
  std::string m_path;
  Loading& m_loading;
  std::set<std::string_view> m_known;
};

}  // namespace simulator

#endif
