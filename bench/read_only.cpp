// Reads a file with the readers of its extension and only counts what comes: what a conversion
// costs before anything is written.

#include <cstdio>

#include "base/status.h"
#include "base/text.h"
#include "conversion/read_trip.h"
#include "formats/format_rows.h"
#include "platform/path_text.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: read_only FILE\n");
    return 2;
  }
  ConversionContext context;
  const FormatTable table = DefaultFormatTable();
  // Left to the end of the process, as the converter does with what it has read.
  const TripRead& trip = *new TripRead(ReadTrip(table, WidePath(argv[1]), context, {.silent = true}));
  if (trip.status != kStatusSuccess) {
    std::fprintf(stderr, "read_only: %s cannot be read (status %u)\n", argv[1], trip.status);
    return 1;
  }
  size_t points = 0;
  for (const auto& list : trip.lists) points += list->Count();
  std::printf("%zu lists, %zu points\n", trip.lists.size(), points);
  return 0;
}
