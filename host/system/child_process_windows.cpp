#include "system/child_process.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <future>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "handle_windows.h"
#include "system/process_windows.h"
#include "system_reason.h"
#include "text.h"

namespace host {

namespace {

/// A status from here on is that of an exception.
constexpr DWORD kLeastException = 0xC0000000;

void require(BOOL isDone) {
  if (!isDone) throw lastSystemFailure();
}

Handle required(HANDLE handle) {
  if (handle == nullptr || handle == INVALID_HANDLE_VALUE) throw lastSystemFailure();
  return Handle(handle);
}

Handle makeEvent() { return required(::CreateEventW(nullptr, TRUE, FALSE, nullptr)); }

/// A block of "NAME=VALUE", each with its end, in the order of their names.
std::wstring blockOf(std::vector<std::string> environment) {
  std::sort(environment.begin(), environment.end());
  std::wstring block;
  for (const std::string& each : environment) block += utf8ToWide(each) + L'\0';
  return block + L'\0';
}

/// What the program gets, and nothing else of ours.
class Inheritance {
 public:
  explicit Inheritance(std::vector<HANDLE> handles) : m_handles(std::move(handles)) {
    SIZE_T size = 0;
    ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    m_memory.resize(size);
    require(::InitializeProcThreadAttributeList(list(), 1, 0, &size));
    if (!::UpdateProcThreadAttribute(list(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, m_handles.data(),
                                     m_handles.size() * sizeof(HANDLE), nullptr, nullptr)) {
      const std::runtime_error failure = lastSystemFailure();
      ::DeleteProcThreadAttributeList(list());
      throw failure;
    }
  }
  Inheritance(const Inheritance&) = delete;
  Inheritance& operator=(const Inheritance&) = delete;
  ~Inheritance() { ::DeleteProcThreadAttributeList(list()); }

  LPPROC_THREAD_ATTRIBUTE_LIST list() {
    return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_memory.data());
  }

 private:
  std::vector<HANDLE> m_handles;
  std::vector<char> m_memory;
};

/// The processes that end together, and with the last handle.
Handle makeJob() {
  Handle job = required(::CreateJobObjectW(nullptr, nullptr));
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  require(::SetInformationJobObject(job.get(), JobObjectExtendedLimitInformation, &limits, sizeof limits));
  return job;
}

/// The two ends of a stream; the program inherits its own.
struct Stream {
  Handle ours;
  Handle its;
};

Stream makePipe(bool isInput) {
  HANDLE read = nullptr;
  HANDLE write = nullptr;
  require(::CreatePipe(&read, &write, nullptr, 0));
  Stream stream{Handle(isInput ? write : read), Handle(isInput ? read : write)};
  require(::SetHandleInformation(stream.its.get(), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT));
  return stream;
}

/// What the program writes to: nothing is read of it unless it is heard.
Stream makeOutput(bool isHeard) {
  if (isHeard) return makePipe(false);
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  return {{},
          required(::CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                 OPEN_EXISTING, 0, nullptr))};
}

struct Streams {
  explicit Streams(bool isHeard)
      : input(makePipe(true)), output(makeOutput(isHeard)), errors(makeOutput(isHeard)) {}

  void closeIts() {
    for (Stream* const each : {&input, &output, &errors}) each->its.reset();
  }

