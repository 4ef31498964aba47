#ifndef MIRN_CONTRACT_REFUSAL_KIND_H
#define MIRN_CONTRACT_REFUSAL_KIND_H

#include <map>
#include <string>

/// What kind of refusal a request has met: whose affair it is, and what a client can do about it. In brackets
/// the HTTP status that says so.
enum class RefusalKind {
  kRequest,      ///< The request is wrong, and stays so (400).
  kAbsent,       ///< What it names is not there (404).
  kState,        ///< What it names is not in a state for it (409).
  kUnsupported,  ///< The machine cannot do it (422).
  kOffline,      ///< Not now: to be tried again (503).
  kFailure,      ///< It went wrong (500).
};

/// "request", "absent", "state", "unsupported", "offline" or "failure".
const wchar_t* toText(RefusalKind kind);

/// The kinds by error id, for refusals of which nothing else is told; an id that is not there
/// means a failure.
const std::map<std::string, RefusalKind>& kindsOfErrorIds();

/// The kind of a refusal that nobody told more of than its error id; any id of service_exceptions.h or none.
RefusalKind kindOfErrorId(const std::string& errorId);

#endif
