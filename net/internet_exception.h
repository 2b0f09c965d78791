#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

/// Numbers of failed requests, those of the system's own internet library.
enum InternetError : uint32_t {
  kInternetInvalidHandle = 6,  ///< the connection or the request is open already
  kInternetOutOfMemory = 8,
  kInternetInvalidHeader = 87,    ///< a header that would break the lines of a request
  kInternetBodyTooLarge = 122,    ///< more bytes than the client takes
  kInternetModuleMissing = 126,   ///< the HTTP part of the program is not installed
  kInternetWouldDeadlock = 1131,  ///< waiting on the thread that does the work
  kInternetInternalError = 1359,
  kInternetTimeout = 12002,
  kInternetInvalidUrl = 12005,
  kInternetUnknownScheme = 12006,
  kInternetNameNotResolved = 12007,
  kInternetCancelled = 12017,
  kInternetCannotConnect = 12029,
  kInternetConnectionBroken = 12030,  ///< also a body shorter than announced
  kInternetCertificateDate = 12037,
  kInternetCertificateName = 12038,
  kInternetCertificateAuthority = 12045,
  kInternetInvalidReply = 12152,    ///< and every failure without a number of its own
  kInternetRedirectFailed = 12156,  ///< too many redirects
  kInternetSecureChannel = 12157,   ///< TLS, other than the certificate
};

/// The failure of a request. Neither the number nor the text holds any part of its address.
class CInternetException : public std::exception {
 public:
  explicit CInternetException(uint32_t error) : CInternetException(error, std::string()) {}
  CInternetException(uint32_t error, std::string detail)
      : code(error), text(std::move(detail)), m_what(text.empty() ? std::to_string(code) : text) {}
  CInternetException(const CInternetException&) = default;
  CInternetException& operator=(const CInternetException&) = default;

  /// The text; without one the number.
  const char* what() const noexcept override { return m_what.c_str(); }

  uint32_t code;     ///< 0: no error
  std::string text;  ///< empty for errors that are a bare number

 private:
  std::string m_what;
};
