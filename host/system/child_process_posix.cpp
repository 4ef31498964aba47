#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include "system/child_process.h"
#include "system_reason.h"

namespace host {

namespace {

using Clock = std::chrono::steady_clock;

/// More than a pipe holds, so that what was written before an end is had; and no more, so that a program that
/// never stops writing keeps nobody.
constexpr int kReads = 64;

void require(int error) {
  if (error == 0) return;
  errno = error;
  throw lastSystemFailure();
}

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : m_number(number) {
    if (number < 0) throw lastSystemFailure();
  }
  Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(m_number, other.m_number);
    return *this;
  }
  ~Descriptor() { close(); }

  void close() {
    if (m_number >= 0) ::close(m_number);
    m_number = -1;
  }
  int number() const { return m_number; }
  bool isOpen() const { return m_number >= 0; }

 private:
  int m_number = -1;
};

/// A file in memory, from which a program that does not read it holds up nobody.
Descriptor fileOf(const std::string& text) {
  Descriptor file(::memfd_create("input", MFD_CLOEXEC));
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t count = ::write(file.number(), text.data() + done, text.size() - done);
    if (count < 0) throw lastSystemFailure();
    done += static_cast<std::size_t>(count);
  }
  if (::lseek(file.number(), 0, SEEK_SET) != 0) throw lastSystemFailure();
  return file;
}

/// What a program writes to, and where that is read.
struct Stream {
  explicit Stream(bool isHeard) {
    if (!isHeard) {
      writeEnd = Descriptor(::open("/dev/null", O_WRONLY | O_CLOEXEC));
      return;
    }
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw lastSystemFailure();
    readEnd = Descriptor(ends[0]);
    writeEnd = Descriptor(ends[1]);
    if (::fcntl(ends[0], F_SETFL, O_NONBLOCK) != 0) throw lastSystemFailure();
  }

  Descriptor readEnd;
  Descriptor writeEnd;
};

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

