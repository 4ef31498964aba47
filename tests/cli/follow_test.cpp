#include "commands/follow.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using mirnctl::StreamReader;

std::vector<std::string> eventsIn(const std::string& text, std::size_t piece) {
  StreamReader reader;
  std::vector<std::string> events;
  const auto tell = [&events](const StreamReader::Event& event) {
    events.push_back(event.id + '|' + event.name + '|' + event.data);
  };
  for (std::size_t begin = 0; begin < text.size(); begin += piece)
    reader.take(text.substr(begin, piece), tell);
  return events;
}

TEST(StreamReader, TakesEventsWhateverThePiecesAre) {
  const std::string text =
      ": a comment\n\nid: e.1\nevent: alarm\ndata: {\"a\": 1}\n\nevent:revision\r\ndata:one\r\ndata: "
      "two\r\n\r\nretry: 5\n\n"
      "data: not whole";
  const std::vector<std::string> expected{"e.1|alarm|{\"a\": 1}", "e.1|revision|one\ntwo"};
  for (std::size_t piece = 1; piece <= text.size(); ++piece)
    EXPECT_EQ(expected, eventsIn(text, piece)) << piece;
}

}  // namespace
