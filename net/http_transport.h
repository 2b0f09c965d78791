#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What carries out the requests of `net/http_client.h`: one background thread behind a module that
// is loaded at the first request. Module and program are always built together.

/// Names and values, in the order in which they are sent.
using HttpHeaders = std::vector<std::pair<std::string, std::string>>;

/// One request. All parts are checked: none can break out of its place in the request.
struct HttpTransfer {
  std::string host;
  std::string path;  ///< without its first "/"
  uint16_t port = 80;
  bool secure = false;
  std::string userAgent;
  std::string hostHeader;    ///< empty: the host, with the port where it is not the scheme's own
  std::string referrer;      ///< empty: none
  HttpHeaders extraHeaders;  ///< sent to the request's own server only, not where it redirects to
  std::string postData;      ///< empty: GET
  std::string caFile;        ///< authorities to trust instead of the system's; empty: the system's
  uint64_t bodyLimit = 0;    ///< bytes; 0: none
  uint32_t connectTimeoutMs = 0;
  uint32_t idleTimeoutMs = 0;  ///< without a byte in either direction
  uint32_t lagMs = 0;          ///< behind a line of `kSlowestLine`; 0: without limit
  uint32_t longestMs = 0;      ///< in all, redirects included; 0: without limit
};

/// Bytes a second, in both directions together. Slower than any line on which one would plan a
/// trip: only a server that keeps us waiting on purpose falls behind it for long.
inline constexpr uint32_t kSlowestLine = 1024;

/// Where a transfer tells what becomes of it, always on the background thread.
class HttpTransferEvents {
 public:
  virtual ~HttpTransferEvents() = default;

  /// A piece of the body.
  virtual void OnBody(std::string_view bytes) = 0;

  /// Called once for each transfer, last. `code` is 0 or an InternetError; `httpStatus` is that of
  /// the reply, 0 without one.
  virtual void OnEnd(uint32_t code, uint32_t httpStatus) = 0;
};

/// Safe to call from every thread. No call waits for the network.
class HttpTransport {
 public:
  virtual ~HttpTransport() = default;

  /// A session keeps the connections of its transfers for the next one; never 0.
  virtual uint64_t OpenSession() = 0;
  /// All transfers of the session must have ended.
  virtual void CloseSession(uint64_t session) = 0;

  /// Starts a transfer; the number it gives is never 0. `events` must live until `OnEnd`.
  virtual uint64_t Begin(uint64_t session, HttpTransfer transfer, HttpTransferEvents& events) = 0;
  /// Ends the transfer with 12017, unless it has ended already.
  virtual void Cancel(uint64_t transfer) = 0;

  virtual bool IsOnOwnThread() const = 0;
};

inline constexpr char kHttpModule[] = "corvane_http";
/// Name of the module's one function, which takes nothing and gives the transport. It is never
/// destroyed. Null when it could not start.
inline constexpr char kHttpModuleEntry[] = "CorvaneHttpModule";
using HttpModuleEntry = HttpTransport* (*)();
