#include "output/export_desk.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>

namespace quilla {

bool DesktopSpreadsheets::show(const QString& file)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

void DesktopSpreadsheets::showFolder(const QString& file)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(file).path()));
}

QString DesktopSpreadsheets::folder() const
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (folder.isEmpty()) folder = QDir::homePath();
    QDir().mkpath(folder);
    return folder;
}

} // namespace quilla
