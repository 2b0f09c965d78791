// Any bytes into any reader. Everything that the reader hands over is looked at, so that the
// sanitizers see it.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/fuzzed_row.h"

namespace {

volatile uint64_t touched;

uint64_t Touch(std::string_view text) {
  uint64_t sum = text.size();
  for (const char c : text) sum = sum * 31 + static_cast<unsigned char>(c);
  return sum;
}

uint64_t Touch(const CGpsPoint& point) {
  uint64_t sum = Touch(point.name) ^ Touch(point.comment);
  for (const double value : {point.latitude, point.longitude, point.altitude, point.tolerance})
    sum += value < 0 ? 1 : 0;
  return sum + (point.GetRouteLeg() != nullptr ? 1 : 0);
}

}  // namespace

// NOLINTNEXTLINE(readability-non-const-parameter): the types are libFuzzer's.
extern "C" int LLVMFuzzerInitialize(int* argumentCount, char*** arguments) {
  ChooseRow(*argumentCount, *arguments);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  uint64_t sum = 0;
  for (const auto& list : ReadBytes(FuzzedRow(), {reinterpret_cast<const char*>(data), size})) {
    sum += Touch(list->GetName()) + list->GetKind() + list->LastIndex();
    for (const CGpsPoint& point : list->points) sum += Touch(point);
  }
  touched = sum;
  return 0;
}
