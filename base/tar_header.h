#ifndef MIRN_BASE_TAR_HEADER_H
#define MIRN_BASE_TAR_HEADER_H

#include <cstddef>

/// The header ahead of each file of a tar archive, as POSIX lays it out (pax interchange format).
namespace tar {

/// Headers and files begin at a multiple of it.
inline constexpr std::size_t kBlock = 512;

/// The place of a field and its size.
struct Field {
  std::size_t begin;
  std::size_t size;
};

inline constexpr Field kName{0, 100};
inline constexpr Field kMode{100, 8};
inline constexpr Field kOwner{108, 8};
inline constexpr Field kGroup{116, 8};
inline constexpr Field kSize{124, 12};
inline constexpr Field kTime{136, 12};
inline constexpr Field kSum{148, 8};  ///< Of all bytes, with blanks in its own place.
inline constexpr Field kType{156, 1};
inline constexpr Field kMagic{257, 8};
inline constexpr Field kPrefix{345, 155};  ///< Of the name, without the slash between.

inline constexpr char kMagicText[] = "ustar";  ///< Behind it stands the version.

// Types.
inline constexpr char kPlainFile = '0';
inline constexpr char kRecords = 'x';  ///< "LENGTH KEY=VALUE\n" each, of the file behind it.

inline constexpr char kPathKey[] = "path";

}  // namespace tar

#endif
