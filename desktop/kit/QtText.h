// Texts of the machine in Qt's widgets.
#pragma once

#include <QString>
#include <string_view>

class QLabel;
class QLineEdit;
class QWidget;

namespace quoll {

// Text of the machine as Qt shows it. Its strings are UTF-8; other bytes become replacement characters.
QString ToQt(std::string_view text);

// Sets a widget's text only when it differs, so that nothing is laid out or painted for nothing.
void ShowText(QLabel* label, const QString& text);
void ShowText(QLineEdit* box, const QString& text);

// Names a widget, for tests and style sheets, and for those who hear it instead of seeing it.
void NameWidget(QWidget* widget, const QString& name, const QString& accessibleName);

}  // namespace quoll
