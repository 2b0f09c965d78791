// Parses an XML file with Expat and only counts: the floor under every XML reader.

#include <cstdint>
#include <cstdio>
#include <memory>

#include <expat.h>

namespace {

struct Counts {
  uint64_t elements = 0;
  uint64_t attributes = 0;
  uint64_t text = 0;
};

void XMLCALL OnStart(void* data, const XML_Char*, const XML_Char** attributes) {
  auto& counts = *static_cast<Counts*>(data);
  ++counts.elements;
  for (; *attributes != nullptr; attributes += 2) ++counts.attributes;
}

void XMLCALL OnEnd(void*, const XML_Char*) {}

void XMLCALL OnText(void* data, const XML_Char*, int length) {
  static_cast<Counts*>(data)->text += static_cast<uint64_t>(length);
}

struct Closer {
  void operator()(std::FILE* file) const { std::fclose(file); }
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: expat_floor FILE\n");
    return 2;
  }
  const std::unique_ptr<std::FILE, Closer> file(std::fopen(argv[1], "rb"));
  if (!file) {
    std::perror(argv[1]);
    return 1;
  }
  const std::unique_ptr<XML_ParserStruct, Closer> parser(XML_ParserCreate(nullptr));
  Counts counts;
  XML_SetUserData(parser.get(), &counts);
  XML_SetElementHandler(parser.get(), OnStart, OnEnd);
  XML_SetCharacterDataHandler(parser.get(), OnText);

  constexpr int kPiece = 1 << 17;
  for (bool atEnd = false; !atEnd;) {
    void* const buffer = XML_GetBuffer(parser.get(), kPiece);
    if (buffer == nullptr) return 1;
    const size_t count = std::fread(buffer, 1, kPiece, file.get());
    if (std::ferror(file.get()) != 0) return 1;
    atEnd = count < kPiece;
    if (XML_ParseBuffer(parser.get(), static_cast<int>(count), atEnd) != XML_STATUS_OK) {
      std::fprintf(stderr, "%s: %s\n", argv[1], XML_ErrorString(XML_GetErrorCode(parser.get())));
      return 1;
    }
  }
  std::printf("%llu elements, %llu attributes, %llu bytes of text\n",
              static_cast<unsigned long long>(counts.elements),
              static_cast<unsigned long long>(counts.attributes),
              static_cast<unsigned long long>(counts.text));
  return 0;
}
