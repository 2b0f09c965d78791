#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/point.h"

/// How well a pasted line was understood; better ones first.
enum class EPasted { kSure, kFound, kNotFound };

struct PastedLine {
  std::string text;  ///< as it was pasted, UTF-8
  EPasted quality = EPasted::kNotFound;
  CGpsNamedPoint place;  ///< unless it was not found
};

/// The lines of a text that are not blank.
std::vector<PastedLine> SplitPastedText(const std::string& text);

/// Latitude and longitude in decimal degrees at the start of a line, with a comma, a semicolon or
/// blanks between them; what follows is the name. Nothing for any other line.
std::optional<CGpsNamedPoint> ReadPastedPosition(const std::string& line);

/// Whether a place that was found is just what was asked for.
bool IsSurelyMeant(const std::string& line, const CGpsNamedPoint& place);

/// The stops in the form in which they are pasted again, a line each.
std::string PastableText(const std::vector<CGpsNamedPoint>& points);
