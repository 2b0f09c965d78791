// The module that carries HTTP requests, with libcurl.

#include "net/curl/curl_transport.h"

extern "C" __attribute__((visibility("default"))) IHttpTransport* CorvaneHttpModule() {
  // Never destroyed: its thread runs until the process ends.
  static IHttpTransport* const transport = CurlTransport::Create().release();
  return transport;
}
