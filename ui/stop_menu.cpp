#include "ui/stop_menu.h"

#include <QAction>
#include <QMenu>
#include <QUrl>

#include "base/text_ids.h"
#include "platform/open_link.h"
#include "services/links/show_links.h"
#include "ui/main_window.h"
#include "ui/text.h"

namespace {

// A product without a web site of its own is built with a host that nobody can have.
bool LeadsNowhere(const std::string& link) {
  return QUrl(FromUtf8(link)).host().endsWith(QLatin1String(".example"));
}

void AddWebMaps(QMenu& menu, MainWindow& window, const CGpsNamedPoint& point, int32_t number) {
  QMenu* const maps = menu.addMenu(Text(kTextOpenInWebMap));
  for (const ShowLink& entry : ShowLinks(point, number)) {
    if (LeadsNowhere(entry.link)) continue;
    QObject::connect(maps->addAction(Text(entry.textId)), &QAction::triggered, &window,
                     [&window, link = entry.link] {
                       if (OpenLink(link) != 0) window.Tell(Text(kTextNoBrowser));
                     });
  }
}

}  // namespace

void OpenStopMenu(MainWindow& window, std::initializer_list<Command> commands,
                  const CGpsNamedPoint& point, int32_t number, const QPoint& place) {
  auto* const menu = new QMenu(&window);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const Command command : commands) menu->addAction(&window.Commands()[command]);
  if (commands.size() > 0) menu->addSeparator();
  AddWebMaps(*menu, window, point, number);
  menu->popup(place);
}
