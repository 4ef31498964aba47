#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <utility>

#include "scenario/fields.h"
#include "simulator/refusal_rows.h"

// The manual tells what the library does: every key of a scenario, and every refusal.

namespace {

std::string manual() {
  std::ifstream file(MIRN_MANUAL);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

using OperationAndStatus = std::pair<std::string, unsigned long>;

std::set<OperationAndStatus> refusalsOfManual() {
  const std::string text = manual();
  const std::regex row("\n\\| `(Vex\\w+)` \\| (\\d+) \\|");
  std::set<OperationAndStatus> found;
  for (std::sregex_iterator match(text.begin(), text.end(), row); match != std::sregex_iterator(); ++match) {
    found.emplace((*match)[1].str(), std::stoul((*match)[2].str()));
  }
  return found;
}

TEST(Manual, TellsOfEveryRefusalThatIsTestedAndNoOther) {
  std::set<OperationAndStatus> tested;
  for (const RefusalRow& row : allRefusals()) tested.emplace(row.operation, row.status);
  tested.emplace("VexDiskUnlock", VEX_STATUS_WRONG_PASSWORD);  // not among the rows, since it is counted
  EXPECT_EQ(refusalsOfManual(), tested);
}

/// Collects the keys of a struct.
class Keys {
 public:
  template <class... Rest>
  void identity(Rest...) {
    m_keys.insert({"id", "handle"});
  }
  void handle() { m_keys.insert("handle"); }
  template <class... Rest>
  void number(const char* key, Rest...) {
    m_keys.insert(key);
  }
  template <class... Rest>
  void flag(const char* key, Rest...) {
    m_keys.insert(key);
  }
  template <class... Rest>
  void text(const char* key, Rest...) {
    m_keys.insert(key);
  }
  template <class... Rest>
  void word(const char* key, Rest...) {
    m_keys.insert(key);
  }
  template <class Code, class... Rest>
  void words(const char* key, Rest...) {
    m_keys.insert(key);
  }
  template <class... Rest>
  void address(const char* key, Rest...) {
    m_keys.insert(key);
  }
  template <class... Rest>
  void reference(const char* key, Rest...) {
    m_keys.insert(key);
  }
  template <class... Rest>
  void references(const char* key, Rest...) {
    m_keys.insert(key);
  }
  template <class... Rest>
  void object(const char* key, Rest...) {
    m_keys.insert(key);
  }
  template <class... Rest>
  void maybe(const char* key, Rest...) {
    m_keys.insert(key);
  }
  template <class... Rest>
  void list(const char* key, Rest...) {
    m_keys.insert(key);
  }
  template <class... Rest>
  void table(const char* key, Rest...) {
    m_keys.insert(key);
  }

  const std::set<std::string>& get() const { return m_keys; }

 private:
  std::set<std::string> m_keys;
};

template <class T>
std::set<std::string> keysOf() {
  Keys keys;
  simulator::fields(keys, simulator::Of<T>{});
  return keys.get();
}

/// The keys in the first column of the table below a heading.
std::set<std::string> keysOfManual(const std::string& heading) {
  const std::string text = manual();
  const std::size_t begin = text.find("\n" + heading + "\n");
  EXPECT_NE(begin, std::string::npos) << heading;
  const std::size_t end = text.find("\n#", begin + heading.size());
  const std::string section = text.substr(begin, end - begin);
  const std::regex row("\n\\| (`[^|]*`) \\|");
  const std::regex key("`(\\w+)`");
  std::set<std::string> found;
  for (std::sregex_iterator line(section.begin(), section.end(), row); line != std::sregex_iterator();
       ++line) {
    const std::string cell = (*line)[1].str();
    for (std::sregex_iterator each(cell.begin(), cell.end(), key); each != std::sregex_iterator(); ++each) {
      found.insert((*each)[1].str());
    }
  }
  return found;
}

TEST(Manual, TellsOfEveryKeyOfAScenarioAndNoOther) {
  EXPECT_EQ(keysOfManual("## The scenario file"), keysOf<simulator::Machine>());
  EXPECT_EQ(keysOfManual("### `system`"), keysOf<simulator::SystemInfo>());
  EXPECT_EQ(keysOfManual("### `rates`"), keysOf<simulator::Rates>());
  EXPECT_EQ(keysOfManual("### `engines[]`"), keysOf<simulator::RaidEngine>());
  EXPECT_EQ(keysOfManual("### `engines[].levels[]`"), keysOf<simulator::LevelCapability>());
  EXPECT_EQ(keysOfManual("### `controllers[]`"), keysOf<simulator::Controller>());
  EXPECT_EQ(keysOfManual("### `devices[]`"), keysOf<simulator::EndDevice>());
  EXPECT_EQ(keysOfManual("### `devices[].phys[]`"), keysOf<simulator::Phy>());
  EXPECT_EQ(keysOfManual("### `ports[]`"), keysOf<simulator::Port>());
  EXPECT_EQ(keysOfManual("### `arrays[]`"), keysOf<simulator::Array>());
  EXPECT_EQ(keysOfManual("### `volumes[]`"), keysOf<simulator::Volume>());
  EXPECT_EQ(keysOfManual("### `volumes[].work`"), keysOf<simulator::Work>());
}

}  // namespace
