#include "platform/core/documents_folder.h"

#include <QDir>
#include <QStandardPaths>

namespace quilla {

QString documentsFolder()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (folder.isEmpty()) folder = QDir::homePath();
    QDir().mkpath(folder);
    return folder;
}

} // namespace quilla
