#include "output/export_desk.h"

#include "platform/sheet/sheet_writer.h"

#include <QDesktopServices>
#include <QDir>
#include <QStandardPaths>
#include <QUrl>

namespace quilla {

void DesktopSpreadsheets::show(const QString& file)
{
    if (QDesktopServices::openUrl(QUrl::fromLocalFile(file))) return;
    throw Error(ErrorNumber::CannotWriteSheet, u"Quilla.Sheet"_s,
        u"没有可以打开电子表格的程序，文件已保存为 "_s + file);
}

QString DesktopSpreadsheets::folder() const
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (folder.isEmpty()) folder = QDir::homePath();
    QDir().mkpath(folder);
    return folder;
}

} // namespace quilla
