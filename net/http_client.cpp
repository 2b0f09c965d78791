#include "net/http_client.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <stdexcept>

#include "base/text.h"
#include "net/url.h"
#include "platform/program_module.h"

namespace {

HttpTransport* LoadTransport() {
  const auto entry =
      reinterpret_cast<HttpModuleEntry>(LoadModuleEntry(kHttpModule, kHttpModuleEntry));
  return entry ? entry() : nullptr;
}

// That of all clients. Throws where the part of the program is not installed.
HttpTransport& SharedTransport() {
  static HttpTransport* const transport = LoadTransport();
  if (!transport) throw CInternetException(kInternetModuleMissing);
  return *transport;
}

bool IsLetterOrDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

bool IsEscapedPath(std::string_view path) {
  return std::none_of(path.begin(), path.end(), [](char c) { return IsControl(c) || c == ' '; });
}

bool IsHeaderValue(std::string_view value) {
  return std::none_of(value.begin(), value.end(), [](char c) { return IsControl(c) && c != '\t'; });
}

bool IsHeaderName(std::string_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
    return IsLetterOrDigit(c) || c == '-' || c == '_';
  });
}

void CheckHeaders(const std::string& referrer, const std::string& hostHeader,
                  const HttpHeaders& extraHeaders) {
  const bool areSound =
      IsHeaderValue(referrer) && IsHeaderValue(hostHeader) &&
      std::all_of(extraHeaders.begin(), extraHeaders.end(), [](const auto& header) {
        return IsHeaderName(header.first) && !header.second.empty() && IsHeaderValue(header.second);
      });
  if (!areSound) throw CInternetException(kInternetInvalidHeader);
}

// Whether the address begins with a scheme that is none of ours.
bool HasForeignScheme(std::string_view url) {
  const size_t end = url.find("://");
  return end != std::string_view::npos && end == url.find_first_of(":/?#") &&
         url.find("http://") == std::string_view::npos &&
         url.find("https://") == std::string_view::npos;
}

struct ServerAddress {
  std::string host;
  std::string path;
  uint16_t port = 80;
  bool secure = false;
};

ServerAddress SplitAddress(std::string_view url) {
  if (HasForeignScheme(url)) throw CInternetException(kInternetUnknownScheme);
  ServerAddress address;
  try {
    SplitUrl(url, address.host, address.path, address.port, address.secure);
  } catch (const std::logic_error&) {
    throw CInternetException(kInternetInvalidUrl);
  }
  return address;
}

// The usual variable by which a user names the authorities of a company's network.
std::string TrustedAuthorities() {
  const char* const file = std::getenv("SSL_CERT_FILE");
  return file ? file : std::string();
}

}  // namespace

CHttpSession::CHttpSession(HttpOptions options) : m_options(std::move(options)) {}

CHttpSession::~CHttpSession() {
  if (HttpTransport* const transport = m_transport) transport->CloseSession(m_handle);
}

HttpTransport& CHttpSession::Transport() {
  if (!m_transport) {
    HttpTransport& transport = SharedTransport();
    m_handle = transport.OpenSession();
    m_transport = &transport;
  }
  return *m_transport;
}

void CHttpConnection::Open(const std::string& host, uint16_t port, bool secure) {
  if (!m_host.empty()) throw CInternetException(kInternetInvalidHandle, "Already opened");
  if (!IsHostName(host)) throw CInternetException(kInternetInvalidUrl);
  m_host = host;
  m_port = port;
  m_secure = secure;
}

CHttpRequest::~CHttpRequest() {
  Cancel();
  m_doneEvent.Wait(kWaitForever);
  // The event is set under the lock: whoever has set it may still be about to release it.
  const std::lock_guard lock(m_lock);
}

void CHttpRequest::Send(ByteSink& sink, const std::string& path, const std::string& postData,
                        const std::string& referrer, const std::string& hostHeader,
                        const HttpHeaders& extraHeaders) {
  if (!IsEscapedPath(path)) throw CInternetException(kInternetInvalidUrl);
  CheckHeaders(referrer, hostHeader, extraHeaders);
  CHttpSession& session = m_connection.Session();
  HttpTransport& transport = session.Transport();

  HttpTransfer transfer;
  transfer.host = m_connection.Host();
  transfer.path = path;
  transfer.port = m_connection.Port();
  transfer.secure = m_connection.IsSecure();
  transfer.userAgent = session.Options().userAgent;
  transfer.hostHeader = hostHeader;
  transfer.referrer = referrer;
  transfer.extraHeaders = extraHeaders;
  transfer.postData = postData;
  transfer.caFile = TrustedAuthorities();
  transfer.bodyLimit = session.Options().bodyLimit;
  transfer.connectTimeoutMs = session.Options().connectTimeoutMs;
  transfer.idleTimeoutMs = session.Options().idleTimeoutMs;
  transfer.lagMs = session.Options().lagMs;
  transfer.longestMs = session.Options().longestMs;

  const std::lock_guard lock(m_lock);
  if (m_requestHandle != 0 || !m_closedEvent.Wait(0)) {
    throw CInternetException(kInternetInvalidHandle, "Already opened");
  }
  m_sink = &sink;
  m_failure = CInternetException(0);
  m_totalRead = 0;
  m_httpStatus = 0;
  m_requestHandle = transport.Begin(session.Handle(), std::move(transfer), *this);
  m_finished = false;
  m_closedEvent.Reset();
  m_doneEvent.Reset();
}

