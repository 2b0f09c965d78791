#include <charconv>
#include <string>
#include <string_view>

#include "base/format_text.h"
#include "base/text.h"
#include "net/http_client.h"
#include "net/url.h"
#include "platform/folder.h"
#include "platform/input_file.h"
#include "platform/known_folders.h"
#include "platform/output_file.h"

namespace {

constexpr uint32_t kPathNotFound = 3;
constexpr std::u16string_view kBodySuffix = u".crv";
constexpr std::u16string_view kRecordSuffix = u".url";

class DownloadSink final : public ByteSink {
 public:
  explicit DownloadSink(const WideString& path) : m_file(path) {}

  uint32_t Status() const { return m_file.Status(); }
  uint32_t Commit() {
    Drain();
    return m_file.Commit();
  }

 private:
  // There is no point in receiving what cannot be kept.
  void Consume(std::string_view bytes) override {
    m_file.Write(bytes);
    if (Status() != 0) throw CInternetException(Status());
  }

  OutputFile m_file;
};

void ThrowUnlessDone(uint32_t status) {
  if (status != 0) throw CInternetException(status);
}

// FNV-1a, for names of files. The record tells whether it is the right address.
uint64_t HashOf(std::string_view text) {
  uint64_t hash = 0xCBF29CE484222325;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  return hash;
}

// What an address has in the cache: a file with its body, and a record that makes it count, with
// the body's size and the address, each on a line. The record is written last.
class CachedDownload {
 public:
  explicit CachedDownload(const std::string& url) : m_url(url) {
    const WideString folder = CacheFolder();
    if (folder.empty()) throw CInternetException(kPathNotFound);
    m_folder = folder + kPathSeparator + u"downloads";
    m_name = m_folder + kPathSeparator + WidenAscii(fmt::format("{:016x}", HashOf(url)));
  }

  WideString Body() const { return m_name + WideString(kBodySuffix); }

  bool IsThere() const {
    InputFile record;
    return record.Open(RecordPath()) == 0 && record.Bytes() == Record() &&
           FileAttributes(Body()) == kAttributeNormal;
  }

  void MakeFolder() const { ThrowUnlessDone(CreatePrivateFolder(m_folder)); }

  void WriteRecord() const {
    OutputFile record(RecordPath());
    record.Write(Record());
    ThrowUnlessDone(record.Commit());
  }

 private:
  WideString RecordPath() const { return m_name + WideString(kRecordSuffix); }
  std::string Record() const { return fmt::format("{}\n{}\n", FileSize(Body()), m_url); }

  const std::string& m_url;
  WideString m_folder;
  WideString m_name;
};

// Puts the body into the file. Returns its length. What came before a failure stays in the file
// when `keepsPart`; a file that was there stays when nothing came.
uint64_t DownloadTo(const WideString& path, const std::string& url, const std::string& referrer,
                    const HttpOptions& options, bool keepsPart) {
  DownloadSink sink(path);
  ThrowUnlessDone(sink.Status());
  CHttpClient client(options);
  try {
    client.Start(sink, UrlEscapeOnce(url), {}, referrer);
    client.Wait(kWaitForever);
  } catch (const CInternetException&) {
    ThrowUnlessDone(sink.Status());
    if (keepsPart && client.Request().TotalRead() > 0) ThrowUnlessDone(sink.Commit());
    throw;
  }
  ThrowUnlessDone(sink.Commit());
  return client.Request().TotalRead();
}

}  // namespace

WideString HttpDownload(const std::string& url, const WideString& target,
                        const std::string& referrer, HttpOptions options) {
  options.bodyLimit = kNoBodyLimit;
  options.longestMs = 0;  // what goes on coming is waited for
  if (!target.empty()) {
    return DownloadTo(target, url, referrer, options, true) == 0 ? WideString() : target;
  }
  const CachedDownload cached(url);
  if (cached.IsThere()) return cached.Body();
  cached.MakeFolder();
  if (DownloadTo(cached.Body(), url, referrer, options, false) == 0) return {};
  cached.WriteRecord();
  return cached.Body();
}
