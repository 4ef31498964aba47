#ifndef MIRN_HOST_NET_CONNECTION_H
#define MIRN_HOST_NET_CONNECTION_H

#include <boost/beast/core/flat_buffer.hpp>
#include <memory>
#include <optional>
#include <string>

#include "http/request_reader.h"
#include "net/client_stream.h"
#include "net/shared_state.h"

namespace host {

/// One connection: reads a request, has it answered by a worker, writes the answer, and so on, one request
/// after the other in the order of their arrival. Each wait for the client has its deadline. Kept alive by
/// what it waits for.
class Connection : public std::enable_shared_from_this<Connection> {
 public:
  Connection(std::unique_ptr<ClientStream> stream, SharedState& state);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  void start();

  /// Ends the connection after the request under way, at once when there is none. Safe from any thread.
  void stop();

 private:
  using ErrorCode = ClientStream::ErrorCode;
  using Step = void (Connection::*)();

  void receive(std::size_t count, Step next);
  void awaitRequest();
  void beginRequest();
  void takeHeader();
  void sendContinue();
  void takeBody();
  void run();
  void refuse(const std::exception& failure);
  void send(Answer answer);
  void onSent();
  void close();
  void awaitEnd();
  RequestHead head() const;
  void log(unsigned status) const;

  SharedState& m_state;
  const std::unique_ptr<ClientStream> m_stream;
  boost::beast::flat_buffer m_input;
  std::optional<RequestReader> m_reader;  // one a request
  Job m_job;
  Answer m_answer;  // on its way out, behind its head
  std::string m_answerHead;
  bool m_keepsConnection = false;
  bool m_isIdle = false;
  bool m_isStopping = false;
};

}  // namespace host

#endif
