#pragma once

#include "base/status.h"
#include "conversion/conversion_notes.h"
#include "io/byte_sink.h"
#include "platform/output_file.h"

/// A sink that fills a file, which appears whole in `Commit` or not at all.
class FileSink final : public ByteSink {
 public:
  explicit FileSink(const WideString& path) : m_path(path), m_file(path) {}

  /// 0, or the platform's error code of the first failure.
  uint32_t Status() const { return m_file.Status(); }

  /// Puts the file in its place. Returns `Status`.
  uint32_t Commit() {
    Drain();
    const uint32_t status = m_file.Commit();
    if (status == kStatusSuccess) NoteWrittenFile(m_path);
    return status;
  }

 private:
  void Consume(std::string_view bytes) override { m_file.Write(bytes); }

  const WideString m_path;
  OutputFile m_file;
};

/// Writes a file with `body`, a callable that takes a ByteSink&. Returns 0 or the platform's error
/// code, and leaves an existing file alone unless everything was written.
template <typename Body>
uint32_t WriteFileWith(const WideString& path, Body&& body) {
  FileSink sink(path);
  if (sink.Status() != kStatusSuccess) return sink.Status();
  body(static_cast<ByteSink&>(sink));
  return sink.Commit();
}
