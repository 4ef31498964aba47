#include "terminal/live_screen.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <iterator>

#include "terminal/screen_text.h"

namespace mirnctl {

namespace {

constexpr int kEnding[] = {SIGINT, SIGTERM, SIGHUP};
constexpr std::size_t kUsualWidth = 80;
constexpr std::size_t kUsualHeight = 24;

volatile std::sig_atomic_t isEnding = 0;
volatile std::sig_atomic_t isResized = 0;

void noteEnd(int) { isEnding = 1; }
void noteSize(int) { isResized = 1; }

void write(const std::string& text) {
  for (std::size_t begin = 0; begin < text.size();) {
    const ssize_t written = ::write(STDOUT_FILENO, text.data() + begin, text.size() - begin);
    if (written < 0 && errno != EINTR) return;
    if (written > 0) begin += static_cast<std::size_t>(written);
  }
}

}  // namespace

/// What is another one meanwhile: modes of the terminal, and signals, which come only while it waits.
class LiveScreen::Process {
 public:
  Process() {
    isEnding = isResized = 0;
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : kEnding) sigaddset(&held, signal);
    sigaddset(&held, SIGWINCH);
    ::sigprocmask(SIG_BLOCK, &held, &m_mask);
    struct sigaction action = {};
    action.sa_handler = noteEnd;
    for (std::size_t place = 0; place < std::size(kEnding); ++place)
      ::sigaction(kEnding[place], &action, &m_ending[place]);
    action.sa_handler = noteSize;
    ::sigaction(SIGWINCH, &action, &m_resized);
    ::tcgetattr(STDIN_FILENO, &m_modes);
    termios modes = m_modes;
    modes.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    ::tcsetattr(STDIN_FILENO, TCSANOW, &modes);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  ~Process() {
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_modes);
    for (std::size_t place = 0; place < std::size(kEnding); ++place)
      ::sigaction(kEnding[place], &m_ending[place], nullptr);
    ::sigaction(SIGWINCH, &m_resized, nullptr);
    ::sigprocmask(SIG_SETMASK, &m_mask, nullptr);
  }

  /// Whether somebody types, or a signal came.
  bool await(std::chrono::milliseconds time) const {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    const timespec wait{seconds.count(), static_cast<long>((time - seconds).count()) * 1'000'000};
    pollfd input{STDIN_FILENO, POLLIN, 0};
    return ::ppoll(&input, 1, &wait, &m_mask) > 0;
  }

 private:
  sigset_t m_mask{};
  struct sigaction m_ending[std::size(kEnding)] = {};
  struct sigaction m_resized = {};
  termios m_modes{};
};

LiveScreen::LiveScreen() : m_process(std::make_unique<Process>()) { write(kOwnScreen); }

LiveScreen::~LiveScreen() { write(kFormerScreen); }

LiveScreen::Size LiveScreen::size() const {
  winsize size{};
  const bool isKnown = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 && size.ws_row > 0;
  return isKnown ? Size{size.ws_col, size.ws_row} : Size{kUsualWidth, kUsualHeight};
}

void LiveScreen::show(const std::vector<std::string>& lines) { write(screenText(lines)); }

LiveScreen::Wish LiveScreen::await(std::chrono::milliseconds time) {
  const bool hasInput = m_process->await(time);
  if (isEnding != 0) return Wish::kEnd;
  if (isResized != 0) {
    isResized = 0;
    return Wish::kRedraw;
  }
  if (!hasInput) return Wish::kNothing;
  char key = 0;
  const ssize_t count = ::read(STDIN_FILENO, &key, 1);
  const bool isGone = count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN);
  return isGone || key == 'q' || key == 'Q' ? Wish::kEnd : Wish::kNothing;
}

}  // namespace mirnctl
