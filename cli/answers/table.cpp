#include "answers/table.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "answers/text_width.h"

namespace mirnctl {

namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kNarrowest = 4;
/// What is wider is a sentence, of which no part says the same.
constexpr std::size_t kWidestWord = 24;
constexpr std::size_t kIndent = 4;

constexpr std::pair<const char*, Colour> kWords[] = {
    {"NORMAL", Colour::kGood},       {"ok", Colour::kGood},
    {"completed", Colour::kGood},    {"DEGRADED", Colour::kBad},
    {"FAILED", Colour::kBad},        {"NON_REDUNDANT_VOLUME_FAILED_DISK", Colour::kBad},
    {"critical", Colour::kBad},      {"failed", Colour::kBad},
    {"ERROR", Colour::kBad},         {"MISSING", Colour::kBad},
    {"allowed", Colour::kGood},      {"refused", Colour::kBad},
    {"warning", Colour::kNotice},    {"WARNING", Colour::kNotice},
    {"unknown", Colour::kNotice},    {"UNKNOWN", Colour::kNotice},
    {"REBUILDING", Colour::kNotice}, {"INITIALIZING", Colour::kNotice},
    {"VERIFYING", Colour::kNotice},  {"VERIFYING_AND_FIXING", Colour::kNotice},
    {"LOCKED", Colour::kNotice},     {"GENERAL_MIGRATION", Colour::kNotice},
    {"OFFLINE", Colour::kNotice},    {"SMART_EVENT_TRIGGERED", Colour::kNotice},
};

const char* codeOf(Colour colour) {
  switch (colour) {
    case Colour::kGood:
      return "\033[32m";
    case Colour::kNotice:
      return "\033[33m";
    case Colour::kBad:
      return "\033[31m";
    case Colour::kNone:
      break;
  }
  return "";
}

std::vector<std::size_t> naturalWidths(const std::vector<std::string>& headings,
                                       const std::vector<std::vector<Cell>>& rows) {
  std::vector<std::size_t> widths;
  for (const std::string& heading : headings) widths.push_back(widthOf(heading));
  for (const auto& row : rows) {
    for (std::size_t column = 0; column < row.size(); ++column) {
      widths[column] = std::max(widths[column], widthOf(row[column].text));
    }
  }
  return widths;
}

/// Takes from the widest column, cell by cell, until all have room.
void fit(std::vector<std::size_t>& widths, std::size_t screen) {
  if (screen == 0 || widths.empty()) return;
  const std::size_t gaps = kGap * (widths.size() - 1);
  for (;;) {
    const std::size_t sum = std::accumulate(widths.begin(), widths.end(), gaps);
    const auto widest = std::max_element(widths.begin(), widths.end());
    if (sum <= screen || *widest <= kNarrowest) return;
    --*widest;
  }
}

std::string padded(const Cell& cell, std::size_t width, bool isLast, const Screen& screen) {
  const std::string text = shortened(cell.text, width);
  const std::string blanks(width - widthOf(text), ' ');
  const std::string shown = coloured(text, cell.colour, screen);
  if (cell.isNumber) return blanks + shown;
  return isLast ? shown : shown + blanks;
}

/// How sentences of the last column stand where the rows are too wide for the screen.
enum class Last { kBeside, kWrapped, kBelow };

Last placeOfLast(const std::vector<std::size_t>& widths, std::size_t screen) {
  if (screen == 0 || widths.size() < 2 || widths.back() <= kWidestWord) return Last::kBeside;
  const std::size_t others = std::accumulate(widths.begin(), widths.end() - 1, kGap * (widths.size() - 1));
  if (others + widths.back() <= screen) return Last::kBeside;
  return others + kWidestWord <= screen ? Last::kWrapped : Last::kBelow;
}

/// The text in lines that begin at `begin`, but for the first one of a text that stands beside others.
std::string hanging(const Cell& cell, std::size_t begin, bool isBeside, const Screen& screen) {
  std::string text;
  for (const std::string& line : wrapped(cell.text, screen.width > begin ? screen.width - begin : 1)) {
    if (!isBeside || !text.empty()) text += std::string(begin, ' ');
    text += coloured(line, cell.colour, screen) + '\n';
  }
  return text;
}

}  // namespace

std::string coloured(const std::string& text, Colour colour, const Screen& screen) {
  if (!screen.hasColours || colour == Colour::kNone) return text;
  return codeOf(colour) + text + "\033[0m";
}

Colour colourOf(const std::string& word) {
  const auto* const found = std::find_if(std::begin(kWords), std::end(kWords),
                                         [&word](const auto& row) { return row.first == word; });
  return found == std::end(kWords) ? Colour::kNone : found->second;
}

std::string table(const std::vector<std::string>& headings, const std::vector<std::vector<Cell>>& rows,
                  const Screen& screen) {
  std::vector<std::size_t> widths = naturalWidths(headings, rows);
  const Last last = placeOfLast(widths, screen.width);
  const std::size_t cut = widths.size() - (last == Last::kBeside ? 0 : 1);
  widths.resize(cut);
  fit(widths, screen.width);
  const std::size_t begin = std::accumulate(widths.begin(), widths.end(), kGap * cut);
  std::string text;
  const auto addRow = [&](const std::vector<Cell>& row) {
    for (std::size_t column = 0; column < cut; ++column) {
      const bool isLast = column + 1 == cut && last != Last::kWrapped;
      text += padded(row[column], widths[column], isLast, screen);
      text += isLast ? "\n" : std::string(kGap, ' ');
    }
    if (last == Last::kWrapped) text += hanging(row.back(), begin, true, screen);
  };
  std::vector<Cell> head;
  for (std::size_t column = 0; column < headings.size(); ++column) {
    head.push_back({headings[column], Colour::kNone, !rows.empty() && rows.front()[column].isNumber});
  }
  addRow(head);
  for (const auto& row : rows) {
    addRow(row);
    if (last == Last::kBelow && row.back().text != "-") text += hanging(row.back(), kIndent, false, screen);
  }
  return text;
}

}  // namespace mirnctl
