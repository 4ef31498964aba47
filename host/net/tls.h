#ifndef MIRN_HOST_NET_TLS_H
#define MIRN_HOST_NET_TLS_H

#include <memory>
#include <string>

#include "net/acceptor.h"

namespace host {

/// Files of PEM.
struct TlsFiles {
  std::string certificate;  ///< With the chain that leads to one that clients trust.
  std::string key;
  std::string clientAuthorities;  ///< Whose certificates of clients we trust; may be empty.
};

/// What clients of TLS 1.2 and 1.3 are shown. Safe from any thread. One source a system; some systems have
/// none of it.
class ITls {
 public:
  virtual ~ITls() = default;

  /// Reads the files again, for the clients that come from now on. Raises `std::runtime_error` with the
  /// reason when they do not serve; all stays as it was then.
  virtual void reload() = 0;

  virtual std::unique_ptr<ClientStream> makeStream(ClientSocket socket) = 0;
};

/// Raises `std::runtime_error` with the reason when the files do not serve.
std::unique_ptr<ITls> makeTls(const TlsFiles& files);

}  // namespace host

#endif
