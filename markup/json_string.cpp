#include "markup/json_string.h"

#include "base/unicode.h"

void WriteJsonString(ByteSink& sink, std::string_view text) {
  sink.Put('"');
  for (size_t i = 0; i < text.size();) {
    const DecodedCodePoint decoded = DecodeUtf8(text, i);
    if (!decoded.valid) {
      sink.Write("\uFFFD");
    } else if (decoded.codePoint == '"' || decoded.codePoint == '\\') {
      sink.Put('\\');
      sink.Put(text[i]);
    } else if (decoded.codePoint < 0x20) {
      sink.Printf("\\u%04x", static_cast<uint32_t>(decoded.codePoint));
    } else {
      sink.Write(text.substr(i, decoded.length));
    }
    i += decoded.length;
  }
  sink.Put('"');
}
