#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Percent escapes, the parts of an address, and Base64. All work on bytes: wide text is converted
// to UTF-8 first.

/// The text with every byte escaped that is neither an ASCII letter or digit nor in `keep`: "%" and
/// its value in upper-case hexadecimal without a leading zero, so that a line feed is "%A". With an
/// empty `keep` this suits the values of a query.
std::string UrlEscape(std::string_view text, std::string_view keep);

/// As `UrlEscape`, with the characters that have a meaning in an address left alone.
std::string UrlEscapeUri(std::string_view text);

/// As `UrlEscapeUri`, but an escape that stands ("%" and two hexadecimal digits) is left alone too,
/// so that an address can pass more than once.
std::string UrlEscapeOnce(std::string_view text);

/// The text with every "%" and the up to two characters behind it replaced by the byte that they
/// are the hexadecimal number of; 0 where they are none. A "+" stays.
std::string UrlUnescape(std::string_view text);

/// Splits an address into host, path (without its first "/"; left alone when there is none), port
/// (443 for "https://", otherwise 80, unless it is told) and whether it is secure. The scheme is
/// looked for anywhere, and "http://" before "https://".
/// Throws std::invalid_argument ("invalid stoi argument") and std::out_of_range ("stoi argument out
/// of range") for a port that is no number; of a number the low 16 bits count.
void SplitUrl(std::string_view url, std::string& host, std::string& path, uint16_t& port,
              bool& secure);

/// Whether a server can be asked for by this name: a name or a number of IPv4. Nothing else gets
/// into a request: an "@", say, would put a part of the address into a header of its own.
bool IsHostName(std::string_view host);

/// Appends the Base64 of `in` to `out`, with "=" at its end and without line breaks.
void Base64Encode(std::string_view in, std::string& out);

/// The bytes that groups of four characters stand for, up to the first "=" on a group's third or
/// fourth place. Characters outside the alphabet are not passed over: their value has all bits set.
std::string Base64Decode(std::string_view text);
