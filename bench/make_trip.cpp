// Writes an invented trip in any format that the program can write, for benchmarks and trials.

#include <cstdio>
#include <string>

#include <CLI/CLI.hpp>

#include "bench/trip.h"
#include "conversion/conversion_context.h"
#include "conversion/format_search.h"
#include "formats/format_rows.h"
#include "platform/path_text.h"

int main(int argc, char** argv) {
  TripOptions options;
  std::string key;
  std::string output;
  CLI::App app("Writes an invented trip through Europe.", "make_trip");
  app.add_option("format", key, "extension, or extension:textId, of a row that writes")->required();
  app.add_option("output", output, "path of the file to write")->required();
  app.add_option("--points", options.points, "number of points")->capture_default_str();
  app.add_option("--seed", options.seed, "number that the trip is drawn from")
      ->capture_default_str();
  app.add_option("--shortest-name", options.shortestName, "characters of the shortest name")
      ->capture_default_str();
  app.add_option("--longest-name", options.longestName, "characters of the longest name")
      ->capture_default_str();
  app.add_flag("--altitude", options.altitude, "give every point an altitude");
  app.add_flag("--comment", options.comment, "give every point a comment");
  CLI11_PARSE(app, argc, argv);

  if (options.longestName < options.shortestName) {
    std::fprintf(stderr, "make_trip: the longest name is shorter than the shortest\n");
    return 2;
  }
  const FormatTable table = DefaultFormatTable();
  const CItineraryFormat* const row = FindWriter(table, WidePath(key));
  if (row == nullptr) {
    std::fprintf(stderr, "make_trip: nothing writes \"%s\"\n", key.c_str());
    return 2;
  }
  ConversionContext context;
  const ConversionScope scope(context);
  const uint32_t status = row->write(WidePath(output), MakeTrip(options), 0, true);
  if (status != 0) {
    std::fprintf(stderr, "make_trip: %s cannot be written (status %u, cause %u)\n", output.c_str(),
                 status, context.failure.platformError);
    return 1;
  }
  return 0;
}
