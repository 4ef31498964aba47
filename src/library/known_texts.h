#ifndef MIRN_LIBRARY_KNOWN_TEXTS_H
#define MIRN_LIBRARY_KNOWN_TEXTS_H

#include <cstddef>
#include <string>
#include <string_view>

#include "known_text.h"
#include "non_copyable.h"
#include "text_sequence.h"

/// The vendor id of a field as devices have it, see `EndDevice::vendorIdOf`.
std::wstring vendorIdFromField(std::string_view field);

/// The texts that objects are made of, each made once: what is read a second time, of another object or for
/// another picture, is the text that was made the first time. A sequence for each field that is read in turn.
/// For one thread at a time.
struct KnownTexts : private NonCopyable {
  static constexpr std::size_t kIdentitySize = 24;
  static constexpr std::size_t kVendorSize = 16;

  TextSequence<FormedText<kIdentitySize, idFromUniqueId>> ids;
  TextSequence<AddressText> addresses;
  TextSequence<PlainText> controllerNames;
  TextSequence<PlainText> controllerVersions;
  TextSequence<PlainText> arrayNames;
  TextSequence<PlainText> volumeNames;
  TextSequence<FormedText<kVendorSize, vendorIdFromField>> vendorIds;
  TextSequence<PlainText> serialNumbers;
  TextSequence<PlainText> models;
  TextSequence<PlainText> firmwares;

  /// Begins with the next picture, in all of them.
  void startOver();
};

#endif
