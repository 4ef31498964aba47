#ifndef MIRN_SIMULATOR_SCENARIO_OBJECT_WRITER_H
#define MIRN_SIMULATOR_SCENARIO_OBJECT_WRITER_H

#include <boost/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "model/words.h"
#include "scenario/fields.h"

namespace simulator {

/// The ids of a machine's objects by their handles.
class IdsOf {
 public:
  explicit IdsOf(const Machine& machine) : m_machine(machine) {}

  const std::string& at(Handle handle) const {
    if (const EndDevice* const device = m_machine.devices.find(handle)) return device->id;
    if (const Array* const array = m_machine.arrays.find(handle)) return array->id;
    if (const Port* const port = m_machine.ports.find(handle)) return port->id;
    if (const Controller* const controller = m_machine.controllers.find(handle)) return controller->id;
    if (const Volume* const volume = m_machine.volumes.find(handle)) return volume->id;
    return m_machine.engines.at(handle).id;
  }

 private:
  const Machine& m_machine;
};

/// Writes a struct by its list of fields. What has its default value is left out.
template <class T>
class ObjectWriter {
 public:
  ObjectWriter(const T& source, const IdsOf& ids) : m_source(source), m_ids(ids) {}

  boost::json::object write() {
    fields(*this, Of<T>{});
    return std::move(m_json);
  }

  void identity(Kind, std::size_t) {
    m_json["id"] = m_source.id;
    handle();
  }

  void handle() { m_json["handle"] = m_source.handle; }

  template <class Number>
  void number(std::string_view key, Number T::*member, Need need = Need::OPTIONAL) {
    if (isWorthIt(member, need)) m_json[key] = m_source.*member;
  }

  void flag(std::string_view key, bool T::*member) {
    if (isWorthIt(member, Need::OPTIONAL)) m_json[key] = m_source.*member;
  }

  void text(std::string_view key, std::string T::*member, std::size_t, Need need = Need::OPTIONAL) {
    if (isWorthIt(member, need)) m_json[key] = m_source.*member;
  }

  template <class Code>
  void word(std::string_view key, Code T::*member, Need need = Need::OPTIONAL) {
    if (isWorthIt(member, need)) m_json[key] = toWord(m_source.*member);
  }

  template <class Code>
  void words(std::string_view key, std::uint32_t T::*member) {
    if (!isWorthIt(member, Need::OPTIONAL)) return;
    auto& set = m_json[key].emplace_array();
    for (const auto& row : wordsOf<Code>()) {
      if ((m_source.*member & bitOf(row.code)) != 0) set.emplace_back(row.word);
    }
  }

  void address(std::string_view key, std::uint32_t T::*member) {
    if (!isWorthIt(member, Need::OPTIONAL)) return;
    auto& bytes = m_json[key].emplace_array();
    for (int shift = 0; shift < 32; shift += 8) bytes.emplace_back((m_source.*member >> shift) & 0xFFU);
  }

  void reference(std::string_view key, Handle T::*member, unsigned, Need = Need::OPTIONAL) {
    if (m_source.*member != 0) m_json[key] = m_ids.at(m_source.*member);
  }

  void references(std::string_view key, std::vector<Handle> T::*member, unsigned,
                  Need need = Need::OPTIONAL) {
    if ((m_source.*member).empty() && need == Need::OPTIONAL) return;
    auto& list = m_json[key].emplace_array();
    for (const Handle handle : m_source.*member) list.emplace_back(m_ids.at(handle));
  }

  template <class Part>
  void object(std::string_view key, Part T::*member) {
    m_json[key] = ObjectWriter<Part>(m_source.*member, m_ids).write();
  }

  template <class Part>
  void maybe(std::string_view key, std::optional<Part> T::*member) {
    if (m_source.*member) m_json[key] = ObjectWriter<Part>(*(m_source.*member), m_ids).write();
  }

  template <class Part>
  void list(std::string_view key, std::vector<Part> T::*member) {
    auto& parts = m_json[key].emplace_array();
    for (const Part& part : m_source.*member) parts.emplace_back(ObjectWriter<Part>(part, m_ids).write());
  }

  template <class Part>
  void table(std::string_view key, Table<Part> T::*member) {
    auto& parts = m_json[key].emplace_array();
    for (const auto& entry : m_source.*member) {
      parts.emplace_back(ObjectWriter<Part>(entry.second, m_ids).write());
    }
  }

 private:
  template <class Value>
  bool isWorthIt(Value T::*member, Need need) const {
    static const T kDefaults{};
    return need == Need::REQUIRED || m_source.*member != kDefaults.*member;
  }

  const T& m_source;
  const IdsOf& m_ids;
  boost::json::object m_json;
};

}  // namespace simulator

#endif
