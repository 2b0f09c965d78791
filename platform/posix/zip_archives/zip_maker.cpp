// The part of the module that packs archives.

#include <memory>

#include <zip.h>

#include "base/status.h"
#include "platform/posix/zip_archives/module.h"

namespace {

struct DiscardArchive {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct FreeSource {
  void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using Archive = std::unique_ptr<zip_t, DiscardArchive>;
using Source = std::unique_ptr<zip_source_t, FreeSource>;

bool AddEntry(zip_t* archive, const ZipEntry& entry, int64_t time) {
  zip_source_t* const content =
      zip_source_buffer(archive, entry.bytes.data(), entry.bytes.size(), 0);
  if (!content) return false;
  const zip_int64_t index = zip_file_add(archive, entry.name.c_str(), content, ZIP_FL_ENC_UTF_8);
  if (index < 0) {
    zip_source_free(content);
    return false;
  }
  const auto place = static_cast<zip_uint64_t>(index);
  return zip_set_file_compression(archive, place, ZIP_CM_STORE, 0) == 0 &&
         zip_file_set_mtime(archive, place, time, 0) == 0;
}

bool ReadAll(zip_source_t* source, std::string& bytes) {
  if (zip_source_open(source) != 0) return false;
  zip_stat_t details;
  bool done = zip_source_stat(source, &details) == 0 && (details.valid & ZIP_STAT_SIZE) != 0;
  if (done) {
    bytes.resize(details.size);
    done = zip_source_read(source, bytes.data(), bytes.size()) ==
           static_cast<zip_int64_t>(bytes.size());
  }
  zip_source_close(source);
  return done;
}

uint32_t MakeArchive(const std::vector<ZipEntry>& entries, int64_t time, std::string& bytes) {
  const Source target(zip_source_buffer_create(nullptr, 0, 0, nullptr));
  if (!target) return kStatusFailure;
  zip_source_keep(target.get());  // closing the archive lets one reference go
  Archive archive(zip_open_from_source(target.get(), ZIP_TRUNCATE, nullptr));
  if (!archive) {
    zip_source_free(target.get());
    return kStatusFailure;
  }
  for (const ZipEntry& entry : entries) {
    if (!AddEntry(archive.get(), entry, time)) return kStatusFailure;
  }
  if (zip_close(archive.get()) != 0) return kStatusFailure;
  static_cast<void>(archive.release());
  return ReadAll(target.get(), bytes) ? kStatusSuccess : kStatusFailure;
}

}  // namespace

extern "C" uint32_t CorvaneMakeZipArchive(const std::vector<ZipEntry>& entries, int64_t time,
                                          std::string& archive);

uint32_t CorvaneMakeZipArchive(const std::vector<ZipEntry>& entries, int64_t time,
                               std::string& archive) {
  return MakeArchive(entries, time, archive);
}
