#pragma once

namespace xo::tool {

/// The user asked the tool to stop; `signal` is how. `main` lets the process end by it once
/// everything is put in order.
struct Stopped {
  int signal;
};

/// Catches the signals by which users stop a program, so that a build cut short can clean up. They
/// interrupt waiting system calls.
void CatchStopSignals();

/// Throws `Stopped` if such a signal came.
void ThrowIfStopped();

/// Waits until there is something to read, or the end of it. Throws `Stopped` if such a signal came
/// or comes, be it in the very moment in which the wait begins.
void WaitForInput(int descriptor);

/// Ends the process by `signal`, as if it had never been caught.
[[noreturn]] void EndBySignal(int signal);

}  // namespace xo::tool
