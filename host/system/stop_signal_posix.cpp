#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
#include <csignal>

#include "system/stop_signal.h"

namespace host {

namespace {

class StopSignal final : public IStopSignal {
 public:
  void wait(const std::function<void()>& reload) override {
    m_stops.async_wait([this](const boost::system::error_code&, int) {
      m_stops.clear();
      m_io.stop();
    });
    awaitReload(reload);
    m_io.run();
  }

 private:
  void awaitReload(const std::function<void()>& reload) {
    m_reloads.async_wait([this, &reload](const boost::system::error_code& error, int) {
      if (error) return;
      reload();
      awaitReload(reload);
    });
  }

  boost::asio::io_context m_io;
  boost::asio::signal_set m_stops{m_io, SIGINT, SIGTERM};
  boost::asio::signal_set m_reloads{m_io, SIGHUP};  // stays caught, so that none ends the host meanwhile
};

}  // namespace

std::unique_ptr<IStopSignal> makeStopSignal() { return std::make_unique<StopSignal>(); }

std::string stopSignalNames() { return "SIGTERM or SIGINT"; }

}  // namespace host
