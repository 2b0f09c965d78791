#include "net/http_server.h"

#include <utility>

#include <fmt/format.h>

#include "base/status.h"
#include "platform/program_module.h"

namespace {

constexpr int kForbidden = 403;

}  // namespace

// The relay first: it hands on to the server.
CHttpServer::~CHttpServer() {
  m_relay.reset();
  m_server.reset();
}

uint32_t CHttpServer::Start(uint16_t port) {
  static const auto start = reinterpret_cast<LocalServerModuleEntry>(
      LoadModuleEntry(kLocalServerModule, kLocalServerModuleEntry));
  if (!start) return kStatusModuleMissing;
  m_server.reset(start(port, *this));
  if (!m_server) return kStatusPortTaken;
  m_relay = std::make_unique<LoopbackRelay>(m_server->Port());
  return kStatusSuccess;
}

void CHttpServer::AddContent(const std::string& uri, std::string body) {
  const std::lock_guard lock(m_lock);
  m_contents[uri] = std::move(body);
}

void CHttpServer::RemoveContent(const std::string& uri) {
  const std::lock_guard lock(m_lock);
  m_contents.erase(uri);
  m_fetched.notify_all();
}

bool CHttpServer::TakeContent(const std::string& uri, std::string& body) {
  const std::lock_guard lock(m_lock);
  const auto found = m_contents.find(uri);
  if (found == m_contents.end()) return false;
  body = std::move(found->second);
  m_contents.erase(found);
  return true;
}

bool CHttpServer::WaitUntilFetched(std::chrono::milliseconds time) {
  std::unique_lock lock(m_lock);
  return m_fetched.wait_for(lock, time,
                            [this] { return m_contents.empty() && m_answersOnTheWay == 0; });
}

void CHttpServer::OnAnswered() {
  const std::lock_guard lock(m_lock);
  --m_answersOnTheWay;
  m_fetched.notify_all();
}

void CHttpServer::OnUri(HttpServerConnection& connection, const HttpServerRequest& request) {
  {
    const std::lock_guard lock(m_lock);
    ++m_answersOnTheWay;
  }
  const bool isForUs = request.host == fmt::format("127.0.0.1:{}", Port()) ||
                       request.host == fmt::format("[::1]:{}", Port());
  std::string body;
  if (!isForUs || !TakeContent(request.uri, body)) {
    connection.SendError(kForbidden, "Forbidden");
    return;
  }
  connection.Write(
      fmt::format("HTTP/1.1 200 OK\r\nContent-Type: {}\r\nContent-Length: {}\r\n"
                  "Connection: close\r\n\r\n",
                  connection.MimeType(request.uri), body.size()));
  connection.Write(std::move(body));
}