  Stream input;
  Stream output;
  Stream errors;
};

/// In the job, and at work.
Handle begin(const ChildOrder& order, const Streams& streams, HANDLE job) {
  if (order.words.empty()) throw std::runtime_error("no program is named");
  STARTUPINFOEXW start{};
  start.StartupInfo.cb = sizeof start;
  start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
  start.StartupInfo.hStdInput = streams.input.its.get();
  start.StartupInfo.hStdOutput = streams.output.its.get();
  start.StartupInfo.hStdError = streams.errors.its.get();
  Inheritance inheritance(
      {start.StartupInfo.hStdInput, start.StartupInfo.hStdOutput, start.StartupInfo.hStdError});
  start.lpAttributeList = inheritance.list();
  const std::filesystem::path program = std::filesystem::u8path(order.words.front());
  std::wstring line = commandLineOf(program, {order.words.begin() + 1, order.words.end()});
  std::wstring environment = blockOf(order.environment);
  const std::wstring folder = utf8ToWide(order.folder);
  PROCESS_INFORMATION made{};
  require(::CreateProcessW(
      program.c_str(), line.data(), nullptr, nullptr, TRUE,
      CREATE_SUSPENDED | CREATE_UNICODE_ENVIRONMENT | CREATE_NO_WINDOW | EXTENDED_STARTUPINFO_PRESENT,
      environment.data(), folder.empty() ? nullptr : folder.c_str(), &start.StartupInfo, &made));
  Handle process(made.hProcess);
  const Handle thread(made.hThread);
  if (!::AssignProcessToJobObject(job, process.get())) {
    const std::runtime_error failure = lastSystemFailure();
    ::TerminateProcess(process.get(), 1);
    throw failure;
  }
  ::ResumeThread(thread.get());
  return process;
}

/// Until all is written, or nobody reads it any more.
void feed(const Handle& pipe, const std::string& input) {
  std::size_t done = 0;
  DWORD count = 0;
  while (done < input.size() && ::WriteFile(pipe.get(), input.data() + done,
                                            static_cast<DWORD>(input.size() - done), &count, nullptr)) {
    done += count;
  }
}

/// The first `most` bytes of what comes until nobody writes any more; a further one sets the event.
std::string readAll(const Handle& pipe, std::size_t most, HANDLE tooMuch) {
  std::string text;
  std::array<char, 16'384> bytes;
  DWORD count = 0;
  while (pipe && ::ReadFile(pipe.get(), bytes.data(), bytes.size(), &count, nullptr)) {
    const std::size_t room = most - text.size();
    text.append(bytes.data(), std::min<std::size_t>(count, room));
    if (count > room && tooMuch != nullptr) ::SetEvent(tooMuch);
  }
  return text;
}

bool isSet(HANDLE event) { return ::WaitForSingleObject(event, 0) == WAIT_OBJECT_0; }

/// A running program, all that it has begun, and its streams.
class Child {
 public:
  explicit Child(const ChildOrder& order) {
    Streams streams(order.isHeard);
    m_process = begin(order, streams, m_job.get());
    streams.closeIts();
    m_feeder = std::async(std::launch::async, [pipe = std::move(streams.input.ours), &order]() mutable {
      feed(pipe, order.input);
      pipe.reset();
    });
    const auto hear = [](Handle pipe, std::size_t most, HANDLE tooMuch) {
      return std::async(std::launch::async,
                        [pipe = std::move(pipe), most, tooMuch] { return readAll(pipe, most, tooMuch); });
    };
    m_output = hear(std::move(streams.output.ours), order.mostOutput, m_tooMuch.get());
    m_errors = hear(std::move(streams.errors.ours), order.mostErrors, nullptr);
  }

  ChildResult run(HANDLE stop, std::chrono::milliseconds patience) {
    const std::array<HANDLE, 3> events{m_process.get(), stop, m_tooMuch.get()};
    const DWORD end = ::WaitForMultipleObjects(static_cast<DWORD>(events.size()), events.data(), FALSE,
                                               static_cast<DWORD>(patience.count()));
    DWORD status = 0;
    if (end == WAIT_OBJECT_0) require(::GetExitCodeProcess(m_process.get(), &status));
    require(::TerminateJobObject(m_job.get(), 1));
    m_feeder.get();
    ChildResult result{ChildEnd::kExited, static_cast<int>(status), m_output.get(), m_errors.get()};
    if (isSet(m_tooMuch.get())) {
      result.end = ChildEnd::kTooMuch;
    } else if (end == WAIT_TIMEOUT) {
      result.end = ChildEnd::kTooLate;
    } else if (end != WAIT_OBJECT_0) {
      result.end = ChildEnd::kStopped;
    } else if (status >= kLeastException) {
      result.end = ChildEnd::kCrashed;
    }
    return result;
  }

 private:
  const Handle m_tooMuch = makeEvent();
  // They end with the job, which is closed first, and are waited for.
  std::future<void> m_feeder;
  std::future<std::string> m_output;
  std::future<std::string> m_errors;
  const Handle m_job = makeJob();
  Handle m_process;
};

}  // namespace

class ChildRunner::Stop {
 public:
  HANDLE event() const { return m_event.get(); }

 private:
  const Handle m_event = makeEvent();
};

ChildRunner::ChildRunner() : m_stop(std::make_unique<Stop>()) {}

ChildRunner::~ChildRunner() = default;

ChildResult ChildRunner::run(const ChildOrder& order) const {
  if (isSet(m_stop->event())) return {ChildEnd::kStopped, 0, {}, {}};
  return Child(order).run(m_stop->event(), order.patience);
}

void ChildRunner::stop() { ::SetEvent(m_stop->event()); }

std::vector<std::string> plainEnvironment() {
  std::array<wchar_t, MAX_PATH> folder{};
  if (::GetWindowsDirectoryW(folder.data(), MAX_PATH) == 0) throw lastSystemFailure();
  const std::string windows = wideToUtf8(folder.data());
  return {"PATH=" + windows + "\\System32;" + windows, "SystemRoot=" + windows};
}

bool isProgram(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(std::filesystem::u8path(path), error);
}

/// Beside the host, wherever a user had it installed.
std::string helperProgram(const std::string& name) {
  const std::string program = (programFile().parent_path() / (name + ".exe")).u8string();
  return isProgram(program) ? program : std::string();
}

}  // namespace host
