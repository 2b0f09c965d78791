#include "tests/ui/played_session.h"

#include <QTest>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

#include "conversion/format_search.h"
#include "conversion/write_trip.h"
#include "planner/point_list_view.h"
#include "platform/path_text.h"
#include "settings/settings.h"
#include "ui/main_window.h"
#include "ui/point_table.h"
#include "ui/workspace.h"

namespace {

constexpr size_t kMostPoints = 40;

class Session {
 public:
  Session(const std::string& folder, uint32_t seed)
      : m_folder(folder), m_notes(folder + "/notes"), m_random(seed), m_window(m_settings) {}

  [[noreturn]] void Play() {
    m_settings.Load();
    m_window.show();
    Note("ready");
    for (;;) {
      // Busy for a while, and then as quiet as somebody who looks at the map.
      for (uint32_t edits = Random(30); edits > 0; --edits) {
        Edit();
        QTest::qWait(static_cast<int>(Random(30)));
      }
      if (Random(2) == 0) SaveList();
      if (Random(2) == 0) SaveSetting();
      QTest::qWait(static_cast<int>(Random(3000)));
    }
  }

 private:
  uint32_t Random(uint32_t end) { return static_cast<uint32_t>(m_random() % end); }

  void Note(const std::string& line) { m_notes << line << std::endl; }

  void Edit() {
    CPointListView& view = m_window.Work().itineraryView;
    const size_t count = view.list->Count();
    const uint32_t kind = Random(8);
    if (count < 2 || (kind < 3 && count < kMostPoints)) {
      CGpsPoint point;
      point.latitude = 40 + 0.01 * Random(1000);
      point.longitude = 5 + 0.01 * Random(1000);
      point.name = std::to_string(++m_names);
      view.InsertPoint(Random(static_cast<uint32_t>(count) + 1), point);
    } else if (kind == 3) {
      view.RemoveRows(Random(static_cast<uint32_t>(count)));
    } else if (kind == 4) {
      view.RenamePoint(Random(static_cast<uint32_t>(count)), std::to_string(++m_names));
    } else if (kind == 5) {
      view.ReverseAll();
    } else if (kind == 6) {
      view.Undo();
    } else {
      view.MoveRow(Random(static_cast<uint32_t>(count)), Random(static_cast<uint32_t>(count)));
    }
    Note("list " + NamesIn(*view.list));
  }

  void SaveList() {
    const CGpsRoute& list = m_window.Work().driver.current;
    if (list.points.empty()) return;
    const FormatTable& table = m_window.Work().driver.table;
    ConversionContext context;
    WriteOptions options;
    options.silent = true;
    options.force = true;
    const TripWrite trip = WriteTrip(table, *FindWriter(table, u"gpx:107"),
                                     WidePath(SavedFile(m_folder)), list, {}, options, context);
    if (trip.status == 0) Note("saved " + NamesIn(list));
  }

  void SaveSetting() {
    ++m_settings.exportIndex;
    if (m_settings.Save() == 0) Note("setting " + std::to_string(m_settings.exportIndex));
  }

  const std::string m_folder;
  std::ofstream m_notes;
  std::mt19937 m_random;
  CSettings m_settings;
  MainWindow m_window;
  int m_names = 0;
};

}  // namespace

int PlaySession(const std::string& folder, uint32_t seed) {
  LiveIn(folder);
  Session(folder, seed).Play();
}

void LiveIn(const std::string& folder) {
  setenv("XDG_CONFIG_HOME", (folder + "/config").c_str(), 1);
  setenv("XDG_STATE_HOME", (folder + "/state").c_str(), 1);
}

SessionNotes ReadSessionNotes(const std::string& folder) {
  SessionNotes notes;
  std::ifstream stream(folder + "/notes");
  for (std::string line; std::getline(stream, line);) {
    const size_t blank = line.find(' ');
    if (blank == std::string::npos) continue;
    const std::string rest = line.substr(blank + 1);
    if (line.starts_with("list")) notes.lists.push_back(rest);
    if (line.starts_with("saved")) notes.saved = rest;
    if (line.starts_with("setting")) notes.setting = std::stoi(rest);
  }
  return notes;
}

std::string NamesIn(const CGpsPointArray& list) {
  std::string names;
  for (const CGpsPoint& point : list.points) names += point.name + " ";
  return names;
}

std::string SavedFile(const std::string& folder) { return folder + "/saved.gpx"; }