class FileActions {
 public:
  FileActions() { require(::posix_spawn_file_actions_init(&m_actions)); }
  ~FileActions() { ::posix_spawn_file_actions_destroy(&m_actions); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;

  posix_spawn_file_actions_t* get() { return &m_actions; }

 private:
  posix_spawn_file_actions_t m_actions{};
};

/// A process group of its own, and no signal blocked or ignored.
class Attributes {
 public:
  Attributes() {
    require(::posix_spawnattr_init(&m_attributes));
    sigset_t none;
    sigset_t all;
    ::sigemptyset(&none);
    ::sigfillset(&all);
    require(::posix_spawnattr_setsigmask(&m_attributes, &none));
    require(::posix_spawnattr_setsigdefault(&m_attributes, &all));
    require(::posix_spawnattr_setpgroup(&m_attributes, 0));
    require(::posix_spawnattr_setflags(
        &m_attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
  }
  ~Attributes() { ::posix_spawnattr_destroy(&m_attributes); }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;

  const posix_spawnattr_t* get() const { return &m_attributes; }

 private:
  posix_spawnattr_t m_attributes{};
};

pid_t spawn(const ChildOrder& order, const Descriptor& input, const Descriptor& output,
            const Descriptor& errors) {
  if (order.words.empty()) throw std::runtime_error("no program is named");
  FileActions actions;
  require(::posix_spawn_file_actions_adddup2(actions.get(), input.number(), STDIN_FILENO));
  require(::posix_spawn_file_actions_adddup2(actions.get(), output.number(), STDOUT_FILENO));
  require(::posix_spawn_file_actions_adddup2(actions.get(), errors.number(), STDERR_FILENO));
  require(::posix_spawn_file_actions_addclosefrom_np(actions.get(), STDERR_FILENO + 1));
  if (!order.folder.empty()) {
    require(::posix_spawn_file_actions_addchdir_np(actions.get(), order.folder.c_str()));
  }
  const Attributes attributes;
  const std::vector<char*> words = pointersTo(order.words);
  const std::vector<char*> environment = pointersTo(order.environment);
  pid_t process = 0;
  require(::posix_spawn(&process, words.front(), actions.get(), attributes.get(), words.data(),
                        environment.data()));
  return process;
}

/// Takes what is there. False at the end of the stream.
template <class Take>
bool readSome(const Descriptor& from, Take take) {
  std::array<char, 16'384> bytes;
  for (int i = 0; i < kReads; ++i) {
    const ssize_t count = ::read(from.number(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno == EAGAIN;
    if (count == 0) return false;
    take(std::string_view(bytes.data(), static_cast<std::size_t>(count)));
  }
  return true;
}

/// A running program, its process group and its streams.
class Child {
 public:
  explicit Child(const ChildOrder& order) : m_order(order) {
    const Descriptor input = fileOf(order.input);
    Stream output(order.isHeard);
    Stream errors(order.isHeard);
    m_process = spawn(order, input, output.writeEnd, errors.writeEnd);
    m_output = std::move(output.readEnd);
    m_errors = std::move(errors.readEnd);
  }
  ~Child() { reap(); }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  ChildResult run(const Descriptor& stop) {
    m_result.end = await(stop);
    const int status = reap();
    if (m_result.end == ChildEnd::kExited) {
      const bool isCrash = WIFSIGNALED(status);
      m_result.status = isCrash ? WTERMSIG(status) : WEXITSTATUS(status);
      if (isCrash) m_result.end = ChildEnd::kCrashed;
    }
    return std::move(m_result);
  }

 private:
  /// Until it has ended, or has to. It stays a zombie, whose number nobody else gets.
  ChildEnd await(const Descriptor& stop) {
    const Descriptor end(static_cast<int>(::syscall(SYS_pidfd_open, m_process, 0)));
    const Clock::time_point deadline = Clock::now() + m_order.patience;
    for (;;) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
      if (left.count() <= 0) return ChildEnd::kTooLate;
      std::array<pollfd, 4> events{pollfd{end.number(), POLLIN, 0}, pollfd{stop.number(), POLLIN, 0},
                                   pollfd{m_output.number(), POLLIN, 0},
                                   pollfd{m_errors.number(), POLLIN, 0}};
      if (::poll(events.data(), events.size(), static_cast<int>(left.count())) < 0 && errno != EINTR) {
        throw lastSystemFailure();
      }
      drain();
      if (m_result.output.size() > m_order.mostOutput) return ChildEnd::kTooMuch;
      if (events[0].revents != 0) return ChildEnd::kExited;
      if (events[1].revents != 0) return ChildEnd::kStopped;
    }
  }

  void drain() {
    const auto takeOutput = [this](std::string_view bytes) {
      m_result.output += bytes.substr(0, m_order.mostOutput + 1 - m_result.output.size());
    };
    const auto takeErrors = [this](std::string_view bytes) {
      m_result.errors += bytes.substr(0, m_order.mostErrors - m_result.errors.size());
    };
    if (m_output.isOpen() && !readSome(m_output, takeOutput)) m_output.close();
    if (m_errors.isOpen() && !readSome(m_errors, takeErrors)) m_errors.close();
  }

  /// With all that it has begun.
  int reap() {
    if (m_process == 0) return 0;
    ::kill(-m_process, SIGKILL);
    int status = 0;
    while (::waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
    }
    m_process = 0;
    return status;
  }

  const ChildOrder& m_order;
  pid_t m_process = 0;
  Descriptor m_output;
  Descriptor m_errors;
  ChildResult m_result;
};

}  // namespace

class ChildRunner::Stop {
 public:
  const Descriptor& event() const { return m_event; }

  bool isSet() const {
    pollfd event{m_event.number(), POLLIN, 0};
    return ::poll(&event, 1, 0) == 1;
  }

  void set() {
    const std::uint64_t one = 1;
    (void)!::write(m_event.number(), &one, sizeof one);
  }

 private:
  const Descriptor m_event{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
};

ChildRunner::ChildRunner() : m_stop(std::make_unique<Stop>()) {}

ChildRunner::~ChildRunner() = default;

ChildResult ChildRunner::run(const ChildOrder& order) const {
  if (m_stop->isSet()) return {ChildEnd::kStopped, 0, {}, {}};
  return Child(order).run(m_stop->event());
}

void ChildRunner::stop() { m_stop->set(); }

std::vector<std::string> plainEnvironment() {
  return {"PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"};
}

bool isProgram(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

std::string helperProgram(const std::string& name) {
  std::error_code error;
  const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", error);
  for (const auto& folder : {own.parent_path(), std::filesystem::path(MIRN_LIBRARY_FOLDER) / "mirn"}) {
    const std::string program = (folder / name).string();
    if (!folder.empty() && isProgram(program)) return program;
  }
  return {};
}

}  // namespace host
