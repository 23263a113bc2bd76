#include "output/export_desk.h"

#include "platform/core/documents_folder.h"

#include <QDesktopServices>
#include <QFileInfo>
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
    return documentsFolder();
}

} // namespace quilla
