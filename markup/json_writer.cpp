#include <iterator>
#include <ostream>

#include <fmt/format.h>

#include "markup/json.h"

namespace {

// Characters of a string that get a backslash in front. Control characters stay raw behind it;
// the reader gives them back as they are.
constexpr std::string_view kEscaped = "\\\"\b\f\n\r\t";

// An array or object whose end has not been written yet.
struct OpenValue {
  const CJsonValue* value;
  size_t next = 0;
};

const JsonValues& Children(const CJsonValue& value) {
  if (value.type == kJsonArray) return value.array;
  return value.object;
}

void AppendString(std::string& output, std::string_view text) {
  output.push_back('"');
  for (;;) {
    const size_t end = text.find_first_of(kEscaped);
    output.append(text.substr(0, end));
    if (end == std::string_view::npos) break;
    output.push_back('\\');
    output.push_back(text[end]);
    text.remove_prefix(end + 1);
  }
  output.push_back('"');
}

// Writes the key and all of a plain value, or the bracket that opens the others. True for these.
bool AppendStart(std::string& output, const CJsonValue& value) {
  if (!value.key.empty()) output.append("\"").append(value.key).append("\": ");
  switch (value.type) {
    case kJsonString:
      AppendString(output, value.text);
      return false;
    case kJsonNumber:
      fmt::format_to(std::back_inserter(output), "{:.32g}", value.number);
      return false;
    case kJsonBool:
      output.append(value.flag ? "true" : "false");
      return false;
    case kJsonObject:
      output.push_back('{');
      return true;
    case kJsonArray:
      output.push_back('[');
      return true;
    case kJsonUndefined:
    case kJsonNull:
      break;
  }
  output.append("null");
  return false;
}

}  // namespace

void AppendJson(std::string& output, const CJsonValue& value) {
  std::vector<OpenValue> open;
  if (AppendStart(output, value)) open.push_back({&value});
  while (!open.empty()) {
    OpenValue& parent = open.back();
    const bool isArray = parent.value->type == kJsonArray;
    const JsonValues& children = Children(*parent.value);
    // An empty slot among the members of an object ends it.
    if (parent.next == children.Count() || (!isArray && !children.begin()[parent.next])) {
      output.push_back(isArray ? ']' : '}');
      open.pop_back();
      continue;
    }
    if (parent.next != 0) output.push_back(',');
    const CJsonValue* const child = children.begin()[parent.next++].get();
    if (!child) {
      output.append("null");
    } else if (AppendStart(output, *child)) {
      open.push_back({child});
    }
  }
}

std::ostream& operator<<(std::ostream& stream, const CJsonValue& value) {
  std::string text;
  AppendJson(text, value);
  return stream.write(text.data(), static_cast<std::streamsize>(text.size()));
}
