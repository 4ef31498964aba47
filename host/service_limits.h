#ifndef MIRN_HOST_SERVICE_LIMITS_H
#define MIRN_HOST_SERVICE_LIMITS_H

#include <chrono>
#include <cstddef>

namespace host {

/// What one client, or all of them together, may cost.
struct Limits {
  std::size_t connections = 2048;      ///< For a further one, the longest idle one is closed.
  std::size_t connectionsOfOne = 256;  ///< Of one address, but for the loopback.
  std::size_t pipelinedRequests = 16;  ///< That a client sends ahead of their answers.
  std::size_t readWorkers = 8;         ///< Threads for calls that change nothing.
  std::size_t changeWorkers = 4;       ///< Threads for calls that change something.

  // Requests that wait for a thread, for calls of either kind and for the host's own answers each; further
  // ones get a 503.
  std::size_t waitingCalls = 64;
  std::size_t waitingCallsOfOne = 16;  ///< Of one identity.

  std::size_t headerBytes = 32768;     ///< Of a request, its request line included.
  std::size_t headerLineBytes = 8192;  ///< Of a header's field, and between the chunks of a body.
  std::size_t headerFields = 100;
  std::size_t targetBytes = 8192;
  std::size_t targetSegments = 16;    ///< Of a target's path.
  std::size_t targetParameters = 16;  ///< Of its query, the token among them.
  std::size_t bodyBytes = 1048576;    ///< Of a request.
  std::size_t bodyDepth = 32;         ///< Nesting of the arrays and objects in a body.
  std::size_t bodyValues = 20000;     ///< In a body, arrays and objects among them.

  std::size_t keptBytes = 67108864;     ///< Of answers that are kept for as long as nothing changes.
  std::size_t waitingForChange = 1000;  ///< Requests that wait for an answer to change.
  std::size_t listeners = 1000;         ///< Clients that listen to what happens.

  // A connection that lets one of these pass is closed.
  std::chrono::milliseconds headerTime{10000};  ///< From a header's first byte to its last.
  std::chrono::milliseconds bodyTime{30000};    ///< From a header's end to the body's.
  std::chrono::milliseconds writeTime{30000};   ///< For a whole answer.
  std::chrono::milliseconds idleTime{60000};    ///< From an answer, or the connection, to the next request.

  std::chrono::milliseconds drainTime{40000};  ///< For the requests under way when the host is told to stop.
};

}  // namespace host

#endif
