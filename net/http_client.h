#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <stop_token>
#include <string>
#include <string_view>

#include "base/wide_string.h"
#include "io/byte_sink.h"
#include "net/http_transport.h"
#include "net/internet_exception.h"
#include "net/manual_reset_event.h"

/// What servers of web maps are told unless another is asked for: some of them answer browsers
/// only.
inline constexpr std::string_view kDefaultUserAgent = "Mozilla/5.0 (compatible; MSIE 9.0; Win32)";

/// The largest reply of a service: 64 MiB. Longer ones end with 122.
inline constexpr uint64_t kServiceBodyLimit = uint64_t{64} << 20;
/// For downloads.
inline constexpr uint64_t kNoBodyLimit = 0;

/// How a client behaves. Services of ours give `kProductName` as user agent.
struct HttpOptions {
  std::string userAgent{kDefaultUserAgent};
  uint64_t bodyLimit = kServiceBodyLimit;  ///< bytes; 0: none
  uint32_t connectTimeoutMs = 30'000;
  uint32_t idleTimeoutMs = 60'000;  ///< without a byte in either direction
  uint32_t lagMs = 120'000;         ///< behind a line of `kSlowestLine`; 0: without limit
  uint32_t longestMs = 1'800'000;   ///< in all, redirects included; 0: without limit
  int32_t waitMs = kWaitForever;    ///< the calls that wait do so this long; then 12002
  std::stop_token stop = {};        ///< ends the calls that wait, with 12017
};

/// The connections of one client, kept for its next request. Nothing happens before the first.
class CHttpSession {
 public:
  explicit CHttpSession(HttpOptions options);
  ~CHttpSession();
  CHttpSession(const CHttpSession&) = delete;
  CHttpSession& operator=(const CHttpSession&) = delete;

  /// What carries the requests, loaded at the first call. Throws 126 where it is not installed.
  HttpTransport& Transport();
  /// Null before the first request.
  HttpTransport* OpenTransport() const { return m_transport; }

  uint64_t Handle() const { return m_handle; }
  const HttpOptions& Options() const { return m_options; }

 private:
  const HttpOptions m_options;
  std::atomic<HttpTransport*> m_transport = nullptr;
  uint64_t m_handle = 0;
};

/// The server that a session talks to.
class CHttpConnection {
 public:
  explicit CHttpConnection(CHttpSession& session) : m_session(session) {}

  /// Throws 6 when it is open already, 12005 for a host that no server can have.
  void Open(const std::string& host, uint16_t port, bool secure);
  void Close() { m_host.clear(); }

  CHttpSession& Session() const { return m_session; }
  const std::string& Host() const { return m_host; }
  uint16_t Port() const { return m_port; }
  bool IsSecure() const { return m_secure; }

 private:
  CHttpSession& m_session;
  std::string m_host;  ///< empty while closed
  uint16_t m_port = 80;
  bool m_secure = false;
};

/// The one request of a client. Its body goes to the sink and its completion is called on the
/// background thread, which serves all clients: neither may wait for anything.
class CHttpRequest final : private HttpTransferEvents {
 public:
  /// Called once for each request that was sent, when it has ended, with its failure (code 0: none;
  /// 12017: cancelled). It may start the client's next request. An exception that leaves it becomes
  /// the failure of the request.
  using Completion = std::function<void(CHttpRequest&, const CInternetException&)>;

  explicit CHttpRequest(CHttpConnection& connection) : m_connection(connection) {}
  /// Cancels, and waits until the completion has returned.
  ~CHttpRequest() override;
  CHttpRequest(const CHttpRequest&) = delete;
  CHttpRequest& operator=(const CHttpRequest&) = delete;

  void SetCompletion(Completion completion) { m_completion = std::move(completion); }

  /// Throws 6 when a request is open or about to end, 87 for a header that would not stay on its
  /// line, 12005 for a path that needs escaping.
  void Send(ByteSink& sink, const std::string& path, const std::string& postData,
            const std::string& referrer, const std::string& hostHeader,
            const HttpHeaders& extraHeaders);

