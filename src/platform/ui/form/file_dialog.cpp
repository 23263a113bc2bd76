#include "platform/ui/form/file_dialog.h"

#include "platform/core/documents_folder.h"
#include "platform/core/text.h"
#include "platform/ui/look/theme.h"

#include <QDateTime>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QSortFilterProxyModel>
#include <QTreeView>

namespace quilla {

namespace {

enum FileColumn { Name, Size, Kind, Changed };

/// The kinds and days of files would stand in the language of the system, and their size as a volume of
/// space.
class ChineseFiles final : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole || index.column() < Kind) return QSortFilterProxyModel::data(index, role);
        const QFileInfo file = fileOf(mapToSource(index));
        return index.column() == Kind ? kindOf(file) : file.lastModified().toString(u"yyyy-MM-dd HH:mm");
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (role == Qt::DisplayRole && section == Size) return u"大小"_s;
        return QSortFilterProxyModel::headerData(section, orientation, role);
    }

protected:
    /// Folders first, then by what the column shows.
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override
    {
        const QFileInfo a = fileOf(left);
        const QFileInfo b = fileOf(right);
        if (a.isDir() != b.isDir()) return a.isDir() == (sortOrder() == Qt::AscendingOrder);
        if (left.column() == Size) return a.size() < b.size();
        if (left.column() == Changed) return a.lastModified() < b.lastModified();
        const int kinds = left.column() == Kind ? kindOf(a).compare(kindOf(b)) : 0;
        return kinds ? kinds < 0 : QString::localeAwareCompare(a.fileName(), b.fileName()) < 0;
    }

private:
    QFileInfo fileOf(const QModelIndex& source) const
    {
        return static_cast<const QFileSystemModel*>(sourceModel())->fileInfo(source);
    }

    static QString kindOf(const QFileInfo& file)
    {
        if (file.isDir()) return u"文件夹"_s;
        return file.suffix().isEmpty() ? u"文件"_s : file.suffix().toUpper() + u" 文件"_s;
    }
};

/// "pdf" of "PDF 文件 (*.pdf)".
QString endingOf(const QString& filter)
{
    return filter.section(u"*."_s, 1, 1).section(u')', 0, 0).section(u' ', 0, 0);
}

} // namespace

FileDialog::FileDialog(QWidget* parent, const QString& title, const QString& filter)
    : QFileDialog(parent, title, {}, filter)
{
    setOption(DontUseNativeDialog);
    setProxyModel(new ChineseFiles(this));
    setViewMode(Detail);
    resize(pixelsOf(9600, *this), pixelsOf(6000, *this));
    QHeaderView* header = findChild<QTreeView*>()->header();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(Name, QHeaderView::Stretch);
}

QString FileDialog::saveFile(const QString& suggested)
{
    setAcceptMode(AcceptSave);
    setDirectory(documentsFolder());
    setDefaultSuffix(endingOf(selectedNameFilter())); // before the question about an older file
    connect(this, &QFileDialog::filterSelected, this,
        [this](const QString& filter) { setDefaultSuffix(endingOf(filter)); });
    selectFile(QString(suggested).replace(u'/', u'-'));
    return chosen();
}

QString FileDialog::openFile()
{
    setFileMode(ExistingFile);
    return chosen();
}

QString FileDialog::openFolder(const QString& first)
{
    setFileMode(Directory);
    setOption(ShowDirsOnly);
    setDirectory(first);
    return chosen();
}

QString FileDialog::chosen()
{
    return exec() == Accepted ? selectedFiles().value(0) : QString();
}

} // namespace quilla
