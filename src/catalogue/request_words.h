#ifndef MIRN_CATALOGUE_REQUEST_WORDS_H
#define MIRN_CATALOGUE_REQUEST_WORDS_H

/// The words that requests choose by and that no enumeration of the model has.
namespace request_words {

constexpr wchar_t kArray[] = L"ARRAY";
constexpr wchar_t kCancel[] = L"CANCEL";
constexpr wchar_t kDisk[] = L"DISK";
constexpr wchar_t kInfo[] = L"info";
constexpr wchar_t kLevel[] = L"level";
constexpr wchar_t kMark[] = L"MARK";
constexpr wchar_t kStart[] = L"START";
constexpr wchar_t kUnmark[] = L"UNMARK";

}  // namespace request_words

#endif
