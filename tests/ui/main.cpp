#include <QApplication>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "platform/console.h"
#include "services/offline/offline_finders.h"
#include "services/service_registry.h"
#include "tests/ui/played_session.h"
#include "ui/accessible_lists.h"
#include "ui/look.h"
#include "ui/window_program.h"

// One application for all tests of this process, off every screen. The engine of the map refuses
// its own sandbox to root, which tests in a container are.
int main(int argc, char** argv) {
  PrepareProcess();
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
  qputenv("CORVANE_LOOK", "light");
  const bool playsSession = argc == 4 && std::string_view(argv[1]) == "--play-session";
  if (!playsSession) testing::InitGoogleTest(&argc, argv);
  PrepareApplication(Look::kLight);
  QApplication application(argc, argv);
  ApplyLook(application, Look::kLight);
  NameListsForAssistiveTechnology();
  FillServiceRegistry(CServiceRegistry::Instance());
  RegisterOfflinePlaces(CServiceRegistry::Instance());
  if (playsSession) return PlaySession(argv[2], static_cast<uint32_t>(std::stoul(argv[3])));
  return RUN_ALL_TESTS();
}
