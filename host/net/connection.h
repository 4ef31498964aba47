#ifndef MIRN_HOST_NET_CONNECTION_H
#define MIRN_HOST_NET_CONNECTION_H

#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "http/request_reader.h"
#include "net/client_stream.h"
#include "net/deadline.h"
#include "net/part_pump.h"
#include "net/shared_state.h"

namespace host {

/// One connection: reads a request, has it answered by a worker or by who answers later, writes the answer,
/// and so on, one request after the other in the order of their arrival. Each wait for the client has its
/// deadline. Kept alive by what it waits for.
class Connection : public Occupant, public Exchange, public std::enable_shared_from_this<Connection> {
 public:
  Connection(std::unique_ptr<ClientStream> stream, SharedState& state);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() override;

  void start();

  /// Instead of `start`: there is no place for the connection.
  void turnAway();

  void giveUp() override;
  void stop() override;

  void post(Exchange::Step step) override;
  bool work(Lane lane, Exchange::Step task) override;
  void park(std::chrono::milliseconds time, Exchange::Step onEnd) override;
  bool isStopping() const override { return m_isStopping; }
  using Exchange::answer;
  void answer(std::shared_ptr<const Answer> answer) override;
  void answerInParts(OpenParts open) override;

 private:
  using ErrorCode = ClientStream::ErrorCode;
  using Step = void (Connection::*)();

  /// What a request comes to, and how long that is kept back.
  struct Outcome {
    std::shared_ptr<const Answer> answer;
    std::chrono::milliseconds wait{0};
  };

  static Outcome outcomeOf(const std::exception& failure);
  static Outcome outcomeOf(const Job& job, const std::string& body);
  void rest();
  void wake();
  void receive(std::size_t count, Step next);
  void onReceived(ErrorCode error, std::size_t received);
  void leave();
  void quit();
  void watchClient();
  void endParking();
  void awaitRequest();
  void beginRequest();
  void takeHeader();
  void awaitHeader();
  void sendContinue();
  void takeBody();
  void run();
  void refuse(const std::exception& failure);
  void conclude(Outcome outcome);
  void runOnLane();
  void send(std::shared_ptr<const Answer> answer);
  void beginAnswer(std::shared_ptr<const Answer> answer);
  void onSent();
  void sendPart(PartPump::Fetched part);
  void onPartSent();
  void tick();
  void endParts();
  void close();
  void awaitEnd();
  RequestHead head();
  void account() const;
  void log(std::chrono::microseconds duration) const;

  SharedState& m_state;
  const std::unique_ptr<ClientStream> m_stream;
  boost::beast::flat_buffer m_input;
  std::optional<RequestReader> m_reader;  // one a request
  ProvenSecret m_proven;
  Job m_job;
  std::shared_ptr<const Answer> m_answer;  // on its way out, behind its head
  std::string m_answerHead;
  bool m_keepsConnection = false;
  std::shared_ptr<PartPump> m_pump;     // null unless the answer is in parts
  PartPump::Fetched m_part;             // on its way out
  std::optional<Deadline> m_deadline;   // of what the client is waited for; there from the start on
  boost::asio::steady_timer m_delay;    // of an answer that is kept back
  boost::asio::steady_timer m_parking;  // of a request that is parked, or answered in parts
  Exchange::Step m_onParkingEnd;        // empty while none is
  Step m_next = nullptr;                // behind the read under way
  bool m_isReading = false;             // at most one read is under way
  bool m_hasLeft = false;               // the client
  std::size_t m_pipelined = 0;          // requests since the client last waited for an answer
  bool m_isResting = true;              // until it shows a whole header; see `Connections`
  bool m_isIdle = false;                // nothing of a request has come
  bool m_isStopping = false;
  std::chrono::steady_clock::time_point m_begun;  ///< The request under way.
};

}  // namespace host

#endif
