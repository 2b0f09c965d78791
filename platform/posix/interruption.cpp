#include "platform/interruption.h"

#include <csignal>
#include <cstddef>
#include <iterator>

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t interruptions = 0;

void NoteInterruption(int /*signal*/) { interruptions = 1; }

}  // namespace

/// What the signals did before.
struct InterruptionWatch::Former {
  struct sigaction actions[std::size(kSignals)];
};

InterruptionWatch::InterruptionWatch() : m_former(std::make_unique<Former>()) {
  interruptions = 0;
  struct sigaction noting {};
  noting.sa_handler = NoteInterruption;
  for (size_t i = 0; i < std::size(kSignals); ++i)
    sigaction(kSignals[i], &noting, &m_former->actions[i]);
}

InterruptionWatch::~InterruptionWatch() {
  for (size_t i = 0; i < std::size(kSignals); ++i)
    sigaction(kSignals[i], &m_former->actions[i], nullptr);
}

bool InterruptionWatch::IsInterrupted() const { return interruptions != 0; }
