// Sources that another program changes while they are read: a conversion gives the whole of one
// state of the file, or tells that the file is in use.

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/run_program.h"
#include "tests/temporary_folder.h"

namespace {

namespace fs = std::filesystem;

constexpr int kRuns = 6;
constexpr int kStops = 60000;

/// A file that is written again and again, with stops of two names in turn.
struct Source {
  std::string name;
  std::string states[2];
};

Source Itinerary() {
  Source source{"a.itn", {}};
  for (int i = 0; i < kStops; ++i) {
    source.states[0] += "100000|200000|Amsterdam|0|\r\n";
    source.states[1] += "300000|400000|Barcelona|0|\r\n";
  }
  return source;
}

Source Gpx() {
  Source source{"a.gpx", {}};
  const std::string start = "<gpx version=\"1.0\"><rte>\n";
  const std::string end = "</rte></gpx>\n";
  source.states[0] = source.states[1] = start;
  for (int i = 0; i < kStops / 3; ++i) {
    source.states[0] += "<rtept lat=\"2\" lon=\"1\"><name>Amsterdam</name></rtept>\n";
    source.states[1] += "<rtept lat=\"4\" lon=\"3\"><name>Barcelona</name></rtept>\n";
  }
  for (std::string& state : source.states) state += end;
  return source;
}

/// Does `change` with 0, 1, 0, 1 ... as long as it lives.
class Changing {
 public:
  explicit Changing(std::function<void(int)> change)
      : m_thread([this, change = std::move(change)] {
          for (int turn = 1; !m_ends; turn = 1 - turn) change(turn);
        }) {}
  ~Changing() {
    m_ends = true;
    m_thread.join();
  }
  Changing(const Changing&) = delete;
  Changing& operator=(const Changing&) = delete;

 private:
  std::atomic<bool> m_ends = false;
  std::thread m_thread;
};

// The messages for a file of which nothing was converted. An XML file that was cut is no XML.
bool IsCleanError(const std::string& message, const std::string& source) {
  return message == source +
                        ": The file cannot be read. Reason: the file is in use by another program; "
                        "close it there and try again\n" ||
         message == source + ": The file cannot be read.\n" ||
         message.starts_with(source + ": The file cannot be read. The error is in line ") ||
         message == source + ": Unknown file format.\n" ||
         message == source + ": The file cannot be read. Reason: no such file or folder\n" ||
         message == "The source \"" + source + "\" does not exist.\n";
}

// Converts the file while it changes. Each run must end in a whole target with stops of one state
// only, or leave the old one and say why.
void ConvertWhile(const Source& source, const std::function<void(const fs::path&, int)>& change) {
  const TemporaryFolder folder;
  fs::create_directory(folder.PathTo("in"));
  const std::string path = folder.PathTo("in/" + source.name);
  folder.Put("in/" + source.name, source.states[0]);
  const Changing changing([&](int turn) { change(path, turn); });
  for (int i = 0; i < kRuns; ++i) {
    folder.Put("out.itn", "old");
    const ProgramResult result =
        RunConverter({path, "itn", "--quiet", "--output", folder.PathTo("out.itn")});
    const std::string target = folder.Get("out.itn");
    if (result.status == 0) {
      EXPECT_EQ(result.errors, "");
      EXPECT_TRUE(target.ends_with("|2|\r\n"));
      // The only stop that may be cut is the last of a file that is still growing.
      const std::string rest = target.substr(0, target.rfind("\r\n", target.size() - 3) + 2);
      const bool hasFirst = rest.find("Amsterdam") != std::string::npos;
      const bool hasSecond = rest.find("Barcelona") != std::string::npos;
      EXPECT_FALSE(hasFirst && hasSecond) << "two states in one file";
    } else {
      EXPECT_LE(result.status, 2);
      EXPECT_TRUE(IsCleanError(result.errors, path)) << result.errors;
      EXPECT_EQ(target, "old");
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), {}), 2);
  }
}

void Write(const fs::path& path, const std::string& bytes, const char* mode = "wb") {
  std::FILE* const file = std::fopen(path.c_str(), mode);
  ASSERT_NE(file, nullptr);
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::fclose(file);
}

void ForBothKinds(
    const std::function<void(const Source& source, const fs::path& path, int turn)>& change) {
  for (const Source& source : {Itinerary(), Gpx()}) {
    ConvertWhile(source, [&](const fs::path& path, int turn) { change(source, path, turn); });
  }
}

TEST(ChangingSource, Rewritten) {
  ForBothKinds([](const Source& source, const fs::path& path, int turn) {
    Write(path, source.states[turn]);
  });
}

TEST(ChangingSource, Growing) {
  ForBothKinds([](const Source& source, const fs::path& path, int) {
    if (fs::file_size(path) > 4 * source.states[0].size()) fs::resize_file(path, 0);
    Write(path, source.states[0], "ab");
  });
}

TEST(ChangingSource, CutToNothing) {
  ForBothKinds([](const Source& source, const fs::path& path, int) {
    fs::resize_file(path, 0);
    Write(path, source.states[0]);
  });
}

TEST(ChangingSource, Replaced) {
  ForBothKinds([](const Source& source, const fs::path& path, int turn) {
    const fs::path next = path.string() + ".next";
    Write(next, source.states[turn]);
    fs::rename(next, path);
  });
}

TEST(ChangingSource, Deleted) {
  ForBothKinds([](const Source& source, const fs::path& path, int turn) {
    fs::remove(path);
    Write(path, source.states[turn]);
  });
}

}  // namespace
