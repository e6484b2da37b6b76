// Files that the user drops on a window.
#pragma once

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <optional>
#include <string>

namespace quoll {

// Takes a drag that brings files.
inline void TakeDrag(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

// The first of the dropped files that lies on this computer.
inline std::optional<std::string> DroppedFile(QDropEvent* event) {
  event->acceptProposedAction();
  for (const QUrl& url : event->mimeData()->urls())
    if (url.isLocalFile()) return url.toLocalFile().toStdString();
  return std::nullopt;
}

}  // namespace quoll
