#include "refusal_kind.h"

#include <map>

#include "service_exceptions.h"

const wchar_t* toText(RefusalKind kind) {
  switch (kind) {
    case RefusalKind::kRequest:
      return L"request";
    case RefusalKind::kAbsent:
      return L"absent";
    case RefusalKind::kState:
      return L"state";
    case RefusalKind::kUnsupported:
      return L"unsupported";
    case RefusalKind::kOffline:
      return L"offline";
    case RefusalKind::kFailure:
      break;
  }
  return L"failure";
}

RefusalKind kindOfErrorId(const std::string& errorId) {
  static const std::map<std::string, RefusalKind> kKinds = {
      {kErrorObjectNotFound, RefusalKind::kAbsent},    {kErrorInvalidParameter, RefusalKind::kRequest},
      {kErrorInvalidRaidLevel, RefusalKind::kRequest}, {kErrorUnsupportedRaidLevel, RefusalKind::kRequest},
      {kErrorNotSupported, RefusalKind::kUnsupported}, {kErrorDiskInvalidState, RefusalKind::kState},
      {kErrorArrayInvalidState, RefusalKind::kState},  {kErrorVolumeInvalidState, RefusalKind::kState},
      {kErrorOffline, RefusalKind::kOffline},          {kErrorNotInitialized, RefusalKind::kOffline},
  };
  const auto found = kKinds.find(errorId);
  return found == kKinds.end() ? RefusalKind::kFailure : found->second;
}
