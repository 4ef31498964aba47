#ifndef MIRN_TESTS_SUPPORT_ORDINARY_USER_H
#define MIRN_TESTS_SUPPORT_ORDINARY_USER_H

#include <unistd.h>

#include <cstdlib>

/// While it lives, a process of the superuser goes by the rights of an ordinary user: nothing is refused to
/// the superuser.
class OrdinaryUser {
 public:
  OrdinaryUser() : m_user(::geteuid()) {
    if (m_user == 0 && ::seteuid(kNobody) != 0) std::abort();
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser() {
    if (m_user == 0 && ::seteuid(m_user) != 0) std::abort();
  }

 private:
  static constexpr uid_t kNobody = 65534;

  uid_t m_user;
};

#endif
