#include "readers/reader_photo.h"

#include "platform/core/text.h"

#include <QFileDialog>

namespace quilla {

namespace {

const QString PhotoFilter
    = u"Bitmaps|*.BMP|GIF Images|*.GIF|JPEG Images|*.JPG|All Pictures|*.BMP;*.GIF;*.JPG"_s;
const QStringList PhotoEntries {u"选择照片"_s, u"取消照片"_s};

/// A file filter as Qt's dialog takes it.
QString dialogFilter(const QString& filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList kinds;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        kinds.append(u"%1 (%2)"_s.arg(parts[i], QString(parts[i + 1]).replace(u';', u' ')));
    return kinds.join(u";;"_s);
}

/// The names of the files alone: the system's own words for kinds and days need not be Chinese.
QString askForPhoto(QWidget* parent, const QString& filter)
{
    QFileDialog dialog(parent, PhotoEntries[0], {}, dialogFilter(filter));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setViewMode(QFileDialog::List);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().constFirst() : QString();
}

} // namespace

ReaderPhoto::ReaderPhoto(QWidget* parent)
    : PhotoBox(parent)
    , m_choose(askForPhoto)
{
    setHint(PhotoEntries[0]);
    connect(this, &PhotoBox::doubleClicked, this, &ReaderPhoto::choose);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &ReaderPhoto::offer);
}

void ReaderPhoto::setFile(const QString& file)
{
    setToolTip(file);
    showFile(file);
}

void ReaderPhoto::offer()
{
    const int entry = PhotoMenu.Popup(PhotoEntries);
    if (entry == 1) choose();
    if (entry == 2) setFile({});
}

void ReaderPhoto::choose()
{
    const QString chosen = m_choose(window(), PhotoFilter);
    if (!chosen.isEmpty()) setFile(chosen);
}

} // namespace quilla
