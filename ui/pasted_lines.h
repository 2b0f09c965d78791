#pragma once

#include <string>
#include <vector>

#include "model/point.h"

/// How well a pasted line was understood; better ones first.
enum class PasteQuality { kSure, kFound, kNotFound };

struct PastedLine {
  std::string text;  ///< as it was pasted, UTF-8
  PasteQuality quality = PasteQuality::kNotFound;
  std::vector<CGpsNamedPoint> places;  ///< several of a link; none where nothing was found
};

/// The lines of a text that are not blank.
std::vector<PastedLine> SplitPastedText(const std::string& text);

/// Whether a place that was found is just what was asked for.
bool IsSurelyMeant(const std::string& line, const CGpsNamedPoint& place);

/// The stops in the form in which they are pasted again, a line each.
std::string PastableText(const std::vector<CGpsNamedPoint>& points);
