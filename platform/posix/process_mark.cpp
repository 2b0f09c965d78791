#include "platform/process_mark.h"

#include <fstream>
#include <sstream>

#include <unistd.h>

namespace {

constexpr char kSeparator = '-';

// When a process began, in ticks since the system did; empty when it is not there. One that has
// ended and that nobody has waited for is not.
std::string BeginOf(const std::string& process) {
  constexpr int kFieldsBetween = 18;  // the state and the begin are the fields 3 and 22
  std::ifstream stream("/proc/" + process + "/stat");
  std::string line;
  std::getline(stream, line);
  // The name of the program stands in brackets, and may hold some itself.
  const size_t nameEnd = line.rfind(')');
  if (nameEnd == std::string::npos) return {};
  std::istringstream fields(line.substr(nameEnd + 1));
  std::string state;
  std::string field;
  fields >> state;
  for (int i = 0; i < kFieldsBetween; ++i) fields >> field;
  fields >> field;
  return state == "Z" || state == "X" ? std::string() : field;
}

bool IsNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

std::string OwnProcessMark() {
  const std::string number = std::to_string(getpid());
  return number + kSeparator + BeginOf(number);
}

bool IsProcessThere(std::string_view mark) {
  const size_t separator = mark.find(kSeparator);
  if (separator == std::string_view::npos) return false;
  const std::string_view number = mark.substr(0, separator);
  const std::string_view begin = mark.substr(separator + 1);
  return IsNumber(number) && IsNumber(begin) && BeginOf(std::string(number)) == begin;
}
