#include "net/local_socket.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <boost/asio/io_context.hpp>
#include <optional>
#include <vector>

namespace host {

namespace {

std::vector<std::uint32_t> ownGroups() {
  std::vector<gid_t> groups(static_cast<std::size_t>(::getgroups(0, nullptr)));
  groups.resize(static_cast<std::size_t>(::getgroups(static_cast<int>(groups.size()), groups.data())));
  return {groups.begin(), groups.end()};
}

/// The user at the other end of a pair of sockets, whose both ends are this process.
std::optional<Client::LocalUser> userOfAPair() {
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0) return {};
  boost::asio::io_context io;
  const boost::asio::generic::stream_protocol protocol(AF_UNIX, 0);
  const ClientSocket socket(io, protocol, ends[0]);
  const ClientSocket other(io, protocol, ends[1]);
  return localUserOf(socket);
}

TEST(LocalSocket, TellsTheUserAtTheOtherEnd) {
  const auto user = userOfAPair();
  ASSERT_TRUE(user);
  EXPECT_EQ(user->userId, ::geteuid());
  EXPECT_EQ(user->groupId, ::getegid());
}

TEST(LocalSocketDeathTest, TellsAllGroupsOfTheUser) {
  const auto tellGroups = [] {
    // Root alone may take some; everybody else has those of the session.
    const std::array<gid_t, 3> several{4, 70, 90};
    static_cast<void>(::setgroups(several.size(), several.data()));
    const auto user = userOfAPair();
    ::_exit(user && user->groups == ownGroups() ? 0 : 1);
  };
  EXPECT_EXIT(tellGroups(), testing::ExitedWithCode(0), "");
}

TEST(LocalSocket, KnowsNobodyOnTheNetwork) {
  boost::asio::io_context io;
  const ClientSocket socket(io, {AF_INET, IPPROTO_TCP});
  EXPECT_FALSE(localUserOf(socket));
}

}  // namespace

}  // namespace host
