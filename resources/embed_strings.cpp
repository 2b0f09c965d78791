// Turns the tables of texts into one C++ source.
//   embed_strings OUTPUT NAME=FILE...

#include <fstream>
#include <string>

#include "resources/numbered_lines.h"

namespace {

// The escapes of the tables are those of C++, so that only quotes need one of their own.
std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

bool EmbedTable(std::ostream& output, const std::string& name, const std::string& path) {
  output << "namespace {\nconstexpr NumberedString k" << name << "Entries[] = {\n";
  const bool isRead = ReadNumberedLines(path, [&output](uint32_t id, const std::string& text) {
    output << "    {" << id << ", " << Quoted(text) << "},\n";
  });
  output << "};\n}  // namespace\n"
         << "const StringTable kStrings" << name << "{k" << name << "Entries, std::size(k" << name
         << "Entries)};\n";
  return isRead;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  std::ofstream output(argv[1]);
  output << "#include \"resources/string_tables.h\"\n\n#include <iterator>\n\n";
  for (int i = 2; i < argc; ++i) {
    const std::string argument = argv[i];
    const size_t equals = argument.find('=');
    if (equals == std::string::npos) return 2;
    if (!EmbedTable(output, argument.substr(0, equals), argument.substr(equals + 1))) return 1;
  }
  output.close();
  return output ? 0 : 1;
}
