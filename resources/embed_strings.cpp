// Turns the tables of texts, a number, a tab and the text a line, into one C++ source.
//   embed_strings OUTPUT NAME=FILE...

#include <fstream>
#include <iostream>
#include <string>

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
  std::ifstream input(path);
  if (!input) {
    std::cerr << path << ": cannot be read\n";
    return false;
  }
  output << "namespace {\nconstexpr NumberedString k" << name << "Entries[] = {\n";
  unsigned long previous = 0;
  std::string line;
  for (size_t number = 1; std::getline(input, line); ++number) {
    const size_t tab = line.find('\t');
    const unsigned long id = tab == std::string::npos ? 0 : std::strtoul(line.c_str(), nullptr, 10);
    if (id <= previous) {
      std::cerr << path << ":" << number << ": expected a number above " << previous
                << ", a tab and a text\n";
      return false;
    }
    previous = id;
    output << "    {" << id << ", " << Quoted(line.substr(tab + 1)) << "},\n";
  }
  output << "};\n}  // namespace\n"
         << "const StringTable kStrings" << name << "{k" << name << "Entries, std::size(k" << name
         << "Entries)};\n";
  return true;
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
