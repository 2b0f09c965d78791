#include "ui/actions.h"

#include <QAction>
#include <QKeySequence>
#include <QWidget>

#include "base/text_ids.h"
#include "ui/icons.h"
#include "ui/text.h"

namespace {

struct CommandRow {
  Command command;
  const char* icon;
  uint32_t textId;
  const char* shortcut;  ///< in Qt's portable form; empty for none
};

constexpr CommandRow kRows[] = {
    {Command::kOpen, "open", kTextOpen, "Ctrl+O"},
    {Command::kExport, "export", kTextExport, "Ctrl+S"},
    {Command::kPrint, "print", kTextPrint, "Ctrl+P"},
    {Command::kExit, "exit", kTextExit, "Ctrl+Q"},
    {Command::kUndo, "undo", kTextUndo, "Ctrl+Z"},
    {Command::kRedo, "redo", kTextRedo, "Ctrl+Shift+Z"},
    {Command::kPaste, "paste", kTextPastePoints, "Ctrl+V"},
    {Command::kCopy, "paste", kTextCopyPoints, "Ctrl+C"},
    {Command::kAdd, "add", kTextAddPoint, "Insert"},
    {Command::kEdit, "edit", kTextEditPoint, "F4"},
    {Command::kRemove, "remove", kTextRemovePoints, "Delete"},
    {Command::kUp, "up", kTextMoveUp, "Alt+Up"},
    {Command::kDown, "down", kTextMoveDown, "Alt+Down"},
    {Command::kInvert, "invert", kTextInvert, ""},
    {Command::kRemoveAll, "remove-all", kTextRemoveAll, ""},
    {Command::kCalculate, "calculate", kTextCalculate, "F5"},
    {Command::kClearRoute, "clear-route", kTextClearRoute, ""},
    {Command::kOptimise, "optimise", kTextOptimise, ""},
    {Command::kShowAll, "show-all", kTextShowAll, "Ctrl+0"},
    {Command::kRoad, "road", kTextPlaceOnRoads, ""},
    {Command::kFavorite, "favourite", kTextAddToFavoritesCommand, "Ctrl+D"},
    {Command::kSettings, "settings", kTextSettings, "Ctrl+,"},
    {Command::kAbout, "about", kTextAbout, ""},
};

}  // namespace

Actions::Actions(QWidget& window) {
  for (const CommandRow& row : kRows) {
    auto* const action = new QAction(Text(row.textId), &window);
    action->setToolTip(PlainText(row.textId));
    action->setShortcut(QKeySequence::fromString(QLatin1String(row.shortcut)));
    action->setObjectName(QLatin1String(row.icon));
    m_actions[static_cast<size_t>(row.command)] = action;
  }
  (*this)[Command::kRoad].setCheckable(true);
  LoadIcons();
}

void Actions::LoadIcons() const {
  for (const CommandRow& row : kRows)
    (*this)[row.command].setIcon(LoadIcon(QLatin1String(row.icon)));
}
