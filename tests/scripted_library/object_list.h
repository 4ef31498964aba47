#ifndef MIRN_TESTS_SCRIPTED_LIBRARY_OBJECT_LIST_H
#define MIRN_TESTS_SCRIPTED_LIBRARY_OBJECT_LIST_H

#include <cstddef>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "VEXL2.h"

/// The records of one kind of object, in the order in which the library enumerates them. A record is found by
/// its handle without a walk, so that machines of thousands of devices stay quick. `HandleField` is the
/// record's own handle.
template <class Record, VEX_HANDLE Record::*HandleField>
class ObjectList {
 public:
  /// Appends a record. A handle that the list holds already raises `std::invalid_argument`.
  Record& add(Record record) {
    const VEX_HANDLE handle = record.*HandleField;
    if (!m_places.emplace(handle, m_records.size()).second) {
      throw std::invalid_argument("handle " + std::to_string(handle) + " is taken");
    }
    m_records.push_back(std::move(record));
    return m_records.back();
  }

  /// The record of a handle, to be read or changed in all but its handle; `std::out_of_range` when
  /// there is none.
  Record& at(VEX_HANDLE handle) { return m_records[m_places.at(handle)]; }
  const Record& at(VEX_HANDLE handle) const { return m_records[m_places.at(handle)]; }

  bool has(VEX_HANDLE handle) const { return m_places.count(handle) != 0; }

  /// Takes a record out; the order of the others stays.
  void remove(VEX_HANDLE handle) {
    m_records.erase(m_records.begin() + static_cast<std::ptrdiff_t>(m_places.at(handle)));
    m_places.clear();
    for (std::size_t place = 0; place < m_records.size(); ++place) {
      m_places.emplace(m_records[place].*HandleField, place);
    }
  }

  void clear() { *this = ObjectList(); }

  const std::vector<Record>& records() const { return m_records; }

 private:
  std::vector<Record> m_records;
  std::unordered_map<VEX_HANDLE, std::size_t> m_places;
};

#endif
