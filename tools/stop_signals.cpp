#include "tools/stop_signals.hpp"

#include <poll.h>

#include <csignal>
#include <cstdlib>

namespace xo::tool {
namespace {

constexpr int kStopSignals[] = {SIGINT, SIGTERM, SIGHUP};

/// The signal that came, 0 for none. Written by the handler alone.
volatile std::sig_atomic_t stopSignal = 0;

}  // namespace

void CatchStopSignals() {
  struct sigaction action {};
  action.sa_handler = [](int signal) { stopSignal = signal; };
  for (int const signal : kStopSignals) {
    struct sigaction present {};
    // A signal that the tool was started to ignore, as under nohup, stays ignored.
    if (sigaction(signal, nullptr, &present) == 0 && present.sa_handler != SIG_IGN) {
      sigaction(signal, &action, nullptr);
    }
  }
}

void ThrowIfStopped() {
  if (stopSignal != 0) throw Stopped{stopSignal};
}

void WaitForInput(int descriptor) {
  sigset_t stopping;
  sigset_t usual;
  sigemptyset(&stopping);
  for (int const signal : kStopSignals) sigaddset(&stopping, signal);
  // Signals are held back but for the wait itself, so that none slips in between test and wait.
  sigprocmask(SIG_BLOCK, &stopping, &usual);
  pollfd input{descriptor, POLLIN, 0};
  if (stopSignal == 0) ppoll(&input, 1, nullptr, &usual);
  sigprocmask(SIG_SETMASK, &usual, nullptr);
  ThrowIfStopped();
}

void EndBySignal(int signal) {
  std::signal(signal, SIG_DFL);
  std::raise(signal);
  std::abort();
}

}  // namespace xo::tool
