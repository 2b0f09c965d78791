// The module that brings the local server, with CivetWeb.

#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <civetweb.h>

#include "net/http_server.h"

namespace {

using namespace std::chrono_literals;

// CivetWeb looks every two seconds whether it shall stop. A connection has it look at once; clients
// that hold on to theirs are left to a thread of their own after this time.
constexpr auto kStopTime = 500ms;
constexpr auto kPokeInterval = 10ms;

// Keeps what the listener answers: it is sent when the listener has returned, since a client may
// take its time to read.
class Answer final : public HttpServerConnection {
 public:
  void SendError(int status, const char* reason) override {
    m_status = status;
    m_reason = reason;
  }
  void Write(std::string bytes) override { m_pieces.push_back(std::move(bytes)); }
  std::string MimeType(const std::string& uri) const override {
    return mg_get_builtin_mime_type(uri.c_str());
  }

  void SendTo(mg_connection* connection) const {
    if (m_status != 0) mg_send_http_error(connection, m_status, "%s", m_reason.c_str());
    for (const std::string& piece : m_pieces) mg_write(connection, piece.data(), piece.size());
  }

 private:
  int m_status = 0;
  std::string m_reason;
  std::vector<std::string> m_pieces;
};

// What CivetWeb's threads use; it may outlive the server by the time that they take to end.
class Core {
 public:
  explicit Core(IHttpServerUriListener& listener) : m_listener(&listener) {}

  // Every path comes here. A number above 0 says that it was answered.
  static int OnRequest(mg_connection* connection) {
    const mg_request_info* const info = mg_get_request_info(connection);
    const char* const host = mg_get_header(connection, "Host");
    Core& core = *static_cast<Core*>(info->user_data);
    Answer answer;
    bool isAsked = false;
    try {
      core.Ask(answer, {info->local_uri ? info->local_uri : "", host ? host : ""}, isAsked);
    } catch (const std::exception&) {
      answer = Answer();
      answer.SendError(500, "Internal Server Error");
    }
    answer.SendTo(connection);
    if (isAsked) core.TellAnswered();
    return 1;
  }

  // Returns when no thread asks the listener any more.
  void ForgetListener() {
    const std::unique_lock lock(m_mutex);
    m_listener = nullptr;
  }

 private:
  void Ask(Answer& answer, const HttpServerRequest& request, bool& isAsked) {
    const std::shared_lock lock(m_mutex);
    if (m_listener) {
      isAsked = true;
      m_listener->OnUri(answer, request);
    } else {
      answer.SendError(503, "Service Unavailable");
    }
  }

  void TellAnswered() {
    const std::shared_lock lock(m_mutex);
    if (m_listener) m_listener->OnAnswered();
  }

  std::shared_mutex m_mutex;
  IHttpServerUriListener* m_listener;
};

// Ends when CivetWeb has stopped. Shared with the thread that waits for that.
class Stopping {
 public:
  void SetDone() {
    const std::lock_guard lock(m_mutex);
    m_isDone = true;
    m_changed.notify_all();
  }
  bool WaitFor(std::chrono::milliseconds time) {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, time, [this] { return m_isDone; });
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  bool m_isDone = false;
};

class Server final : public LocalServer {
 public:
  explicit Server(IHttpServerUriListener& listener) : m_core(std::make_shared<Core>(listener)) {}
  ~Server() override {
    if (m_context) Stop();
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  bool Start(uint16_t port) {
    const std::string ports = "127.0.0.1:" + std::to_string(port);
    const char* options[] = {"listening_ports",
                             ports.c_str(),
                             "num_threads",
                             "16",
                             "request_timeout_ms",
                             "5000",
                             "enable_directory_listing",
                             "no",
                             "enable_keep_alive",
                             "no",
                             nullptr};
    mg_callbacks callbacks{};
    callbacks.begin_request = &Core::OnRequest;
    callbacks.log_message = [](const mg_connection*, const char*) { return 1; };
    m_context = mg_start(&callbacks, m_core.get(), options);
    if (!m_context) return false;
    mg_server_port bound{};
    if (mg_get_server_ports(m_context, 1, &bound) == 1) m_port = static_cast<uint16_t>(bound.port);
    return true;
  }

  uint16_t Port() const override { return m_port; }

 private:
  void Stop() {
    m_core->ForgetListener();
    const auto stopping = std::make_shared<Stopping>();
    std::thread([context = m_context, core = m_core, stopping] {
      mg_stop(context);
      stopping->SetDone();
    }).detach();
    for (auto waited = 0ms; waited < kStopTime; waited += kPokeInterval) {
      if (stopping->WaitFor(kPokeInterval)) return;
      Poke();
    }
  }

  void Poke() const {
    char unused[256];  // CivetWeb complains about a message that does not fit
    mg_connection* const connection =
        mg_connect_client("127.0.0.1", m_port, 0, unused, sizeof unused);
    if (connection) mg_close_connection(connection);
  }

  const std::shared_ptr<Core> m_core;
  mg_context* m_context = nullptr;
  uint16_t m_port = 0;
};

}  // namespace

extern "C" LocalServer* CorvaneLocalServer(uint16_t port, IHttpServerUriListener& listener) {
  static std::once_flag once;
  std::call_once(once, mg_init_library, 0U);
  auto server = std::make_unique<Server>(listener);
  return server->Start(port) ? server.release() : nullptr;
}
