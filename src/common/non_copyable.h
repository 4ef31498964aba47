#ifndef MIRN_COMMON_NON_COPYABLE_H
#define MIRN_COMMON_NON_COPYABLE_H

/// Mix-in for classes with one owner, which are never copied.
class NonCopyable {
 protected:
  NonCopyable() = default;
  ~NonCopyable() = default;
  NonCopyable(const NonCopyable&) = delete;
  NonCopyable& operator=(const NonCopyable&) = delete;
};

#endif
