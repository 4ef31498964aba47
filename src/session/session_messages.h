#ifndef MIRN_SESSION_SESSION_MESSAGES_H
#define MIRN_SESSION_SESSION_MESSAGES_H

/// What the session says, as UTF-8, when it refuses on its own, ahead of the library.

constexpr char kMsgSessionTimeout[] = "Timeout on access to protected resource";
constexpr char kMsgNoVersion[] = "Version is not available yet";

#endif
