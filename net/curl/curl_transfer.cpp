#include "net/curl/curl_transfer.h"

#include <algorithm>
#include <new>

#include <openssl/x509_vfy.h>

#include "net/internet_exception.h"

namespace {

constexpr int kMostRedirects = 10;
// Of all replies of a transfer together.
constexpr size_t kMostHeaderBytes = size_t{256} << 10;

struct CurlTextDeleter {
  void operator()(char* text) const { curl_free(text); }
};

std::string Part(CURLU* url, CURLUPart part) {
  char* text = nullptr;
  if (curl_url_get(url, part, &text, 0) != CURLUE_OK) return {};
  return std::unique_ptr<char, CurlTextDeleter>(text).get();
}

std::string HostAndPort(CURLU* url) {
  const std::string host = Part(url, CURLUPART_HOST);
  const std::string port = Part(url, CURLUPART_PORT);
  const bool isSecure = Part(url, CURLUPART_SCHEME) == "https";
  return port.empty() || port == (isSecure ? "443" : "80") ? host : host + ":" + port;
}

std::string Origin(CURLU* url) { return Part(url, CURLUPART_SCHEME) + "://" + HostAndPort(url); }

// A proxy stands between this machine and others only.
bool IsLoopback(const std::string& host) {
  return host == "localhost" || host == "[::1]" || host.compare(0, 4, "127.") == 0;
}

bool EqualsIgnoringCase(std::string_view text, std::string_view lower) {
  return std::equal(text.begin(), text.end(), lower.begin(), lower.end(), [](char a, char b) {
    return (a >= 'A' && a <= 'Z' ? static_cast<char>(a + 'a' - 'A') : a) == b;
  });
}

bool IsRedirectStatus(long status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

uint32_t CertificateError(CURL* easy) {
  long result = X509_V_OK;
  curl_easy_getinfo(easy, CURLINFO_SSL_VERIFYRESULT, &result);
  switch (result) {
    case X509_V_OK:
    case X509_V_ERR_UNSPECIFIED:  // libcurl has refused the name before it has stored a result
    case X509_V_ERR_HOSTNAME_MISMATCH:
    case X509_V_ERR_IP_ADDRESS_MISMATCH:
      return kInternetCertificateName;
    case X509_V_ERR_CERT_NOT_YET_VALID:
    case X509_V_ERR_CERT_HAS_EXPIRED:
      return kInternetCertificateDate;
    default:
      return kInternetCertificateAuthority;
  }
}

uint32_t ErrorOf(CURLcode result, CURL* easy) {
  switch (result) {
    case CURLE_OK:
      return 0;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
      return kInternetNameNotResolved;
    case CURLE_COULDNT_CONNECT:
      return kInternetCannotConnect;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
      return kInternetConnectionBroken;
    case CURLE_OPERATION_TIMEDOUT:
      return kInternetTimeout;
    case CURLE_URL_MALFORMAT:
      return kInternetInvalidUrl;
    case CURLE_OUT_OF_MEMORY:
      return kInternetOutOfMemory;
    case CURLE_PEER_FAILED_VERIFICATION:
      return CertificateError(easy);
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ENGINE_NOTFOUND:
    case CURLE_SSL_ENGINE_SETFAILED:
    case CURLE_SSL_ENGINE_INITFAILED:
    case CURLE_SSL_CRL_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
    case CURLE_USE_SSL_FAILED:
      return kInternetSecureChannel;
    default:
      return kInternetInvalidReply;
  }
}

void AppendHeader(CurlList& list, const std::string& line) {
  curl_slist* const longer = curl_slist_append(list.get(), line.c_str());
  if (!longer) throw std::bad_alloc();
  static_cast<void>(list.release());
  list.reset(longer);
}

// An option that cannot be set would go unnoticed, a certificate unchecked.
template <typename Value>
void Set(CURL* easy, CURLoption option, Value value) {
  const CURLcode result = curl_easy_setopt(easy, option, value);
  if (result == CURLE_OUT_OF_MEMORY) throw std::bad_alloc();
  if (result != CURLE_OK) throw CInternetException(kInternetInternalError);
}

}  // namespace

uint32_t CurlTransfer::Prepare(CURLSH* share, uint64_t id) {
  m_easy.reset(curl_easy_init());
  m_url.reset(curl_url());
  CURL* const easy = m_easy.get();
  CURLU* const url = m_url.get();
  if (!easy || !url) return kInternetOutOfMemory;

  const std::string address = (m_request.secure ? "https://" : "http://") + m_request.host + ":" +
                              std::to_string(m_request.port) + "/" + m_request.path;
  if (curl_url_set(url, CURLUPART_URL, address.c_str(), CURLU_PATH_AS_IS) != CURLUE_OK) {
    return kInternetInvalidUrl;
  }
  m_origin = Origin(url);
  m_isPost = !m_request.postData.empty();

  Set(easy, CURLOPT_SHARE, share);
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the library keeps nothing but pointers.
  Set(easy, CURLOPT_PRIVATE, reinterpret_cast<void*>(static_cast<uintptr_t>(id)));
  Set(easy, CURLOPT_NOSIGNAL, 1L);
  // Name look-ups cannot be interrupted: those of a cancelled transfer are left to themselves.
  Set(easy, CURLOPT_QUICK_EXIT, 1L);
  // What libcurl keeps of names ages by the clock on the wall: set back a year, it stays a year.
  Set(easy, CURLOPT_DNS_CACHE_TIMEOUT, 0L);
  Set(easy, CURLOPT_PROTOCOLS_STR, "http,https");
  Set(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
  Set(easy, CURLOPT_PATH_AS_IS, 1L);
  Set(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(m_request.connectTimeoutMs));
  Set(easy, CURLOPT_SSL_VERIFYPEER, 1L);
  Set(easy, CURLOPT_SSL_VERIFYHOST, 2L);
  if (!m_request.caFile.empty()) Set(easy, CURLOPT_CAINFO, m_request.caFile.c_str());
  Set(easy, CURLOPT_NOPROGRESS, 0L);
  Set(easy, CURLOPT_HEADERFUNCTION, &CurlTransfer::OnHeader);
  Set(easy, CURLOPT_HEADERDATA, this);
  Set(easy, CURLOPT_WRITEFUNCTION, &CurlTransfer::OnBody);
  Set(easy, CURLOPT_WRITEDATA, this);
  Set(easy, CURLOPT_PREREQFUNCTION, &CurlTransfer::OnConnected);
  Set(easy, CURLOPT_PREREQDATA, this);
  Set(easy, CURLOPT_XFERINFOFUNCTION, &CurlTransfer::OnProgress);
  Set(easy, CURLOPT_XFERINFODATA, this);
  return PointTo(url);
}

uint32_t CurlTransfer::PointTo(CURLU* url) {
  CURL* const easy = m_easy.get();
  m_isConnected = false;
  m_moved = 0;
  m_location.clear();
  const std::string host = Part(url, CURLUPART_HOST);
  if (host.empty()) return kInternetInvalidUrl;
  const std::string address = Part(url, CURLUPART_URL);
  Set(easy, CURLOPT_URL, address.c_str());
  const char* const withoutProxy = IsLoopback(host) ? "*" : nullptr;
  Set(easy, CURLOPT_NOPROXY, withoutProxy);
  if (m_isPost) {
    Set(easy, CURLOPT_POST, 1L);
    Set(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(m_request.postData.size()));
    Set(easy, CURLOPT_POSTFIELDS, m_request.postData.c_str());
  } else {
    Set(easy, CURLOPT_HTTPGET, 1L);
  }
  ApplyHeaders(url);
  return 0;
}

// libcurl writes headers of its own in an order of its own. Those given here take their place, in
// the order of the list; a name without a value keeps libcurl's away. With `Host` both are needed,
// since libcurl would put a given one in front of all others.
void CurlTransfer::ApplyHeaders(CURLU* url) {
  const bool isFirstServer = Origin(url) == m_origin;
  const bool hasOwnHost = isFirstServer && !m_request.hostHeader.empty();
  CurlList headers;
  AppendHeader(headers, "Host:");
  AppendHeader(headers, "User-Agent: " + m_request.userAgent);
  AppendHeader(headers, "Accept: */*");
  AppendHeader(headers, "Host: " + (hasOwnHost ? m_request.hostHeader : HostAndPort(url)));
  if (!m_request.referrer.empty()) AppendHeader(headers, "Referer: " + m_request.referrer);
  bool hasContentType = false;
  if (isFirstServer) {
    for (const auto& [name, value] : m_request.extraHeaders) {
      AppendHeader(headers, std::string(name).append(": ").append(value));
      hasContentType |= EqualsIgnoringCase(name, "content-type");
    }
  }
  if (!hasContentType) AppendHeader(headers, "Content-Type:");
  AppendHeader(headers, "Expect:");
  Set(m_easy.get(), CURLOPT_HTTPHEADER, headers.get());
  m_headers = std::move(headers);
}

bool CurlTransfer::Continue(CURLcode result, uint32_t& code) {
  CURL* const easy = m_easy.get();
  long status = 0;
  curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
  m_status = static_cast<uint32_t>(status);
  code = m_failure != 0 ? m_failure : ErrorOf(result, easy);
  // Where a reply leads stands in its headers: how its body has ended does not matter.
  if (!m_redirect || m_failure != 0) return false;

  const bool keepsMethod = m_status == 307 || m_status == 308;
  if (!keepsMethod) m_isPost = false;
  m_url = std::move(m_redirect);
  code = PointTo(m_url.get());
  return code == 0;
}

// From now; 0: never.
CurlTransfer::Clock::time_point CurlTransfer::EndIn(uint32_t milliseconds) {
  if (milliseconds == 0) return Clock::time_point::max();
  return Clock::now() + std::chrono::milliseconds(milliseconds);
}

CurlTransfer::Clock::time_point CurlTransfer::Deadline() const {
  const Clock::time_point end = std::min(m_end, m_lagEnd);
  if (!m_isConnected || m_request.idleTimeoutMs == 0) return end;
  return std::min(end, m_lastActivity + std::chrono::milliseconds(m_request.idleTimeoutMs));
}

bool CurlTransfer::Fail(uint32_t code) {
  m_failure = code;
  return false;
}

bool CurlTransfer::TakeHeader(std::string_view line) {
  m_headerSize += line.size();
  if (m_headerSize > kMostHeaderBytes) return Fail(kInternetInvalidReply);
  while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) line.remove_suffix(1);
  if (m_hasBody) return true;  // what stands behind a chunked body
  if (line.empty()) return DecideOnRedirect();
  if (line.substr(0, 5) == "HTTP/") m_location.clear();
  const size_t colon = line.find(':');
  if (colon == std::string_view::npos || !EqualsIgnoringCase(line.substr(0, colon), "location")) {
    return true;
  }
  line.remove_prefix(colon + 1);
  const size_t start = line.find_first_not_of(" \t");
  if (start != std::string_view::npos) m_location = line.substr(start);
  return true;
}

// At the end of a reply's headers.
bool CurlTransfer::DecideOnRedirect() {
  long status = 0;
  curl_easy_getinfo(m_easy.get(), CURLINFO_RESPONSE_CODE, &status);
  if (!IsRedirectStatus(status) || m_location.empty()) return true;
  if (++m_redirects > kMostRedirects) return Fail(kInternetRedirectFailed);
  CurlUrl target(curl_url_dup(m_url.get()));
  if (!target) return Fail(kInternetOutOfMemory);
  const CURLUcode result = curl_url_set(target.get(), CURLUPART_URL, m_location.c_str(),
                                        CURLU_URLENCODE | CURLU_NON_SUPPORT_SCHEME);
  if (result != CURLUE_OK) return Fail(kInternetInvalidUrl);
  const std::string scheme = Part(target.get(), CURLUPART_SCHEME);
  if (scheme != "http" && scheme != "https") return Fail(kInternetUnknownScheme);
  // A server must not make us send a header that nobody told us to.
  for (const CURLUPart part : {CURLUPART_USER, CURLUPART_PASSWORD, CURLUPART_OPTIONS}) {
    curl_url_set(target.get(), part, nullptr, 0);
  }
  m_redirect = std::move(target);
  return true;
}

bool CurlTransfer::TakeBody(std::string_view bytes) {
  Touch();
  if (m_redirect) return false;
  m_hasBody = true;
  m_bodySize += bytes.size();
  if (m_request.bodyLimit != 0 && m_bodySize > m_request.bodyLimit) {
    return Fail(kInternetBodyTooLarge);
  }
  m_events.OnBody(bytes);
  return true;
}

// Exceptions must not cross libcurl.
size_t CurlTransfer::OnHeader(const char* data, size_t size, size_t count, void* self) {
  CurlTransfer& transfer = *static_cast<CurlTransfer*>(self);
  transfer.Touch();
  try {
    return transfer.TakeHeader({data, size * count}) ? size * count : 0;
  } catch (...) {
    transfer.Fail(kInternetOutOfMemory);
    return 0;
  }
}

size_t CurlTransfer::OnBody(const char* data, size_t size, size_t count, void* self) {
  CurlTransfer& transfer = *static_cast<CurlTransfer*>(self);
  try {
    return transfer.TakeBody({data, size * count}) ? size * count : 0;
  } catch (const std::bad_alloc&) {
    transfer.Fail(kInternetOutOfMemory);
  } catch (...) {
    transfer.Fail(kInternetInternalError);
  }
  return 0;
}

int CurlTransfer::OnConnected(void* self, char*, char*, int, int) {
  CurlTransfer& transfer = *static_cast<CurlTransfer*>(self);
  transfer.m_isConnected = true;
  transfer.Touch();
  return CURL_PREREQFUNC_OK;
}

int CurlTransfer::OnProgress(void* self, curl_off_t, curl_off_t received, curl_off_t,
                             curl_off_t sent) {
  CurlTransfer& transfer = *static_cast<CurlTransfer*>(self);
  transfer.TakeProgress(received + sent);
  return 0;
}

void CurlTransfer::TakeProgress(curl_off_t moved) {
  if (moved == m_moved) return;
  Touch();
  if (m_request.lagMs != 0 && moved > m_moved) {
    // What came fast is no credit for standing still later.
    const auto most = std::chrono::milliseconds(m_request.lagMs);
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_lagEnd - m_lastActivity);
    const std::chrono::milliseconds gained((moved - m_moved) * 1000 / kSlowestLine);
    m_lagEnd = m_lastActivity + std::min(most, left + gained);
  }
  m_moved = moved;
}
