#include "ui/printing.h"

#include <QImage>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextDocument>
#include <QWebEngineView>

#include "base/measure_text.h"
#include "base/product.h"
#include "base/text_ids.h"
#include "model/point_list.h"
#include "model/route_leg.h"
#include "planner/route_table.h"
#include "settings/settings.h"
#include "ui/main_window.h"
#include "ui/map_view.h"
#include "ui/text.h"
#include "ui/workspace.h"

namespace {

constexpr int kMapWidth = 640;  // of the page's 700 or so
constexpr char kMapAddress[] = "map.png";

QString Cell(const QString& text, const char* align = "left") {
  return QStringLiteral("<td align=\"%1\">%2</td>").arg(QLatin1String(align), text.toHtmlEscaped());
}

QString Heading(uint32_t textId, const char* align = "left") {
  return QStringLiteral("<th align=\"%1\">%2</th>")
      .arg(QLatin1String(align), Text(textId).toHtmlEscaped());
}

QString TotalsText(const CGpsPointArray& list, const CSettings& settings) {
  const CRouteLeg* const last = list.points.empty() ? nullptr : list.points.back().GetRouteLeg();
  if (!last || last->GetTotalDistance() == 0) return {};
  return Text(kTextTotalDistance) +
         FromUtf8(FormatDistance(last->GetTotalDistance(), settings.distMiles)) +
         QStringLiteral(" (") + FromUtf8(FormatDuration(last->GetTotalDuration())) +
         QLatin1Char(')');
}

}  // namespace

std::unique_ptr<QTextDocument> MakePrintDocument(const CGpsPointArray& list,
                                                 const CSettings& settings, const QImage& map) {
  auto document = std::make_unique<QTextDocument>();
  QString html = QStringLiteral("<h2>%1</h2>").arg(FromUtf8(list.name).toHtmlEscaped());
  if (!map.isNull()) {
    document->addResource(QTextDocument::ImageResource, QUrl(QLatin1String(kMapAddress)), map);
    html += QStringLiteral("<p><img src=\"%1\" width=\"%2\"></p>")
                .arg(QLatin1String(kMapAddress))
                .arg(kMapWidth);
  }
  html += QStringLiteral("<table width=\"100%\" cellpadding=\"3\" cellspacing=\"0\"><thead><tr>") +
          Heading(kTextColumnNumber) + Heading(kTextName) + Heading(kTextDistance, "right") +
          Heading(kTextDuration, "right") + Heading(kTextComment) + QStringLiteral("</tr></thead>");
  for (size_t i = 0; i < list.Count(); ++i) {
    const auto cell = [&](RouteColumn column) {
      return FromUtf8(RouteTableText(list, i, column, settings));
    };
    html += QStringLiteral("<tr>") + Cell(QString::number(i + 1)) + Cell(cell(RouteColumn::kName)) +
            Cell(cell(RouteColumn::kDistance), "right") +
            Cell(cell(RouteColumn::kDuration), "right") + Cell(cell(RouteColumn::kComment)) +
            QStringLiteral("</tr>");
  }
  html += QStringLiteral("</table><p>%1</p><p><small>%2</small></p>")
              .arg(TotalsText(list, settings).toHtmlEscaped(),
                   FilledText(kTextPrintedFrom, std::string(kProductName)).toHtmlEscaped());
  document->setHtml(html);
  return document;
}

void PrintItinerary(MainWindow& window, const CSettings& settings) {
  const QImage map = window.Map().IsDark() ? QImage() : window.Map().View().grab().toImage();
  const auto document = MakePrintDocument(window.Work().driver.current, settings, map);
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(FromUtf8(window.Work().driver.current.name));
  QPrintDialog dialog(&printer, &window);
  dialog.setWindowTitle(PlainText(kTextPrint));
  if (dialog.exec() == QDialog::Accepted) document->print(&printer);
}
