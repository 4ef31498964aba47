#include <boost/asio/io_context.hpp>
#include <boost/asio/local/stream_protocol.hpp>
#include <vector>

#include "profiles.h"

namespace {

namespace fs = std::filesystem;

class ProfilesOnPosix : public Profiles {};

TEST_F(ProfilesOnPosix, TheSocketOfAHostOfThisUserIsTakenAheadOfTheMachines) {
  boost::asio::io_context io;
  std::vector<boost::asio::local::stream_protocol::acceptor> listening;
  const auto listen = [&](const fs::path& file) {
    fs::create_directories(file.parent_path());
    listening.emplace_back(io, boost::asio::local::stream_protocol::endpoint(file.string()));
    return "unix:" + file.string();
  };
  m_surroundings.systemSocket = folder() / "system" / "host.sock";
  m_surroundings.state = folder() / "state";
  m_surroundings.userSocket = folder() / "user" / "host.sock";
  EXPECT_EQ("http://127.0.0.1:8080", urlWith({}));
  for (const fs::path& next :
       {m_surroundings.systemSocket, m_surroundings.state / "host.sock", m_surroundings.userSocket}) {
    const std::string expected = listen(next);
    EXPECT_EQ(expected, urlWith({}));
  }
}

}  // namespace
