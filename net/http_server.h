#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "platform/loopback_relay.h"

/// The port from which companion programs fetch.
inline constexpr uint16_t kHttpServerPort = 8099;

/// A status of `CHttpServer::Start`: WSAEADDRINUSE.
inline constexpr uint32_t kStatusPortTaken = 10048;

/// Where a request is answered.
class HttpServerConnection {
 public:
  virtual ~HttpServerConnection() = default;

  /// The library's own error reply with this reason and text.
  virtual void SendError(int status, const char* reason) = 0;
  virtual void Write(std::string bytes) = 0;
  /// The MIME type that goes with the extension of a path.
  virtual std::string MimeType(const std::string& uri) const = 0;
};

/// What is asked for.
struct HttpServerRequest {
  std::string uri;   ///< decoded, from its slash on, without a query
  std::string host;  ///< the Host header; empty when there is none
};

class IHttpServerUriListener {
 public:
  virtual ~IHttpServerUriListener() = default;

  /// Answers a request. Called on several threads at once.
  virtual void OnUri(HttpServerConnection& connection, const HttpServerRequest& request) = 0;
  /// The answer to a request has gone out, as far as the client has read it. Called once behind
  /// each `OnUri`, on its thread.
  virtual void OnAnswered() = 0;
};

/// The running server. Destroyed, it stops within a second, and asks nobody any more.
class LocalServer {
 public:
  virtual ~LocalServer() = default;
  virtual uint16_t Port() const = 0;
};

/// Name of the module that brings the server, and of its one function, which gives null when the
/// port cannot be had. Module and program are always built together.
inline constexpr char kLocalServerModule[] = "corvane_local_server";
inline constexpr char kLocalServerModuleEntry[] = "CorvaneLocalServer";
using LocalServerModuleEntry = LocalServer* (*)(uint16_t port, IHttpServerUriListener& listener);

/// Hands out blobs of memory to programs on this machine, each of them once. It listens on
/// 127.0.0.1 and, where the machine has it, on ::1; a request that was made out to any other name
/// is refused, since a web page could have got here through a name that it has bound anew.
class CHttpServer final : public IHttpServerUriListener {
 public:
  CHttpServer() = default;
  ~CHttpServer() override;
  CHttpServer(const CHttpServer&) = delete;
  CHttpServer& operator=(const CHttpServer&) = delete;

  /// Returns 0, `kStatusPortTaken`, or `kStatusModuleMissing`. Port 0 takes any that is free.
  uint32_t Start(uint16_t port = kHttpServerPort);
  /// 0 while it does not run.
  uint16_t Port() const { return m_server ? m_server->Port() : uint16_t{0}; }

  /// Offers a blob, in place of an older one of the same name. `uri` begins with a slash.
  void AddContent(const std::string& uri, std::string body);

  /// Offers the blob of this name no more.
  void RemoveContent(const std::string& uri);

  /// Waits until every blob has been fetched, to its last byte. False when the time is over first.
  bool WaitUntilFetched(std::chrono::milliseconds time);

  void OnUri(HttpServerConnection& connection, const HttpServerRequest& request) override;
  void OnAnswered() override;

 private:
  bool TakeContent(const std::string& uri, std::string& body);

  std::mutex m_lock;  ///< guards the next three
  std::condition_variable m_fetched;
  std::map<std::string, std::string> m_contents;
  size_t m_answersOnTheWay = 0;
  std::unique_ptr<LocalServer> m_server;
  std::unique_ptr<LoopbackRelay> m_relay;
};
