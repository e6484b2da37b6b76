#include "desktop/Printing.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>

#include "desktop/kit/QtText.h"

namespace quoll {

namespace {

constexpr int kPoints = 9;
constexpr int kTab = 8;
constexpr const char* kDocument = "QUOLLEMU";

// False when the device takes nothing.
bool PrintPages(QPagedPaintDevice& device, std::string_view text) {
  QPainter painter;
  if (!painter.begin(&device)) return false;
  painter.setFont(PrinterFont());
  const QFontMetricsF metrics(painter.font(), &device);
  const qreal high = metrics.lineSpacing();
  const auto fit = [](int room, qreal each) { return std::max(1, static_cast<int>(room / each)); };
  const int columns = fit(device.width(), metrics.horizontalAdvance('M'));
  const auto pages = PrintedPages(ToQt(text), columns, fit(device.height(), high));
  for (size_t page = 0; page < pages.size(); ++page) {
    if (page > 0 && !device.newPage()) return false;
    qreal base = metrics.ascent();
    for (const QString& line : pages[page]) {
      painter.drawText(QPointF(0, base), line);
      base += high;
    }
  }
  return painter.end();
}

}  // namespace

std::vector<std::string> PrinterNames() {
  std::vector<std::string> names;
  for (const QString& name : QPrinterInfo::availablePrinterNames()) names.push_back(name.toStdString());
  names.emplace_back(kPrintToFile);
  return names;
}

QFont PrinterFont() {
  QFont font(QStringList{"terminal", "DejaVu Sans Mono", "monospace"}, kPoints);
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  return font;
}

std::vector<QStringList> PrintedPages(const QString& text, int columns, int rows) {
  std::vector<QStringList> pages(1);
  QString line;
  bool newPage = false;  // before the next line
  const auto endLine = [&] {
    if (newPage || pages.back().size() == rows) pages.emplace_back();
    newPage = false;
    pages.back() << line;
    line.clear();
  };
  for (const QChar c : text) {
    if (c == '\n') {
      endLine();
    } else if (c == '\f') {
      if (!line.isEmpty()) endLine();
      if (newPage) endLine();  // a page with nothing on it
      newPage = true;
    } else {
      const int count = c == '\t' ? kTab - static_cast<int>(line.size()) % kTab : 1;
      for (int i = 0; i < count; ++i) {
        if (line.size() == columns) endLine();
        line += c == '\t' ? QChar(' ') : c;
      }
    }
  }
  if (!line.isEmpty()) endLine();
  return pages;
}

std::string PrintOn(const std::string& printer, std::string_view text) {
  const QPrinterInfo info = QPrinterInfo::printerInfo(ToQt(printer));
  if (info.isNull()) return printer + ": there is no such printer";
  QPrinter device(info);
  device.setDocName(kDocument);
  if (!PrintPages(device, text) || device.printerState() == QPrinter::Error)
    return printer + ": it can't be printed on";
  return {};
}

QByteArray PrintedPdf(std::string_view text) {
  QByteArray pdf;
  QBuffer buffer(&pdf);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter device(&buffer);
  device.setTitle(kDocument);
  device.setCreator(kDocument);
  PrintPages(device, text);
  return pdf;
}

}  // namespace quoll
