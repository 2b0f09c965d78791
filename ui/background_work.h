#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <stop_token>

#include "base/wide_string.h"

class QWidget;

/// How far work in the background has come; any thread.
struct WorkProgress {
  std::atomic<uint64_t> done = 0;
  std::atomic<uint64_t> inAll = 0;  ///< 0: not known
};

/// Does work on a thread of its own and comes back when it has ended; the window lives meanwhile,
/// though it takes no input. When it takes longer than a moment, a window tells `textId`, shows the
/// progress, and can ask the work to stop.
void RunInBackground(QWidget* parent, uint32_t textId, const WorkProgress& progress,
                     std::stop_source& stop, const std::function<void()>& work);

/// Runs a function on the window's thread and waits for its end; right here when this is it.
void RunOnWindowThread(const std::function<void()>& function);
