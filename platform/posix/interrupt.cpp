#include "platform/interrupt.h"

#include <array>
#include <csignal>

namespace {

constexpr std::array kEndingSignals = {SIGINT, SIGTERM, SIGHUP};

// The signal that has come; 0 for none.
volatile std::sig_atomic_t pendingSignal = 0;

void KeepSignal(int signal) { pendingSignal = signal; }

}  // namespace

InterruptScope::InterruptScope() {
  struct sigaction action {};
  action.sa_handler = KeepSignal;
  // A second one finds the system's own answer. Calls that wait are not begun again.
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int signal : kEndingSignals) {
    struct sigaction former {};
    // Who started us may want us to live on, as nohup does.
    if (sigaction(signal, nullptr, &former) == 0 && former.sa_handler == SIG_DFL)
      sigaction(signal, &action, nullptr);
  }
}

InterruptScope::~InterruptScope() {
  for (const int signal : kEndingSignals) {
    struct sigaction current {};
    if (sigaction(signal, nullptr, &current) == 0 && current.sa_handler == KeepSignal)
      std::signal(signal, SIG_DFL);
  }
  if (pendingSignal != 0) raise(pendingSignal);
}

bool InterruptScope::IsPending() { return pendingSignal != 0; }
