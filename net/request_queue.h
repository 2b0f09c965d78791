#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "base/wide_string.h"
#include "io/byte_sink.h"
#include "net/http_client.h"

/// The function of the planner's page that waits for the answer to a request.
class PageFunction {
 public:
  /// Releases the function without calling it. On the page's thread or on the HTTP thread.
  virtual ~PageFunction() = default;

  /// Has the function called on the page's own thread with the number of the failure (0: none) and
  /// the text of the body; does nothing when the page is gone. Called at most once, on the HTTP
  /// thread, which must not wait for the page.
  virtual void Post(uint32_t code, WideString body) = 0;
};

/// A request that waits for its turn.
struct CPendingHttpRequest {
  std::string url;
  std::string referrer;
  std::string host;
  std::unique_ptr<PageFunction> callback;
};

/// The requests of one queue of the page, one at a time. The newest goes next and at most two wait:
/// of a burst of requests for moving positions only the last ones are of use.
class CHttpRequestQueue {
 public:
  explicit CHttpRequestQueue(HttpOptions options = {});
  /// Forgets what waits and cancels what runs; after it no function is called.
  ~CHttpRequestQueue();
  CHttpRequestQueue(const CHttpRequestQueue&) = delete;
  CHttpRequestQueue& operator=(const CHttpRequestQueue&) = delete;

  /// Sends the request, or has it wait where another runs; then the oldest of too many is released
  /// uncalled. Throws CInternetException for a request that cannot be sent at all, whose function
  /// is released too.
  void EnqueueRequest(CPendingHttpRequest request);

 private:
  void OnCompleted(uint32_t code);
  bool TakeNext(CPendingHttpRequest& request);
  void Start(CPendingHttpRequest& request);

  static constexpr size_t kLimit = 2;

  std::mutex m_stateMutex;                          ///< taken before the other
  std::unique_ptr<PageFunction> m_currentCallback;  ///< null: the queue is idle
  std::unique_ptr<StringSink> m_body;

  std::mutex m_pendingMutex;
  std::deque<CPendingHttpRequest> m_pending;  ///< the front is served next

  CHttpClient m_client;  ///< behind what its completion uses
};

/// The queues of one page by their numbers, each made at its first use. Of the page's thread alone.
class HttpRequestQueues {
 public:
  /// Throws as `CHttpRequestQueue` does.
  void EnqueueRequest(int32_t queueNumber, std::string url, std::string referrer, std::string host,
                      std::unique_ptr<PageFunction> callback);

 private:
  std::map<int32_t, CHttpRequestQueue> m_queues;
};
