#include "net/request_queue.h"

#include <utility>

#include "base/text.h"
#include "net/url.h"

CHttpRequestQueue::CHttpRequestQueue(HttpOptions options) : m_client(std::move(options)) {
  m_client.SetCompletion(
      [this](CHttpRequest&, const CInternetException& failure) { OnCompleted(failure.code); });
}

CHttpRequestQueue::~CHttpRequestQueue() {
  {
    const std::scoped_lock lock(m_stateMutex, m_pendingMutex);
    m_pending.clear();
    m_currentCallback.reset();
  }
  m_client.Cancel();
}

void CHttpRequestQueue::EnqueueRequest(CPendingHttpRequest request) {
  const std::lock_guard lock(m_stateMutex);
  if (!m_currentCallback) {
    Start(request);
    return;
  }
  const std::lock_guard pendingLock(m_pendingMutex);
  while (m_pending.size() >= kLimit) m_pending.pop_back();
  m_pending.push_front(std::move(request));
}

// With the state locked. When it throws, the queue is idle and the request as it was.
void CHttpRequestQueue::Start(CPendingHttpRequest& request) {
  m_body = std::make_unique<StringSink>();
  m_client.Start(*m_body, UrlEscapeOnce(request.url), {}, request.referrer, request.host);
  m_currentCallback = std::move(request.callback);
}

bool CHttpRequestQueue::TakeNext(CPendingHttpRequest& request) {
  const std::lock_guard lock(m_pendingMutex);
  if (m_pending.empty()) return false;
  request = std::move(m_pending.front());
  m_pending.pop_front();
  return true;
}

void CHttpRequestQueue::OnCompleted(uint32_t code) {
  const std::lock_guard lock(m_stateMutex);
  if (m_currentCallback) m_currentCallback->Post(code, Utf8ToWideLossy(m_body->Bytes()));
  m_currentCallback.reset();
  CPendingHttpRequest next;
  while (!m_currentCallback && TakeNext(next)) {
    try {
      Start(next);
    } catch (const CInternetException& failure) {
      next.callback->Post(failure.code, {});
    }
  }
}

void HttpRequestQueues::EnqueueRequest(int32_t queueNumber, std::string url, std::string referrer,
                                       std::string host, std::unique_ptr<PageFunction> callback) {
  m_queues[queueNumber].EnqueueRequest(
      {std::move(url), std::move(referrer), std::move(host), std::move(callback)});
}
