#pragma once

#include "base/status.h"
#include "conversion/conversion_context.h"
#include "io/byte_sink.h"
#include "platform/output_file.h"

/// A sink that fills a file, which appears whole in `Commit` or not at all. Once the conversion is
/// cancelled nothing more is written.
class FileSink final : public ByteSink {
 public:
  FileSink(const WideString& path, ConversionContext& context)
      : m_path(path), m_context(context), m_file(path) {
    m_context.Begin(ConversionProgress::Stage::kWriting);
  }

  /// 0, or the platform's error code of the first failure.
  uint32_t Status() const { return m_file.Status(); }

  /// Puts the file in its place. Returns `Status`, or kStatusCancelled.
  uint32_t Commit() {
    Drain();
    if (m_context.IsCancelled()) return kStatusCancelled;
    const uint32_t status = m_file.Commit();
    if (status == kStatusSuccess) m_context.writtenFiles.push_back(m_path);
    return status;
  }

 private:
  void Consume(std::string_view bytes) override {
    m_size += bytes.size();
    if (!m_context.GoesOn(m_size)) return;
    if (m_context.written) m_context.written(bytes);
    m_file.Write(bytes);
  }

  const WideString m_path;
  ConversionContext& m_context;
  OutputFile m_file;
  uint64_t m_size = 0;
};
