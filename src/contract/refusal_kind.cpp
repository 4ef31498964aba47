#include "refusal_kind.h"

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

const std::map<std::string, RefusalKind>& kindsOfErrorIds() {
  static const std::map<std::string, RefusalKind> kKinds = {
      {kErrorObjectNotFound, RefusalKind::kAbsent},    {kErrorInvalidParameter, RefusalKind::kRequest},
      {kErrorInvalidRaidLevel, RefusalKind::kRequest}, {kErrorUnsupportedRaidLevel, RefusalKind::kRequest},
      {kErrorNotSupported, RefusalKind::kUnsupported}, {kErrorDiskInvalidState, RefusalKind::kState},
      {kErrorArrayInvalidState, RefusalKind::kState},  {kErrorVolumeInvalidState, RefusalKind::kState},
      {kErrorOffline, RefusalKind::kOffline},          {kErrorNotInitialized, RefusalKind::kOffline},
  };
  return kKinds;
}

RefusalKind kindOfErrorId(const std::string& errorId) {
  const auto found = kindsOfErrorIds().find(errorId);
  return found == kindsOfErrorIds().end() ? RefusalKind::kFailure : found->second;
}
