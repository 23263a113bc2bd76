#include "readers/reader_photo.h"

#include "platform/core/text.h"
#include "platform/ui/form/file_dialog.h"

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

QString askForPhoto(QWidget* parent, const QString& filter)
{
    return FileDialog(parent, PhotoEntries[0], dialogFilter(filter)).openFile();
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
