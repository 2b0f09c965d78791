#include "ui/layer_window.h"

#include <QDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

#include "base/text_ids.h"
#include "planner/tile_layers.h"
#include "planner/window_parts.h"
#include "ui/boxes.h"
#include "ui/dialog_buttons.h"
#include "ui/look.h"
#include "ui/text.h"

namespace {

constexpr int kWidth = 520;

/// The window and its fields.
class LayerWindow : public QDialog {
 public:
  LayerWindow(QWidget* parent, const MapLayer& layer)
      : QDialog(parent),
        m_name(new QLineEdit(FromUtf8(layer.name))),
        m_address(new QLineEdit(FromUtf8(layer.address))),
        m_credit(new QLineEdit(FromUtf8(layer.credit))),
        m_least(MakeZoomField(layer.leastZoom)),
        m_greatest(MakeZoomField(layer.greatestZoom)) {
    setWindowTitle(PlainText(kTextMapLayer));
    auto* const form = new QFormLayout;
    form->setVerticalSpacing(kSmallMargin);
    form->setHorizontalSpacing(kWideMargin);
    const auto add = [form](uint32_t textId, QWidget* field) {
      field->setAccessibleName(PlainText(textId));
      form->addRow(Text(textId), field);
    };
    add(kTextName, m_name);
    add(kTextServiceUrlLabel, m_address);
    m_address->setPlaceholderText(QLatin1String(kExampleTileAddress));
    m_address->setCursorPosition(0);
    auto* const marks = new QLabel(FilledText(kTextMapLayerMarks, "{z}", "{x}", "{y}", "{s}"));
    marks->setWordWrap(true);
    marks->setProperty("role", QStringLiteral("hint"));
    m_address->setAccessibleDescription(marks->text());
    form->addRow(QString(), marks);
    add(kTextMapLayerCredit, m_credit);
    m_credit->setCursorPosition(0);
    add(kTextMapLayerLeastZoom, m_least);
    add(kTextMapLayerGreatestZoom, m_greatest);
    QVBoxLayout* const layout = AddDialogLayout(*this);
    layout->addLayout(form);
    AddDialogButtons(*this, *layout);
    setMinimumWidth(kWidth);
    m_name->setFocus();
  }

  void accept() override {
    const uint32_t fault = FaultOfLayer(Entered());
    if (fault == 0) {
      QDialog::accept();
      return;
    }
    ShowMessageBox(this, FromUtf8(DescribeLayerFault(fault)), kBoxOk | kBoxWarningIcon);
    FieldOf(fault)->setFocus();
  }

  MapLayer Entered() const {
    return {ToUtf8(m_name->text().trimmed()), ToUtf8(m_address->text().trimmed()),
            ToUtf8(m_credit->text().trimmed()), static_cast<uint32_t>(m_least->value()),
            static_cast<uint32_t>(m_greatest->value())};
  }

 private:
  static QSpinBox* MakeZoomField(uint32_t zoom) {
    auto* const field = new QSpinBox;
    field->setRange(0, static_cast<int>(kGreatestTileZoom));
    field->setValue(static_cast<int>(zoom));
    field->setMaximumWidth(80);
    return field;
  }

  QWidget* FieldOf(uint32_t fault) const {
    if (fault == kTextMapLayerName) return m_name;
    if (fault == kTextMapLayerAddress) return m_address;
    return m_least;
  }

  QLineEdit* m_name;
  QLineEdit* m_address;
  QLineEdit* m_credit;
  QSpinBox* m_least;
  QSpinBox* m_greatest;
};

}  // namespace

bool EditLayerInWindow(QWidget* parent, MapLayer& layer) {
  LayerWindow window(parent, layer);
  if (window.exec() != QDialog::Accepted) return false;
  layer = window.Entered();
  return true;
}
