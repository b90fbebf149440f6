#include "mainwindow/manual.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace mainwindow {

std::optional<QUrl> ManualPage() {
  const QDir program(QCoreApplication::applicationDirPath());
  for (const char* place : {"Morvenly.manual", "../share/doc/morvenly/html"}) {
    const QFileInfo page(program, QLatin1String(place) + QLatin1String("/manual.html"));
    if (page.exists()) return QUrl::fromLocalFile(page.canonicalFilePath());
  }
  return std::nullopt;
}

}  // namespace mainwindow
