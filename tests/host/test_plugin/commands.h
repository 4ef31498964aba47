#ifndef MIRN_TESTS_HOST_TEST_PLUGIN_COMMANDS_H
#define MIRN_TESTS_HOST_TEST_PLUGIN_COMMANDS_H

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "ServiceObject.h"

/// What a test can make the plug-in do, by the first segment:
///
///   null                             gives the null value
///   deep      depth=N                gives an array nested N deep
///   large     size=N                 gives a text of N characters
///   not-finite                       gives an array of the doubles that JSON has not
///   throw     kind=K [id] [message] [status]
///                                    raises; the kinds stand in commands.cpp
///   block                            comes back once it is released
///   await-blocked count=N            comes back once N requests are blocked
///   await-fifo path=P                comes back once the named pipe P was opened for writing, and written
///                                    to or closed
///   release                          lets all blocked requests go, and all later ones
class Commands {
 public:
  using Parameters = std::map<std::wstring, std::wstring>;

  bool knows(const std::vector<std::wstring>& segments) const;
  ovra::data_transfer::ServiceObject run(const std::vector<std::wstring>& segments,
                                         const Parameters& parameters);

 private:
  void block();
  void awaitBlocked(int count);
  void release();

  std::mutex m_mutex;
  std::condition_variable m_changed;
  int m_blocked = 0;
  bool m_released = false;
};

#endif
