#ifndef MIRN_CONTRACT_PLUGIN_EXTENSIONS_H
#define MIRN_CONTRACT_PLUGIN_EXTENSIONS_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "ServiceObject.h"

/// What a plug-in may tell a host beyond the plain contract. Each interface is a second base of the plug-in
/// object; a host finds it with `std::dynamic_pointer_cast` on the pointer that it was given, and works
/// without the ones that are not there:
///
///     if (const auto watched = std::dynamic_pointer_cast<ovra::watched_plugin_1>(plugin)) ...
///
/// A class never changes its slots once it is published; a new form is a new class with the next number.
/// All operations are safe from any thread. Failures are exceptions, as for `handleRequest`.

namespace ovra {

/// Where a plug-in's picture of the machine stands. No number ever falls while the module is loaded, not over
/// `finish` and `initialize` either.
struct PluginPosition {
  std::wstring epoch;           ///< 16 hexadecimal digits, random, made when the module is loaded.
  std::uint64_t revision = 0;   ///< Rises when any published form, or any id that objects refer to, differs.
  std::uint64_t structure = 0;  ///< The same, but for progress and the counters of verification.
  std::uint64_t sequence = 0;   ///< The number of the last event; 0 before the first.
};

/// Tells what it can be asked.
class described_plugin_1 {
 public:
  /// The catalogue of all routes, and the schemas of what they answer: constant while the module is loaded.
  /// Works before `initialize`.
  virtual data_transfer::ServiceObject describe() = 0;

 protected:
  ~described_plugin_1() = default;
};

/// Tells when something has changed.
class watched_plugin_1 {
 public:
  virtual PluginPosition position() = 0;

  /// True as soon as the revision or the sequence differs from those of `known`, or the epoch does; false
  /// when `milliseconds` have passed, and when `finish` begins. Holds up neither requests nor refreshes.
  virtual bool waitForChange(const PluginPosition& known, std::int64_t milliseconds) = 0;

  /// The events with a number above `sequence`, oldest first, at most `limit`. An object:
  /// - `oldest`: unsigned, the number of the oldest event still held, 0 when there is none; one above
  ///   `sequence + 1` tells that events between are lost.
  /// - `events`: a list of objects with `number` (unsigned), `moment` (unsigned, milliseconds since 1970,
  ///   UTC), `kind`, `severity`, `description`, `objectType`, `objectId`, `objectName` (texts), and of
  ///   volumes `oldState` and `newState` (texts), where there was an old one and is a new one.
  virtual data_transfer::ServiceObject eventsAfter(std::uint64_t sequence, std::uint64_t limit) = 0;

  /// Everything that can be read, from one moment. An object:
  /// - `position`: an object with the members of `PluginPosition`.
  /// - `takenAt`: unsigned, milliseconds since 1970, UTC; null before the first picture.
  /// - `failedAt`, `failure`: the moment and the words of the last refresh, where that failed; else null.
  /// - `state`, `version`: as their routes answer; `version` is null before the first picture.
  /// - `raids` (with their levels), `controllers`, `arrays`, `enddevices`, `ports`, `volumes`: the whole
  ///   lists as their routes answer.
  /// - `controllerArrays`, `controllerPorts`, `controllerVolumes`: objects, the ids of each controller's own.
  virtual data_transfer::ServiceObject picture() = 0;

 protected:
  ~watched_plugin_1() = default;
};

/// Tells what a request would do, and does nothing.
class rehearsed_plugin_1 {
 public:
  /// Refuses with the exception that `handleRequest` would raise before it hands anything on, or gives what
  /// it would hand on. An object:
  /// - `operation`: the name of the library's function; null for a request that calls none.
  /// - `arguments`: a list of unsigned numbers, handles and plain values in the order of the call.
  /// - `record`: hexadecimal text, the bytes of the record that is handed over; null where there is none.
  /// - `handles`: an array of unsigned numbers, the handles that the record only points to.
  /// - `settings`: an object, the settings that would be stored, with their values.
  /// - `objects`: a list of objects with `type` and `id`, what the request names.
  /// - `libraryDecides`: true, since the library may still refuse.
  ///
  /// Outside the promise: a lock that is not had in time, a store that refuses a setting, lack of memory.
  virtual data_transfer::ServiceObject rehearse(std::wstring path, std::int32_t method,
                                                std::vector<std::wstring> segments,
                                                std::map<std::wstring, std::wstring> parameters,
                                                data_transfer::ServiceObject body) = 0;

  /// The same request once for each of `values`, over one picture. Each takes the place of `argument`: a
  /// member of the body by its key, or a segment of the path by its name in the template, as in "{volumeId}".
  /// A list with an object for each value, in order: `plan`, as `rehearse` gives it, or `refusal`, an object
  /// with `class` ("request", "listener", "plugin", "http" or "other"), `errorId` (text or null), `status`
  /// (unsigned or null) and `message` (text).
  virtual data_transfer::ServiceObject rehearseEach(std::wstring path, std::int32_t method,
                                                    std::vector<std::wstring> segments,
                                                    std::map<std::wstring, std::wstring> parameters,
                                                    data_transfer::ServiceObject body, std::wstring argument,
                                                    std::vector<data_transfer::ServiceObject> values) = 0;

 protected:
  ~rehearsed_plugin_1() = default;
};

/// Changes the machine only as the client knows it.
class guarded_plugin_1 {
 public:
  /// As `handleRequest`; but where the plug-in's epoch or structure is another when the change is about to be
  /// handed to the library, nothing is handed over and `HttpClientErrorException` with status 412 and "The
  /// machine has changed meanwhile" is raised. What the library itself has done since it last woke the
  /// plug-in is not seen.
  virtual data_transfer::ServiceObject handleRequestAt(const std::wstring& epoch, std::uint64_t structure,
                                                       std::wstring path, std::int32_t method,
                                                       std::vector<std::wstring> segments,
                                                       std::map<std::wstring, std::wstring> parameters,
                                                       data_transfer::ServiceObject body) = 0;

 protected:
  ~guarded_plugin_1() = default;
};

}  // namespace ovra

#endif
