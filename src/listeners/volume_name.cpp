#include "volume_name.h"

#include <algorithm>

#include "action_interfaces.h"
#include "listener_steps.h"
#include "messages.h"

namespace {

constexpr wchar_t kFirstPrintable = 32;
constexpr wchar_t kLastPrintable = 126;
constexpr wchar_t kBackslash = 92;
constexpr wchar_t kWhitespace[] = L" \t\n\v\f\r";

bool isForbidden(wchar_t unit) {
  return unit < kFirstPrintable || unit > kLastPrintable || unit == kBackslash;
}

bool isInUse(const std::wstring& name, IMirnSession& session) {
  return session.findVolumeByName(name).has_value();
}

}  // namespace

void validateVolumeName(const std::wstring& name, IMirnSession* session) {
  const auto require = [](bool condition, const wchar_t* message) {
    requireThat(condition, kErrorInvalidParameter, message);
  };
  require(!name.empty(), kMsgNameEmpty);
  require(name.size() <= kMaxVolumeNameSize, kMsgNameTooLong);
  require(name.find_first_of(kWhitespace) != 0, kMsgNameStartsWithSpace);
  require(std::none_of(name.begin(), name.end(), isForbidden), kMsgNameForbiddenCharacter);
  require(!session || !isInUse(name, *session), kMsgNameInUse);
}
