#include "ui/pasted_lines.h"

#include <fmt/format.h>

#include "base/text.h"
#include "ui/text.h"

namespace {

constexpr std::string_view kBlanks = " \t\r";

}  // namespace

std::vector<PastedLine> SplitPastedText(const std::string& text) {
  std::vector<PastedLine> lines;
  LineSplitter splitter(text);
  std::string_view line;
  while (splitter.Next(line)) {
    const std::string_view trimmed = Trim(line, kBlanks);
    if (trimmed.empty()) continue;
    PastedLine pasted;
    pasted.text = trimmed;
    lines.push_back(std::move(pasted));
  }
  return lines;
}

bool IsSurelyMeant(const std::string& line, const CGpsNamedPoint& place) {
  const QString asked = FromUtf8(line).simplified();
  const QString found = FromUtf8(place.name).simplified();
  return found.compare(asked, Qt::CaseInsensitive) == 0 ||
         found.startsWith(asked + QLatin1Char(','), Qt::CaseInsensitive);
}

std::string PastableText(const std::vector<CGpsNamedPoint>& points) {
  std::string text;
  for (const CGpsNamedPoint& point : points)
    text += fmt::format("{:.6f}, {:.6f}\t{}\n", point.latitude, point.longitude, point.name);
  return text;
}
