#include "terminal/live_screen.h"

#include <windows.h>

#include "terminal/console_windows.h"
#include "terminal/screen_text.h"

namespace mirnctl {

namespace {

constexpr LiveScreen::Size kUsualSize{80, 24};

/// Set once somebody ends the program. Never closed: the system may call for its end at any time.
HANDLE ending() {
  static const HANDLE event = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
  return event;
}

BOOL WINAPI noteEnd(DWORD) {
  ::SetEvent(ending());
  return TRUE;
}

void write(const std::string& text) {
  const HANDLE output = ::GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD written = 0;
  for (std::size_t begin = 0; begin < text.size(); begin += written) {
    const auto left = static_cast<DWORD>(text.size() - begin);
    if (!::WriteFile(output, text.data() + begin, left, &written, nullptr) || written == 0) return;
  }
}

LiveScreen::Wish wishOf(const INPUT_RECORD& record) {
  if (record.EventType == WINDOW_BUFFER_SIZE_EVENT) return LiveScreen::Wish::kRedraw;
  const bool isKey = record.EventType == KEY_EVENT && record.Event.KeyEvent.bKeyDown;
  const wchar_t key = isKey ? record.Event.KeyEvent.uChar.UnicodeChar : L'\0';
  return key == L'q' || key == L'Q' ? LiveScreen::Wish::kEnd : LiveScreen::Wish::kNothing;
}

}  // namespace

/// What is another one meanwhile: modes of the console, and what its end does.
class LiveScreen::Process {
 public:
  Process() : m_modes(m_input, ENABLE_LINE_INPUT | ENABLE_ECHO_INPUT, ENABLE_WINDOW_INPUT) {
    ::ResetEvent(ending());
    ::SetConsoleCtrlHandler(noteEnd, TRUE);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  /// What was typed for it is not typed for who comes next.
  ~Process() {
    ::FlushConsoleInputBuffer(m_input);
    ::SetConsoleCtrlHandler(noteEnd, FALSE);
  }

  Wish await(std::chrono::milliseconds time) const {
    const HANDLE either[] = {ending(), m_input};
    const auto limit = static_cast<DWORD>(time.count());
    const DWORD came = ::WaitForMultipleObjects(m_modes.isConsole() ? 2 : 1, either, FALSE, limit);
    if (came == WAIT_OBJECT_0) return Wish::kEnd;
    if (came != WAIT_OBJECT_0 + 1) return Wish::kNothing;
    INPUT_RECORD record{};
    DWORD count = 0;
    if (!::ReadConsoleInputW(m_input, &record, 1, &count) || count == 0) return Wish::kEnd;
    return wishOf(record);
  }

 private:
  const HANDLE m_input = ::GetStdHandle(STD_INPUT_HANDLE);
  const ConsoleModes m_modes;
};

LiveScreen::LiveScreen() : m_process(std::make_unique<Process>()) { write(kOwnScreen); }

LiveScreen::~LiveScreen() { write(kFormerScreen); }

LiveScreen::Size LiveScreen::size() const {
  const Size size = consoleSize();
  return size.width > 0 && size.height > 0 ? size : kUsualSize;
}

void LiveScreen::show(const std::vector<std::string>& lines) { write(screenText(lines)); }

LiveScreen::Wish LiveScreen::await(std::chrono::milliseconds time) { return m_process->await(time); }

}  // namespace mirnctl
