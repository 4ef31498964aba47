#ifndef MIRN_HOST_BUNDLE_MASK_H
#define MIRN_HOST_BUNDLE_MASK_H

#include <bitset>
#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace insight {
struct MachineView;
}  // namespace insight

namespace host {

/// Puts other texts in the place of those that name a piece of hardware: serial numbers, and the ids of
/// objects, which are made from what the library knows them by. With one key the same text has the same mask
/// for ever, whoever asks; who has not the key cannot find the text.
class Mask {
 public:
  explicit Mask(std::string key) : m_key(std::move(key)) {}

  /// Knows the objects of `machine` from now on.
  void learn(const insight::MachineView& machine);
  /// Knows the objects that an answer of insight, or a list of events, names; some may have gone.
  void learn(const std::string& json);
  /// The same of a list of the plug-in, by the members that tell it: it may be long, and stays text.
  void learnList(std::string_view json);

  /// JSON, or lines of metrics: what stands in quotes is masked.
  std::string masked(std::string_view bytes) const { return masked(bytes, false); }
  /// A path or a name: all of it is.
  std::string maskedName(std::string_view name) const { return masked(name, true); }

 private:
  class Teacher;

  void learnSerialNumber(const std::string& serialNumber);
  void learnDisk(const std::string& name);
  void learnId(const std::string& id);
  void learnText(const std::string& text, const std::string& instead);
  std::string maskOfId(const std::string& id) const;
  std::string maskOfSerialNumber(const std::string& serialNumber) const;
  std::string digest(const std::string& kind, const std::string& text) const;

  std::string masked(std::string_view bytes, bool isInQuotes) const;
  std::size_t replaced(std::string_view bytes, std::size_t at, std::string& made) const;

  const std::string m_key;
  std::unordered_map<std::string, std::string> m_ids;
  std::unordered_map<std::string, std::string> m_texts;
  std::set<std::size_t, std::greater<>> m_lengths;  // of the texts
  std::bitset<65536> m_beginnings;                  // the first two bytes of the texts
};

}  // namespace host

#endif
