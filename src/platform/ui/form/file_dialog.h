#pragma once

#include <QFileDialog>

namespace quilla {

/// A dialog for a file that speaks Chinese throughout, whatever the desktop does, and writes days as the rest
/// of the program does.
class FileDialog final : public QFileDialog {
    Q_OBJECT

public:
    /// `filter` as Qt has it: "PDF 文件 (*.pdf)", several with ";;" between them.
    FileDialog(QWidget* parent, const QString& title, const QString& filter);

    /// Asks for a file to write, in the documents under the name `suggested` at first; one that is there is
    /// asked about. It gets the ending of the chosen filter when it has none. Empty when the operator gave
    /// up.
    QString saveFile(const QString& suggested);
    /// Asks for a file that is there. Empty when the operator gave up.
    QString openFile();
    /// Asks for a folder that is there or is made in the dialog, beginning in the one given. Empty when the
    /// operator gave up.
    QString openFolder(const QString& first);

private:
    QString chosen();
};

} // namespace quilla
