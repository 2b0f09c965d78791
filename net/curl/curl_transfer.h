#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <curl/curl.h>

#include "net/http_transport.h"

struct CurlEasyDeleter {
  void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct CurlListDeleter {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
struct CurlUrlDeleter {
  void operator()(CURLU* url) const { curl_url_cleanup(url); }
};
using CurlEasy = std::unique_ptr<CURL, CurlEasyDeleter>;
using CurlList = std::unique_ptr<curl_slist, CurlListDeleter>;
using CurlUrl = std::unique_ptr<CURLU, CurlUrlDeleter>;

/// One request with the redirects that it leads through.
class CurlTransfer {
 public:
  using Clock = std::chrono::steady_clock;

  CurlTransfer(HttpTransfer request, HttpTransferEvents& events)
      : m_request(std::move(request)),
        m_events(events),
        m_end(EndIn(m_request.longestMs)),
        m_lagEnd(EndIn(m_request.lagMs)) {}
  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;

  /// Makes the handle ready to be added. Returns 0 or an InternetError.
  uint32_t Prepare(CURLSH* share, uint64_t id);
  CURL* Handle() const { return m_easy.get(); }

  /// After the handle has ended with `result`: true when it is ready to be added once more, to
  /// follow a redirect; otherwise `code` is 0 or the InternetError.
  bool Continue(CURLcode result, uint32_t& code);

  /// When nothing or too little has happened for too long, or all of it has taken too long. How
  /// long a connection may take is libcurl's to watch.
  Clock::time_point Deadline() const;

  uint32_t HttpStatus() const { return m_status; }
  HttpTransferEvents& Events() const { return m_events; }

 private:
  static Clock::time_point EndIn(uint32_t milliseconds);
  static size_t OnHeader(const char* data, size_t size, size_t count, void* self);
  static size_t OnBody(const char* data, size_t size, size_t count, void* self);
  static int OnConnected(void* self, char*, char*, int, int);
  static int OnProgress(void* self, curl_off_t, curl_off_t received, curl_off_t, curl_off_t sent);

  bool TakeHeader(std::string_view line);
  bool TakeBody(std::string_view bytes);
  bool DecideOnRedirect();
  uint32_t PointTo(CURLU* url);
  void ApplyHeaders(CURLU* url);
  bool Fail(uint32_t code);  ///< always false
  void Touch() { m_lastActivity = Clock::now(); }
  void TakeProgress(curl_off_t moved);

  HttpTransfer m_request;
  HttpTransferEvents& m_events;
  CurlUrl m_url;       ///< where the request goes now
  CurlUrl m_redirect;  ///< where the reply sends it; null: the reply is the one
  CurlList m_headers;
  CurlEasy m_easy;       ///< behind what it points to
  std::string m_origin;  ///< scheme, host and port of the first address
  std::string m_location;
  bool m_isPost = false;
  int m_redirects = 0;
  uint32_t m_status = 0;
  uint32_t m_failure = 0;  ///< found by ourselves; libcurl only knows that a callback refused
  size_t m_headerSize = 0;
  uint64_t m_bodySize = 0;
  bool m_hasBody = false;
  bool m_isConnected = false;
  curl_off_t m_moved = 0;  ///< bytes in both directions, for `OnProgress`
  Clock::time_point m_lastActivity = Clock::now();
  Clock::time_point m_end;     ///< whatever happens
  Clock::time_point m_lagEnd;  ///< put off by every byte, but never beyond the lag
};
