#include "platform/interruption.h"

#include <csignal>
#include <cstddef>
#include <iterator>

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t interruptions = 0;
// The signal that a scope has kept; 0 for none.
volatile std::sig_atomic_t pendingSignal = 0;

void NoteInterruption(int /*signal*/) { interruptions = 1; }

void KeepSignal(int signal) { pendingSignal = signal; }

}  // namespace

/// What the signals did before.
struct InterruptionWatch::Former {
  struct sigaction actions[std::size(kSignals)];
};

InterruptionWatch::InterruptionWatch() : m_former(std::make_unique<Former>()) {
  struct sigaction former {};
  sigaction(kSignals[0], nullptr, &former);
  if (former.sa_handler != NoteInterruption) interruptions = 0;
  struct sigaction noting {};
  noting.sa_handler = NoteInterruption;
  for (size_t i = 0; i < std::size(kSignals); ++i)
    sigaction(kSignals[i], &noting, &m_former->actions[i]);
}

InterruptionWatch::~InterruptionWatch() {
  for (size_t i = 0; i < std::size(kSignals); ++i)
    sigaction(kSignals[i], &m_former->actions[i], nullptr);
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): asked of a watch that runs.
bool InterruptionWatch::IsInterrupted() const { return interruptions != 0; }

InterruptionScope::InterruptionScope() {
  struct sigaction keeping {};
  keeping.sa_handler = KeepSignal;
  // A second one finds the system's own answer. Calls that wait are not begun again.
  keeping.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int signal : kSignals) {
    struct sigaction former {};
    // Who started us may want us to live on, as nohup does.
    if (sigaction(signal, nullptr, &former) == 0 && former.sa_handler == SIG_DFL)
      sigaction(signal, &keeping, nullptr);
  }
}

InterruptionScope::~InterruptionScope() {
  for (const int signal : kSignals) {
    struct sigaction current {};
    if (sigaction(signal, nullptr, &current) == 0 && current.sa_handler == KeepSignal)
      std::signal(signal, SIG_DFL);
  }
  if (pendingSignal != 0) raise(pendingSignal);
}

bool InterruptionScope::IsPending() { return pendingSignal != 0; }
