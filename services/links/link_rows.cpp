#include "services/links/link_rows.h"

#include <string_view>

#include "services/links/link_reading.h"
#include "services/links/link_writing.h"

namespace {

struct LinkWriter {
  std::u16string_view key;
  FormatWriteFn write;
};

constexpr LinkWriter kWriters[] = {
    {u"ggm", WriteGoogleMapsLink},
    {u"here", WriteHereLink},
    {u"vmm", WriteViaMichelinLink},
    {u"ttd", WriteMyDriveLink},
};

}  // namespace

void AddLinkFunctions(FormatTable& table) {
  for (CItineraryFormat& row : table) {
    for (const LinkWriter& writer : kWriters) {
      if (row.extension != writer.key) continue;
      row.write = writer.write;
      row.facts.option = WriterOption::kSplit;
    }
    if (row.extension == std::u16string_view(u"url")) {
      row.read = ReadUrlFile;
      row.facts.parse = ParseUrlFile;
    }
  }
}
