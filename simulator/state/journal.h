#ifndef MIRN_SIMULATOR_STATE_JOURNAL_H
#define MIRN_SIMULATOR_STATE_JOURNAL_H

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "state/append_file.h"

namespace simulator {

/// The text by which a journal tells which state file its changes belong to.
std::string digestOf(std::string_view state);

/// What a journal's file holds: one line a change, and lines that name the digest of a state file. The
/// changes behind such a line were made to that file. There is more than one such line when a new state file
/// was announced and may not have taken its place.
class JournalText {
 public:
  /// A last line that a write did not finish is left out: it was never answered.
  explicit JournalText(std::string text);

  bool isTorn() const { return m_wholeSize < m_text.size(); }

  /// The size up to the end of the last whole line.
  std::uint64_t wholeSize() const { return m_wholeSize; }

  bool holdsChanges() const;

  /// The numbers of the lines that hold the changes made to the state file with this digest; nothing when the
  /// journal belongs to another one.
  std::optional<std::vector<std::size_t>> changesOf(const std::string& digest) const;

  /// Lines are counted from 1.
  std::string_view line(std::size_t number) const;

 private:
  struct Line {
    std::size_t begin;
    std::size_t size;
  };

  std::string m_text;
  std::uint64_t m_wholeSize = 0;
  std::vector<Line> m_lines;
};

/// The file that a journal is written to. A failure leaves it as it was, as far as its readers see.
class Journal {
 public:
  /// `wholeSize` of the file is in good order. The file is opened by the first write.
  explicit Journal(std::filesystem::path path, std::uint64_t wholeSize = 0);

  std::uint64_t size() const { return m_size; }

  /// Both throw std::runtime_error with the system's reason; then nothing is told or announced.
  ///
  /// A change, its line end included, to the state file with the digest, which stands in the first line.
  void add(const std::string& change, const std::string& digest);
  /// The state file with this digest holds all that was told so far, once it stands in its place.
  void announce(const std::string& digest);

  /// Nothing stands in it any more, unless that fails: then it stays as it is, which is as good.
  void clear();

  /// Takes an empty journal's file away.
  void remove();

 private:
  void append(const std::string& text);

  std::filesystem::path m_path;
  std::unique_ptr<AppendFile> m_file;
  std::uint64_t m_size;
  bool m_mayBeTorn = true;  ///< something may stand behind m_size
};

}  // namespace simulator

#endif
