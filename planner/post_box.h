#pragma once

#include <deque>
#include <functional>
#include <mutex>

/// The way onto the window's thread: any thread posts work here, and the window does it when it
/// pumps. Work that throws is dropped, and nothing that was behind it.
class PostBox {
 public:
  using Work = std::function<void()>;

  /// `wake` is called, on the thread that posts, when there is something to be pumped, and never
  /// behind `Close`. It must only wake the window. May be empty.
  explicit PostBox(Work wake = {}) : m_wake(std::move(wake)) {}
  PostBox(const PostBox&) = delete;
  PostBox& operator=(const PostBox&) = delete;

  /// Any thread.
  void Post(Work work);

  /// Does what has been posted so far, in its order, and gives how much that was. Only on the
  /// window's thread; work may pump again.
  size_t Pump();

  /// The window has gone: nothing is done any more. What waits, and what still comes, is kept until
  /// this goes, so that whatever it holds is let go on the window's thread.
  void Close();

 private:
  std::mutex m_mutex;  ///< guards what follows
  Work m_wake;
  std::deque<Work> m_waiting;
  bool m_closed = false;
};
