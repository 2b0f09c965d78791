#pragma once

#include "io/byte_sink.h"
#include "platform/console.h"

/// A sink that fills standard output.
class OutputSink final : public ByteSink {
 public:
  /// Writes the last bytes. False when not everything could be written.
  bool Finish() {
    Drain();
    return m_complete;
  }

 private:
  void Consume(std::string_view bytes) override {
    m_complete = m_complete && (bytes.empty() || WriteOutput(bytes));
  }

  bool m_complete = true;
};
