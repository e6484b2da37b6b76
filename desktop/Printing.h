// Printing a text: the host's printers, and a PDF file as one of them.
#pragma once

#include <QByteArray>
#include <QFont>
#include <QStringList>
#include <string>
#include <string_view>
#include <vector>

namespace quoll {

inline constexpr std::string_view kPrintToFile = "Print to file";

// By name, as the host has them at this moment; kPrintToFile behind them.
std::vector<std::string> PrinterNames();

// "terminal" of 9 points, or the nearest to it that has all characters of one width.
QFont PrinterFont();

// What stands on each page, lines of at most so many characters, at most so many of them. A longer line goes
// on in the next one, a form feed begins a page, tabs lead to every eighth column. There is always a first
// page.
std::vector<QStringList> PrintedPages(const QString& text, int columns, int rows);

// Prints a text, UTF-8, on a printer of the host. Empty, or what went wrong.
std::string PrintOn(const std::string& printer, std::string_view text);

// The same as a PDF document.
QByteArray PrintedPdf(std::string_view text);

}  // namespace quoll
