#include "conversion/fit.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "base/text.h"
#include "base/unicode.h"
#include "platform/text_encoder.h"
#include "platform/text_speller.h"

namespace {

// What stands in for a character that means something else in a file.
constexpr std::pair<char, char> kReplacements[] = {{',', ';'},  {'|', '/'}, {'"', '\''}, {'=', '-'},
                                                   {'*', '-'},  {'&', '+'}, {'<', '('},  {'>', ')'},
                                                   {'\r', ' '}, {'\n', ' '}};

char ReplacementOf(char separator) {
  for (const auto& [from, to] : kReplacements) {
    if (from == separator) return to;
  }
  return ' ';
}

// What belongs to the letter in front of it.
bool IsJoined(char32_t c) {
  return (c >= 0x300 && c <= 0x36F) || (c >= 0x1AB0 && c <= 0x1AFF) ||
         (c >= 0x1DC0 && c <= 0x1DFF) || (c >= 0x20D0 && c <= 0x20FF) ||
         (c >= 0xFE00 && c <= 0xFE0F) || (c >= 0xFE20 && c <= 0xFE2F) || c == 0x200D;
}

/// The letters that the texts of a file can have.
class Alphabet {
 public:
  Alphabet(TextForm form, const std::string& encoding) : m_form(form) {
    if (form == TextForm::kNarrow && !encoding.empty()) m_encoder.emplace().Open(encoding);
  }

  bool IsComplete() const { return m_form == TextForm::kUnicode; }

  bool Holds(std::string_view character, const DecodedCodePoint& decoded) {
    if (IsComplete() || decoded.codePoint < 0x80 || !decoded.valid) return true;
    return m_encoder ? m_encoder->Holds(character) : decoded.codePoint <= 0xFF;
  }

  /// Size of one character in the file, in the units of the limits.
  size_t SizeOf(std::string_view character, const DecodedCodePoint& decoded) {
    if (m_encoder) return m_encoder->Encode(character).size();
    return IsComplete() && decoded.codePoint > 0xFFFF ? 2 : 1;
  }

 private:
  TextForm m_form;
  std::optional<TextEncoder> m_encoder;
};

/// Changes texts so that a file can hold them.
class TextFitter {
 public:
  TextFitter(const CItineraryFormat& row, const std::string& encoding, bool isTrial,
             FitReport& report)
      : m_limits(row.facts.limits),
        m_alphabet(row.facts.text, encoding),
        m_isTrial(isTrial),
        m_report(report) {}

  void FitListName(std::string& name) {
    if (m_limits.writesListName) Fit(name, kNoLimit);
  }
  void FitName(std::string& name) { Fit(name, m_limits.longestName); }
  void FitComment(std::string& comment) { Fit(comment, m_limits.longestComment); }

  /// A name that leaves room for a number.
  std::string WithRoom(const std::string& name) {
    constexpr size_t kRoom = 9;  // a blank and eight digits
    std::string shorter = name;
    if (m_limits.longestName != kNoLimit)
      Cut(shorter, std::max(m_limits.longestName, 2 * kRoom) - kRoom);
    return shorter;
  }

 private:
  void Fit(std::string& text, size_t longest) {
    if (text.empty() || longest == 0) return;
    Spell(text);
    ReplaceSeparators(text);
    if (Cut(text, longest)) ++m_report.textsCut;
  }

  // Calls `take` with the pieces of a text that the alphabet has, and with those that it lacks.
  template <typename Take>
  void ForEachPiece(std::string_view text, Take take) {
    size_t start = 0;
    bool isHeld = true;
    for (size_t i = 0; i < text.size();) {
      const DecodedCodePoint decoded = DecodeUtf8(text, i);
      const bool holds = m_alphabet.Holds(text.substr(i, decoded.length), decoded);
      if (holds != isHeld) {
        if (i > start) take(text.substr(start, i - start), isHeld);
        start = i;
        isHeld = holds;
      }
      i += decoded.length;
    }
    if (start < text.size()) take(text.substr(start), isHeld);
  }

  bool Lacks(std::string_view text) {
    bool lacks = false;
    if (!m_alphabet.IsComplete()) {
      ForEachPiece(text, [&lacks](std::string_view, bool isHeld) { lacks = lacks || !isHeld; });
    }
    return lacks;
  }

  // The text with every piece that the alphabet lacks put through `change`.
  template <typename Change>
  std::string Changed(std::string_view text, Change change) {
    std::string changed;
    ForEachPiece(text, [&](std::string_view piece, bool isHeld) {
      changed += isHeld ? std::string(piece) : change(piece);
    });
    return changed;
  }

