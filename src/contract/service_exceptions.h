#ifndef MIRN_CONTRACT_SERVICE_EXCEPTIONS_H
#define MIRN_CONTRACT_SERVICE_EXCEPTIONS_H

#include <cstdint>
#include <stdexcept>
#include <string>

/// The exceptions that a request can leave the module with, and the ids they carry. A host reads the status
/// of `HttpClientErrorException`, and the id of everything that is also an `IErrorIdException`. Every
/// `what()` is UTF-8.

namespace ovra {
namespace common {

/// Second base of exceptions with a machine-readable id. Carries no data.
class IErrorIdException {
 public:
  virtual ~IErrorIdException() = default;

  /// One of the constants below; lives as long as the exception.
  virtual const char* getErrorId() const = 0;

  /// The same text as `what()`.
  virtual const char* getMessage() const = 0;
};

/// A failure that already knows its HTTP status. Has no error id.
class HttpClientErrorException : public std::runtime_error {
 public:
  HttpClientErrorException(std::int32_t httpStatus, const std::string& message);

  std::int32_t status;
};

}  // namespace common
}  // namespace ovra

/// A listener's refusal: an error id and a UTF-8 message.
class ListenerException : public std::logic_error, public ovra::common::IErrorIdException {
 public:
  ListenerException(const std::string& errorId, const std::string& message);

  const char* getErrorId() const override;
  const char* getMessage() const override;

 private:
  std::string m_errorId;
};

constexpr char kErrorObjectNotFound[] = "OBJECT_NOT_FOUND";
constexpr char kErrorInvalidParameter[] = "INVALID_PARAMETER";
constexpr char kErrorNotSupported[] = "NOT_SUPPORTED";
constexpr char kErrorInternal[] = "INTERNAL_ERROR";
constexpr char kErrorOffline[] = "Mirn_OFFLINE";
constexpr char kErrorNotInitialized[] = "Mirn_NOT_INITIALIZED";
constexpr char kErrorOperationFailed[] = "Mirn_OPERATION_FAILED";
constexpr char kErrorDiskInvalidState[] = "Mirn_DISK_INVALID_STATE";
constexpr char kErrorArrayInvalidState[] = "Mirn_ARRAY_INVALID_STATE";
constexpr char kErrorVolumeInvalidState[] = "Mirn_VOLUME_INVALID_STATE";
constexpr char kErrorInvalidRaidLevel[] = "Mirn_INVALID_RAID_LEVEL";
constexpr char kErrorUnsupportedRaidLevel[] = "Mirn_UNSUPPORTED_RAID_LEVEL";  ///< No path raises it.

#endif
