// Reads a file with the readers of its extension and only counts what comes: what a conversion
// costs before anything is written.

#include <cstdio>
#include <utility>

#include "base/status.h"
#include "base/text.h"
#include "conversion/format_search.h"
#include "formats/format_rows.h"
#include "platform/path_text.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: read_only FILE\n");
    return 2;
  }
  // Left to the end of the process, as the converter does with what it has read.
  auto& lists = *new PointLists;
  ConversionContext context;
  const uint32_t status = SearchReaders(DefaultFormatTable(), WidePath(argv[1]), true, context,
                                        [&](const CItineraryFormat&, PointLists& found) {
                                          lists = std::move(found);
                                          return kStatusSuccess;
                                        });
  if (status != kStatusSuccess) {
    std::fprintf(stderr, "read_only: %s cannot be read (status %u)\n", argv[1], status);
    return 1;
  }
  size_t points = 0;
  for (const auto& list : lists) points += list->Count();
  std::printf("%zu lists, %zu points\n", lists.size(), points);
  return 0;
}