  void Spell(std::string& text) {
    if (!Lacks(text)) return;
    const TextSpeller* const speller = m_isTrial ? nullptr : LoadTextSpeller();
    m_report.lacksSpeller = !m_isTrial && !speller;
    if (!m_report.lacksSpeller) ++m_report.textsSpelled;
    if (!speller) return;
    text = Changed(speller->Compose(text), [&](std::string_view piece) {
      std::string spelled = speller->InLatin(piece);
      if (Lacks(spelled)) spelled = speller->InAscii(spelled);
      return Changed(spelled, [](std::string_view) { return std::string("?"); });
    });
  }

  void ReplaceSeparators(std::string& text) {
    bool hasReplaced = false;
    for (char& c : text) {
      if (m_limits.separators.find(c) == std::string_view::npos) continue;
      c = ReplacementOf(c);
      hasReplaced = true;
    }
    if (hasReplaced) ++m_report.separatorsReplaced;
  }

  // False when there is nothing to cut.
  bool Cut(std::string& text, size_t longest) {
    if (longest == kNoLimit) return false;
    size_t size = 0;
    size_t letter = 0;  // where the last letter begins
    for (size_t i = 0; i < text.size();) {
      const DecodedCodePoint decoded = DecodeUtf8(text, i);
      if (!decoded.valid || !IsJoined(decoded.codePoint)) letter = i;
      size += m_alphabet.SizeOf(std::string_view(text).substr(i, decoded.length), decoded);
      if (size > longest) {
        text.resize(letter);
        return true;
      }
      i += decoded.length;
    }
    return false;
  }

  const WriterLimits& m_limits;
  Alphabet m_alphabet;
  const bool m_isTrial;  ///< what would be done is only counted
  FitReport& m_report;
};

// Blanks at the ends of a name are not looked at when stops are found.
std::string KeyOf(const std::string& name) { return std::string(Trim(name, " ")); }

/// Gives every place a name of its own. Stops at one place may share a name.
class NameGiver {
 public:
  NameGiver(const CGpsPointArray& list, TextFitter& texts, FitReport& report)
      : m_texts(texts), m_report(report) {
    m_places.reserve(list.Count());
    for (const CGpsPoint& point : list.points) m_wanted.insert(KeyOf(point.name));
  }

  void Take(CGpsPoint& point, size_t number) {
    const std::string key = KeyOf(point.name);
    if (!key.empty() && Keep(key, point)) return;
    ++(key.empty() ? m_report.namesGiven : m_report.namesMadeUnique);
    point.name = key.empty() ? Unnamed(point, number) : Numbered(key, point);
  }

 private:
  using Place = std::pair<double, double>;

  static Place PlaceOf(const CGpsPoint& point) { return {point.latitude, point.longitude}; }

  // False when the name stands for another place already.
  bool Keep(const std::string& name, const CGpsPoint& point) {
    const auto [found, isNew] = m_places.try_emplace(name, PlaceOf(point));
    return isNew || found->second == PlaceOf(point);
  }

  std::string Unnamed(const CGpsPoint& point, size_t number) {
    std::string name = std::to_string(number);
    return IsFree(name) && Keep(name, point) ? name : Numbered(name, point);
  }

  bool IsFree(const std::string& name) const { return !m_wanted.contains(name); }

  std::string Numbered(const std::string& name, const CGpsPoint& point) {
    const std::string start = m_texts.WithRoom(name);
    for (size_t& number = m_numbers.try_emplace(start, 1).first->second;;) {
      std::string numbered = start + " " + std::to_string(++number);
      if (IsFree(KeyOf(numbered)) && Keep(KeyOf(numbered), point)) return numbered;
    }
  }

  TextFitter& m_texts;
  FitReport& m_report;
  std::unordered_set<std::string> m_wanted;
  std::unordered_map<std::string, Place> m_places;
  std::unordered_map<std::string, size_t> m_numbers;  ///< given last behind the start of a name
};

FitReport Fit(CGpsPointArray& list, const CItineraryFormat& row, const std::string& encoding,
              bool isTrial) {
  FitReport report;
  TextFitter texts(row, encoding, isTrial, report);
  texts.FitListName(list.name);
  for (CGpsPoint& point : list.points) {
    texts.FitName(point.name);
    texts.FitComment(point.comment);
  }
  if (row.facts.findsByName) {
    NameGiver names(list, texts, report);
    size_t number = 0;
    for (CGpsPoint& point : list.points) names.Take(point, ++number);
  }
  if (list.Count() > row.facts.limits.mostPoints) report.mostPoints = row.facts.limits.mostPoints;
  return report;
}

}  // namespace

FitReport FitItinerary(CGpsPointArray& list, const CItineraryFormat& row,
                       const std::string& encoding) {
  return Fit(list, row, encoding, /*isTrial=*/false);
}

bool WouldFit(const CGpsPointArray& list, const CItineraryFormat& row,
              const std::string& encoding) {
  if (list.Count() > row.facts.limits.mostPoints) return true;
  CGpsWaypointList copy(list);
  return Fit(copy, row, encoding, /*isTrial=*/true).HasDone();
}