  /// Waits until the request has ended without its completion starting another one. Returns false
  /// when the time limit, in milliseconds, has passed first. Throws the request's failure, unless
  /// it was cancelled. Throws 1131 on the background thread, unless there is nothing to wait for.
  bool Wait(int32_t timeoutMs);
  /// The number of the last request's failure, also of a cancelled one; 0 for none.
  uint32_t FailureCode() const;

  /// Ends the request without waiting for anything.
  void Close();

  /// Ends the request. When it returns, nothing more reaches the sink; the completion may still be
  /// running. Inside the sink it does not wait for that.
  void Cancel();

  /// Bytes of the body that went to the sink so far.
  uint64_t TotalRead() const;
  /// The status of the reply's first line when the request has ended, 0 without a reply. It says
  /// nothing about success: the body of every status is a body.
  uint32_t HttpStatus() const;

  /// Set while no request is on its way.
  const ManualResetEvent& ClosedEvent() const { return m_closedEvent; }
  /// Set while no chain of requests is on its way, completions included.
  const ManualResetEvent& DoneEvent() const { return m_doneEvent; }

 private:
  void OnBody(std::string_view bytes) override;
  void OnEnd(uint32_t code, uint32_t httpStatus) override;
  void StoreFailure(const CInternetException& failure);
  bool IsOnTransportThread() const;

  CHttpConnection& m_connection;
  Completion m_completion;
  ByteSink* m_sink = nullptr;

  mutable std::mutex m_lock;  ///< guards what follows
  CInternetException m_failure{0};
  uint64_t m_totalRead = 0;
  uint32_t m_httpStatus = 0;
  uint64_t m_requestHandle = 0;  ///< 0: no request is open
  bool m_finished = true;
  ManualResetEvent m_closedEvent{true};
  ManualResetEvent m_doneEvent{true};
};

/// One request at a time; a later one replaces it. Destroyed while a request runs, it cancels it
/// and waits for its completion, so it must not be destroyed by its own completion.
class CHttpClient {
 public:
  explicit CHttpClient(HttpOptions options = {});

  /// To be called while no request is on its way.
  void SetCompletion(CHttpRequest::Completion completion);

  /// Starts a request and returns. `sink` must live until it has ended. `url` is escaped already;
  /// one without a scheme is plain HTTP. An empty `postData` makes a GET, an empty `referrer` sends
  /// none, an empty `hostHeader` the host of the address. `extraHeaders` are for services that ask
  /// for headers of their own, like a key; they follow the others.
  /// Throws CInternetException for what is known to fail.
  void Start(ByteSink& sink, std::string_view url, const std::string& postData = {},
             const std::string& referrer = {}, const std::string& hostHeader = {},
             const HttpHeaders& extraHeaders = {});

  /// As those of the request.
  bool Wait(int32_t timeoutMs) { return m_request.Wait(timeoutMs); }
  void Cancel() { m_request.Cancel(); }

  CHttpRequest& Request() { return m_request; }

 private:
  std::mutex m_startMutex;  ///< a completion may start one while somebody else does
  CHttpRequest::Completion m_completion;
  CHttpSession m_session;
  CHttpConnection m_connection{m_session};
  CHttpRequest m_request{m_connection};
};

// Requests that wait until they have ended, each with a client of its own. All throw
// CInternetException, on the background thread 1131 and nothing is sent. An address is plain text;
// escapes that stand in it are left alone.

/// The body of a reply.
std::string HttpGet(const WideString& url, const std::string& referrer = {},
                    const std::string& hostHeader = {}, const HttpOptions& options = {},
                    const HttpHeaders& extraHeaders = {});

/// Puts the body of a reply into the sink. Returns its length in bytes.
uint64_t HttpFetch(ByteSink& sink, const WideString& url, const std::string& postData = {},
                   const std::string& referrer = {}, const std::string& hostHeader = {},
                   const HttpOptions& options = {}, const HttpHeaders& extraHeaders = {});

/// Puts a body, of any length and however long it takes, into a file and returns its path; empty
/// when nothing was received. Without a target the file is that of the cache of this user, where
/// what was fetched once is found without a request, however old. A target passes the cache by;
/// what came before a failure stays in it. Throws the platform's error code for files that cannot
/// be written.
WideString HttpDownload(const std::string& url, const WideString& target = {},
                        const std::string& referrer = {}, HttpOptions options = {});
