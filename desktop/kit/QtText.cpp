#include "desktop/kit/QtText.h"

#include <QLabel>
#include <QLineEdit>

namespace quoll {

QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void ShowText(QLabel* label, const QString& text) {
  if (label->text() != text) label->setText(text);
}

void ShowText(QLineEdit* box, const QString& text) {
  if (box->text() != text) box->setText(text);
}

void NameWidget(QWidget* widget, const QString& name, const QString& accessibleName) {
  widget->setObjectName(name);
  widget->setAccessibleName(accessibleName.trimmed());
}

}  // namespace quoll
