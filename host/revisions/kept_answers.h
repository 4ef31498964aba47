#ifndef MIRN_HOST_REVISIONS_KEPT_ANSWERS_H
#define MIRN_HOST_REVISIONS_KEPT_ANSWERS_H

#include <cstddef>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "answers/answer.h"
#include "plugin_extensions.h"

namespace host {

/// An answer, and the plug-in's position before it was asked for.
struct MadeAnswer {
  std::shared_ptr<const Answer> answer;
  ovra::PluginPosition position{};
  std::shared_ptr<const Answer> unchanged{};  ///< For who knows it already; of what is kept alone.
  bool isTurnedAway = false;                  ///< It was not made, since too much was to be made at once.
};

/// Answers by what was asked, each good for one revision; the one that was not asked for the longest goes
/// first. While one is made, all who ask for it wait for that one. Safe from any thread.
class KeptAnswers {
 public:
  using OnMade = std::function<void(const MadeAnswer&)>;

  explicit KeptAnswers(std::size_t mostBytes) : m_most(mostBytes) {}

  /// What there is for who asks.
  struct Found {
    std::shared_ptr<const MadeAnswer> kept;  ///< Null when there is none.
    bool isMaker = false;                    ///< Without one: who asks has to make it, and call `made`.
  };

  /// The answer to `question` at the revision `now`. Without one, `onMade` is called when it was made.
  Found find(const std::string& question, const ovra::PluginPosition& now, OnMade onMade);

  /// Ends the wait of all who asked this at the revision `now`.
  void made(const std::string& question, const ovra::PluginPosition& now, const MadeAnswer& answer);

  /// The answer alone, made by nobody.
  std::shared_ptr<const MadeAnswer> look(const std::string& question, const ovra::PluginPosition& now);

  /// Keeps it in place of one of another revision.
  void keep(const std::string& question, const MadeAnswer& answer);

  /// What all of it takes, with what belongs to it.
  std::size_t bytes() const;

 private:
  struct Entry {
    std::string question;
    std::shared_ptr<const MadeAnswer> answer;
    std::size_t bytes = 0;
  };
  using Entries = std::list<Entry>;

  std::shared_ptr<const MadeAnswer> lookLocked(const std::string& question, const ovra::PluginPosition& now);
  void remove(Entries::iterator entry);

  const std::size_t m_most;
  mutable std::mutex m_mutex;
  Entries m_entries;  // the last one asked for first
  std::unordered_map<std::string, Entries::iterator> m_places;
  std::size_t m_bytes = 0;
  std::map<std::string, std::vector<OnMade>> m_awaited;  // by question and position
};

}  // namespace host

#endif
