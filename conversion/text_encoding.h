#pragma once

#include <string>

#include "model/point_list.h"

// 8-bit formats write no more of a character than its number, up to U+00FF. With an encoding told
// for the run the same bytes are letters of that encoding.

/// Whether files of 8-bit formats can have texts in this encoding: the system knows it by this
/// name, and digits, letters and separators are the bytes that they are in ASCII.
bool IsFileEncoding(const std::string& name);

/// Decodes the texts of a list that its reader has widened byte by byte.
void DecodeTexts(const std::string& encoding, CGpsPointArray& list);

/// A copy of a list, without legs, whose texts become bytes of the encoding when a writer narrows
/// them.
CGpsWaypointList EncodedTexts(const std::string& encoding, const CGpsPointArray& list);
