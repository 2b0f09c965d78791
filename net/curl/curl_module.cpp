// The module that carries HTTP requests, with libcurl.

#include "net/curl/curl_transport.h"

extern "C" __attribute__((visibility("default"))) HttpTransport* CorvaneHttpModule() {
  // Never destroyed: its thread runs until the process ends.
  static HttpTransport* const transport = CurlTransport::Create().release();
  return transport;
}
