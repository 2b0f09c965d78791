// The module that unpacks archives, with libzip.

#include <memory>

#include <zip.h>

#include "platform/posix/zip_archives/module.h"

namespace {

struct Close {
  void operator()(zip_t* archive) const { zip_discard(archive); }
  void operator()(zip_file_t* entry) const { zip_fclose(entry); }
};

class LibzipArchive final : public ZipArchive {
 public:
  explicit LibzipArchive(zip_t* archive) : m_archive(archive) {}

  size_t Count() const override {
    const zip_int64_t count = zip_get_num_entries(m_archive.get(), 0);
    return count < 0 ? 0 : static_cast<size_t>(count);
  }
  std::string Name(size_t index) const override {
    const char* const name = zip_get_name(m_archive.get(), index, ZIP_FL_ENC_GUESS);
    return name ? name : "";
  }
  uint64_t PackedSize(size_t index) const override {
    zip_stat_t details;
    const bool isKnown = zip_stat_index(m_archive.get(), index, 0, &details) == 0 &&
                         (details.valid & ZIP_STAT_COMP_SIZE) != 0;
    return isKnown ? details.comp_size : 0;
  }
  bool Open(size_t index) override {
    m_entry.reset(zip_fopen_index(m_archive.get(), index, 0));
    return m_entry != nullptr;
  }
  std::optional<size_t> Read(char* data, size_t size) override {
    const zip_int64_t count = m_entry ? zip_fread(m_entry.get(), data, size) : -1;
    if (count < 0) return std::nullopt;
    return static_cast<size_t>(count);
  }

 private:
  const std::unique_ptr<zip_t, Close> m_archive;
  std::unique_ptr<zip_file_t, Close> m_entry;
};

}  // namespace

extern "C" ZipArchive* CorvaneOpenZipArchive(std::string_view bytes);

ZipArchive* CorvaneOpenZipArchive(std::string_view bytes) {
  zip_source_t* const source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
  if (!source) return nullptr;
  zip_t* const archive = zip_open_from_source(source, ZIP_RDONLY, nullptr);
  if (archive) return std::make_unique<LibzipArchive>(archive).release();
  zip_source_free(source);
  return nullptr;
}
