#include "tools/crash_guard.hpp"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <string>

#include "tools/trouble.hpp"

namespace xo::tool {
namespace {

constexpr std::size_t kLongestMessage = 4096;

/// The whole line, made beforehand: after a crash nothing may be allocated or formatted.
char crashMessage[kLongestMessage];
std::size_t crashMessageSize = 0;

[[noreturn]] void EndWithMessage() {
  // If not even this can be written, the exit code tells.
  [[maybe_unused]] ssize_t const written = write(STDERR_FILENO, crashMessage, crashMessageSize);
  _exit(kTrouble);
}

using Handler = void(int);

#if defined(__SANITIZE_ADDRESS__)
void Handle(Handler*) {}
#else
void Handle(Handler* handler) {
  struct sigaction action {};
  action.sa_handler = handler;
  for (int const signal : {SIGSEGV, SIGBUS, SIGFPE, SIGABRT}) sigaction(signal, &action, nullptr);
}
#endif

}  // namespace

CrashGuard::CrashGuard(std::string_view message) {
  std::string line{"xotm: "};
  line += message.substr(0, kLongestMessage - line.size() - 1);
  line += '\n';
  std::copy(line.begin(), line.end(), crashMessage);
  crashMessageSize = line.size();
  Handle([](int) { EndWithMessage(); });
}

CrashGuard::~CrashGuard() { Handle(SIG_DFL); }

void EndOnLmdbAssertion(MDB_env*, char const*) { EndWithMessage(); }

}  // namespace xo::tool
