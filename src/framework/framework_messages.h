#ifndef MIRN_FRAMEWORK_FRAMEWORK_MESSAGES_H
#define MIRN_FRAMEWORK_FRAMEWORK_MESSAGES_H

/// The messages that all endpoints share; `wideToUtf8` makes exception text of them.

constexpr wchar_t kMsgMethodNotSupported[] = L"Used HTTP method is not supported";
constexpr wchar_t kMsgRequestNotSupported[] = L"Request is not supported";
constexpr wchar_t kMsgPluginNotWorking[] = L"Mirn plugin does not work";

// Declared with the others; no path raises them.
constexpr wchar_t kMsgRequestNotParsed[] = L"Request could not be parsed correctly";
constexpr wchar_t kMsgExceptionOccurred[] = L"Exception occured during request handling";
constexpr wchar_t kMsgInvalidParameters[] = L"Invalid parameters";
constexpr wchar_t kMsgInvalidInput[] = L"Input is not valid for this request";

#endif
