// The module that handles compound files, with libgsf. Every file that arrives here has passed
// `IsSoundCompoundFile`, since libgsf trusts the numbers of a file too much.

#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include <gsf/gsf.h>

#include "base/status.h"
#include "platform/posix/compound_files/module.h"

namespace {

struct Unreference {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename Object>
using ObjectPointer = std::unique_ptr<Object, Unreference>;

constexpr gsize kClassIdSize = 16;

void IgnoreMessage(const gchar*, GLogLevelFlags, const gchar*, gpointer) {}

// libgsf prints what it thinks of a file; here a status tells.
void PrepareLibrary() {
  static std::once_flag once;
  std::call_once(once, [] {
    gsf_init();
    g_log_set_handler("libgsf:msole", GLogLevelFlags(G_LOG_LEVEL_MASK | G_LOG_FLAG_RECURSION),
                      IgnoreMessage, nullptr);
  });
}

ObjectPointer<GsfInfile> OpenStorage(std::string_view storage) {
  PrepareLibrary();
  const ObjectPointer<GsfInput> input(
      gsf_input_memory_new(reinterpret_cast<const guint8*>(storage.data()),
                           static_cast<gsf_off_t>(storage.size()), FALSE));
  return ObjectPointer<GsfInfile>(gsf_infile_msole_new(input.get(), nullptr));
}

// An element of a storage is a storage in its own right or a stream, which has no elements.
bool IsStorage(GsfInput* element) { return gsf_infile_num_children(GSF_INFILE(element)) >= 0; }

// Index of the first stream of the storage whose name is equal; -1 when there is none.
int FindStream(GsfInfile* storage, std::string_view name) {
  const int count = gsf_infile_num_children(storage);
  for (int i = 0; i < count; ++i) {
    const char* elementName = gsf_infile_name_by_index(storage, i);
    if (!elementName || elementName != name) continue;
    const ObjectPointer<GsfInput> element(gsf_infile_child_by_index(storage, i));
    if (element && !IsStorage(element.get())) return i;
  }
  return -1;
}

bool ReadWhole(GsfInput* stream, std::string& content) {
  content.resize(static_cast<size_t>(gsf_input_size(stream)));
  return content.empty() ||
         gsf_input_read(stream, content.size(), reinterpret_cast<guint8*>(content.data()));
}

bool WriteWhole(GsfOutput* stream, std::string_view content) {
  return gsf_output_write(stream, content.size(), reinterpret_cast<const guint8*>(content.data()));
}

// Copies all elements of a storage and closes the copy. The element of index `replaced` gets
// `content` instead of its own; -1 replaces none.
bool CopyStorage(GsfInfile* source, GsfOutfile* target, int replaced, std::string_view content) {
  guint8 classId[kClassIdSize];
  if (!gsf_infile_msole_get_class_id(GSF_INFILE_MSOLE(source), classId) ||
      !gsf_outfile_msole_set_class_id(GSF_OUTFILE_MSOLE(target), classId))
    return false;
  const int count = gsf_infile_num_children(source);
  std::string bytes;
  for (int i = 0; i < count; ++i) {
    const ObjectPointer<GsfInput> element(gsf_infile_child_by_index(source, i));
    if (!element) return false;
    const bool isStorage = IsStorage(element.get());
    const ObjectPointer<GsfOutput> copy(
        gsf_outfile_new_child(target, gsf_infile_name_by_index(source, i), isStorage));
    if (!copy) return false;
    if (isStorage) {
      if (!CopyStorage(GSF_INFILE(element.get()), GSF_OUTFILE(copy.get()), -1, {})) return false;
      continue;
    }
    if (i != replaced && !ReadWhole(element.get(), bytes)) return false;
    if (!WriteWhole(copy.get(), i == replaced ? content : bytes)) return false;
    if (!gsf_output_close(copy.get())) return false;
  }
  return gsf_output_close(GSF_OUTPUT(target));
}

uint32_t ReadStream(std::string_view storage, std::string_view streamName, std::string& content) {
  const ObjectPointer<GsfInfile> file = OpenStorage(storage);
  if (!file) return kStatusStorageCorrupt;
  const int index = FindStream(file.get(), streamName);
  if (index < 0) return kStatusStreamNotFound;
  const ObjectPointer<GsfInput> stream(gsf_infile_child_by_index(file.get(), index));
  std::string bytes;
  if (!stream || !ReadWhole(stream.get(), bytes)) return kStatusStorageCorrupt;
  content = std::move(bytes);
  return 0;
}

uint32_t ReplaceStream(std::string_view storage, std::string_view streamName,
                       std::string_view content, std::string& patched) {
  const ObjectPointer<GsfInfile> file = OpenStorage(storage);
  if (!file) return kStatusStorageCorrupt;
  const int index = FindStream(file.get(), streamName);
  if (index < 0) return kStatusStreamNotFound;
  const ObjectPointer<GsfOutput> memory(gsf_output_memory_new());
  const ObjectPointer<GsfOutfile> copy(gsf_outfile_msole_new(memory.get()));
  if (!CopyStorage(file.get(), copy.get(), index, content)) return kStatusStorageCorrupt;
  const guint8* bytes = gsf_output_memory_get_bytes(GSF_OUTPUT_MEMORY(memory.get()));
  patched.assign(reinterpret_cast<const char*>(bytes),
                 static_cast<size_t>(gsf_output_size(memory.get())));
  return 0;
}

}  // namespace

extern "C" const CompoundFileModule* CorvaneCompoundFileModule() {
  static constexpr CompoundFileModule kModule{ReadStream, ReplaceStream};
  return &kModule;
}
