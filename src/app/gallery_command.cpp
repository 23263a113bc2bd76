#include "app/gallery_command.h"

#include "app/desk_application.h"
#include "app/gallery_ops.h"
#include "desk/desk_form.h"
#include "frame/about_form.h"
#include "frame/login_form.h"
#include "frame/main_form.h"
#include "frame/password_form.h"
#include "frame/sublib.h"
#include "platform/ui/error_form.h"
#include "platform/ui/gallery.h"
#include "platform/ui/working_form.h"

#include <QDir>
#include <QTextStream>

namespace quilla {

namespace {

class Album {
public:
    explicit Album(const QString& folder)
        : m_folder(folder)
    {
    }

    void add(const QString& name, QWidget& window)
    {
        for (const double scale : {1.0, 1.5, 2.0}) {
            const QString file = m_folder.filePath(u"%1@%2.png"_s.arg(name, QString::number(int(scale * 100))));
            if (!renderPng(window, file, scale)) m_failed.append(file);
        }
    }

    const QStringList& failed() const { return m_failed; }

private:
    QDir m_folder;
    QStringList m_failed;
};

void pressEnter(QWidget& box)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s);
    QCoreApplication::sendEvent(&box, &press);
}

} // namespace

int renderGallery(DeskApplication& desk, const QString& folder)
{
    QDir().mkpath(folder);
    Album album(folder);
    Session& session = desk.session();
    readConnectionText(session);
    session.OperatorName = u"演示"_s;

    frmODBC settings(session);
    album.add(u"frmODBC"_s, settings);
    LtLoginFrm login(session);
    album.add(u"LtLoginFrm"_s, login);
    EditPassFrm password(session);
    album.add(u"EditPassFrm"_s, password);
    AboutFrm about;
    album.add(u"AboutFrm"_s, about);
    errMessageFrm failure;
    failure.textErrMessage.setPlainText(failureText({}, u"数据库正被另一个程序占用。"_s));
    album.add(u"errMessageFrm"_s, failure);
    WorkingFrm working;
    album.add(u"WorkingFrm"_s, working);

    LtMainFrm window(session, desk.screens());
    window.openUp();
    window.openScreen(u"TsjhFrm"_s);
    auto* form = window.findChild<TsjhFrm*>();
    form->TxtReaderCode.setText(readerForPictures(session));
    pressEnter(form->TxtReaderCode);
    album.add(u"LtMainFrm"_s, window);
    album.add(u"TsjhFrm-0"_s, *form);
    form->SSTab1.setCurrentIndex(1);
    album.add(u"TsjhFrm-1"_s, *form);

    for (const QString& file : album.failed())
        QTextStream(stderr) << u"无法写入："_s << file << Qt::endl;
    return album.failed().isEmpty() ? 0 : 1;
}

} // namespace quilla
