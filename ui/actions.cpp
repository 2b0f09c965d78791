#include "ui/actions.h"

#include <QAction>
#include <QKeySequence>
#include <QWidget>

#include "base/text_ids.h"
#include "ui/icons.h"
#include "ui/text.h"

namespace {

struct CommandRow {
  ECommand command;
  const char* icon;
  uint32_t textId;
  const char* shortcut;  ///< in Qt's portable form; empty for none
};

constexpr CommandRow kRows[] = {
    {ECommand::kOpen, "open", kTextOpen, "Ctrl+O"},
    {ECommand::kExport, "export", kTextExport, "Ctrl+S"},
    {ECommand::kPrint, "print", kTextPrint, "Ctrl+P"},
    {ECommand::kExit, "exit", kTextExit, "Ctrl+Q"},
    {ECommand::kUndo, "undo", kTextUndo, "Ctrl+Z"},
    {ECommand::kRedo, "redo", kTextRedo, "Ctrl+Shift+Z"},
    {ECommand::kPaste, "paste", kTextPastePoints, "Ctrl+V"},
    {ECommand::kCopy, "paste", kTextCopyPoints, "Ctrl+C"},
    {ECommand::kAdd, "add", kTextAddPoint, "Insert"},
    {ECommand::kEdit, "edit", kTextEditPoint, "F4"},
    {ECommand::kRemove, "remove", kTextRemovePoints, "Delete"},
    {ECommand::kUp, "up", kTextMoveUp, "Alt+Up"},
    {ECommand::kDown, "down", kTextMoveDown, "Alt+Down"},
    {ECommand::kInvert, "invert", kTextInvert, ""},
    {ECommand::kRemoveAll, "remove-all", kTextRemoveAll, ""},
    {ECommand::kCalculate, "calculate", kTextCalculate, "F5"},
    {ECommand::kClearRoute, "clear-route", kTextClearRoute, ""},
    {ECommand::kOptimise, "optimise", kTextOptimise, ""},
    {ECommand::kShowAll, "show-all", kTextShowAll, "Ctrl+0"},
    {ECommand::kRoad, "road", kTextPlaceOnRoads, ""},
    {ECommand::kFavorite, "favourite", kTextAddToFavoritesCommand, "Ctrl+D"},
    {ECommand::kSettings, "settings", kTextSettings, "Ctrl+,"},
    {ECommand::kAbout, "about", kTextAbout, ""},
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
  (*this)[ECommand::kRoad].setCheckable(true);
  LoadIcons();
}

void Actions::LoadIcons() const {
  for (const CommandRow& row : kRows) (*this)[row.command].setIcon(LoadIcon(QLatin1String(row.icon)));
}
