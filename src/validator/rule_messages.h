#ifndef MIRN_VALIDATOR_RULE_MESSAGES_H
#define MIRN_VALIDATOR_RULE_MESSAGES_H

/// What the request validator says of a field that breaks a rule. A report sorts its
/// sentences by these texts.

constexpr wchar_t kRuleNotNull[] = L"not a null type";
constexpr wchar_t kRuleNotInteger[] = L"not an integer type";
constexpr wchar_t kRuleNotUnsignedInteger[] = L"not an unsigned integer type";
constexpr wchar_t kRuleNotReal[] = L"not a real number type";
constexpr wchar_t kRuleNotString[] = L"not a string type";
constexpr wchar_t kRuleNotBoolean[] = L"not a boolean type";
constexpr wchar_t kRuleNotArray[] = L"not an array type";
constexpr wchar_t kRuleNotObject[] = L"not an object type";
constexpr wchar_t kRuleUndefinedType[] = L"undefined type";
constexpr wchar_t kRuleNotPresent[] = L"not present";
constexpr wchar_t kRuleNotAllowed[] = L"not allowed";
constexpr wchar_t kRuleExceptive[] = L"exceptive";  ///< Declared; never raised.
constexpr wchar_t kRuleEmpty[] = L"field cannot be empty";

/// The name that a report gives to the body as a whole.
constexpr wchar_t kBodyName[] = L"root";

#endif
