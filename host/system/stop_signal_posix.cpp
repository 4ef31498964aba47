#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
#include <csignal>

#include "system/stop_signal.h"

namespace host {

namespace {

class StopSignal final : public IStopSignal {
 public:
  void wait() override {
    m_signals.async_wait([this](const boost::system::error_code&, int) { m_signals.clear(); });
    m_io.run();
  }

 private:
  boost::asio::io_context m_io;
  boost::asio::signal_set m_signals{m_io, SIGINT, SIGTERM};
};

}  // namespace

std::unique_ptr<IStopSignal> makeStopSignal() { return std::make_unique<StopSignal>(); }

std::string stopSignalNames() { return "SIGTERM or SIGINT"; }

}  // namespace host