bool CHttpRequest::Wait(int32_t timeoutMs) {
  const bool isDone = m_doneEvent.Wait(0);
  if (!isDone && IsOnTransportThread()) throw CInternetException(kInternetWouldDeadlock);
  const bool wasSignalled = isDone || m_doneEvent.Wait(timeoutMs);
  const std::lock_guard lock(m_lock);
  if (m_failure.code != 0 && m_failure.code != kInternetCancelled)
    throw CInternetException(m_failure);
  return wasSignalled;
}

uint32_t CHttpRequest::FailureCode() const {
  const std::lock_guard lock(m_lock);
  return m_failure.code;
}

void CHttpRequest::Close() {
  const std::lock_guard lock(m_lock);
  if (m_requestHandle == 0) return;
  m_connection.Session().OpenTransport()->Cancel(m_requestHandle);
  m_requestHandle = 0;
}

void CHttpRequest::Cancel() {
  Close();
  if (!IsOnTransportThread()) m_closedEvent.Wait(kWaitForever);
}

uint64_t CHttpRequest::TotalRead() const {
  const std::lock_guard lock(m_lock);
  return m_totalRead;
}

uint32_t CHttpRequest::HttpStatus() const {
  const std::lock_guard lock(m_lock);
  return m_httpStatus;
}

void CHttpRequest::OnBody(std::string_view bytes) {
  m_sink->Write(bytes);
  const std::lock_guard lock(m_lock);
  m_totalRead += bytes.size();
}

void CHttpRequest::OnEnd(uint32_t code, uint32_t httpStatus) {
  {
    const std::lock_guard lock(m_lock);
    m_failure = CInternetException(code);
    m_httpStatus = httpStatus;
    m_requestHandle = 0;
    m_finished = true;
    m_closedEvent.Set();
  }
  try {
    if (m_completion) m_completion(*this, CInternetException(code));
  } catch (const CInternetException& failure) {
    StoreFailure(failure);
  } catch (const std::bad_alloc&) {
    StoreFailure(CInternetException(kInternetOutOfMemory));
  } catch (...) {
    StoreFailure(CInternetException(kInternetInternalError));
  }
  const std::lock_guard lock(m_lock);
  if (m_finished) m_doneEvent.Set();
}

void CHttpRequest::StoreFailure(const CInternetException& failure) {
  const std::lock_guard lock(m_lock);
  m_failure = failure;
}

bool CHttpRequest::IsOnTransportThread() const {
  const HttpTransport* const transport = m_connection.Session().OpenTransport();
  return transport && transport->IsOnOwnThread();
}

CHttpClient::CHttpClient(HttpOptions options) : m_session(std::move(options)) {}

void CHttpClient::SetCompletion(CHttpRequest::Completion completion) {
  m_completion = std::move(completion);
  m_request.SetCompletion([this](CHttpRequest& request, const CInternetException& failure) {
    if (m_completion) m_completion(request, failure);
  });
}

void CHttpClient::Start(ByteSink& sink, std::string_view url, const std::string& postData,
                        const std::string& referrer, const std::string& hostHeader,
                        const HttpHeaders& extraHeaders) {
  const ServerAddress address = SplitAddress(url);
  const std::lock_guard lock(m_startMutex);
  m_request.Cancel();
  m_connection.Close();
  m_connection.Open(address.host, address.port, address.secure);
  m_request.Send(sink, address.path, postData, referrer, hostHeader, extraHeaders);
}

std::string HttpGet(const WideString& url, const std::string& referrer,
                    const std::string& hostHeader, const HttpOptions& options,
                    const HttpHeaders& extraHeaders) {
  StringSink body;
  HttpFetch(body, url, {}, referrer, hostHeader, options, extraHeaders);
  return body.Bytes();
}

uint64_t HttpFetch(ByteSink& sink, const WideString& url, const std::string& postData,
                   const std::string& referrer, const std::string& hostHeader,
                   const HttpOptions& options, const HttpHeaders& extraHeaders) {
  if (SharedTransport().IsOnOwnThread()) throw CInternetException(kInternetWouldDeadlock);
  CHttpClient client(options);
  client.Start(sink, UrlEscapeOnce(WideToUtf8Lossy(url)), postData, referrer, hostHeader,
               extraHeaders);
  const std::stop_callback cancel(options.stop, [&client] { client.Cancel(); });
  if (!client.Wait(options.waitMs)) throw CInternetException(kInternetTimeout);
  if (client.Request().FailureCode() != 0) throw CInternetException(kInternetCancelled);
  return client.Request().TotalRead();
}
