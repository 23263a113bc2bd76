#include "app/gallery_command.h"
#include "app/screen_register.h"
#include "frame/help_key.h"
#include "frame/main_form.h"
#include "frame/manual_form.h"
#include "platform/report/form_print.h"
#include "support/screen_test.h"

#include <QMenuBar>
#include <QRegularExpression>
#include <QToolButton>

using namespace quilla;

namespace {

class NamesDrawn final : public Album {
public:
    void add(const QString& name, QWidget&) override { names.append(name); }
    QStringList names;
};

QStringList allIn(const QString& pattern)
{
    QStringList found;
    for (const ManualSection& section : manual())
        for (auto match = QRegularExpression(pattern).globalMatch(section.text); match.hasNext();)
            found.append(match.next().captured(1));
    return found;
}

} // namespace

/// The manual, as built into the program and as F1 opens it.
class TestManual : public ScreenTest {
    Q_OBJECT

private Q_SLOTS:
    /// No screen without a section, no link and no picture that leads nowhere.
    void isWhole()
    {
        NamesDrawn drawn;
        SilentPrompt silent;
        Session session {m->settings, silent, m->clock, m->factory, m->editor};
        session.ConnectionText = m->connectionText;
        const Workplace place {m_work->place, session, m_work->host};
        QStringList missing;
        for (const Screen& screen : allScreens()) {
            if (!findSection(screen.name)) missing.append(screen.name);
            screen.pictures(drawn, place);
        }
        for (const QString& link : allIn(u"\\]\\(#([^)]*)\\)"_s))
            if (!findSection(link)) missing.append(link);
        for (const QString& picture : allIn(u"\\]\\(([^)#]*)\\.png\\)"_s))
            if (!drawn.names.contains(picture)) missing.append(picture);
        if (!findSection(u"ReportPreview"_s)) missing.append(u"the preview"_s);
        QCOMPARE(missing, QStringList());
        QCOMPARE(allIn(u"(\\{#)"_s), QStringList()); // a heading that was not understood
    }

    void opensWhereTheFocusIs()
    {
        HelpKey help(m->session, m_work->printer);
        auto& window = opened<LtMainFrm>(m_work->place, m->session, allScreens());
        const auto shown = [&](QWidget* focus) {
            QTest::keyClick(focus, Qt::Key_F1);
            const auto* open = window.findChild<ManualFrm*>();
            return open ? open->Contents.currentItem()->text().trimmed() : QString();
        };
        QCOMPARE(shown(&window), u"借还台"_s);
        window.openScreen(u"TsjhFrm"_s);
        QCOMPARE(shown(QApplication::focusWidget()), u"图书借还"_s);
        QCOMPARE(shown(window.menuBar()), u"图书借还"_s);
        window.openScreen(u"holidayfrm"_s);
        QTest::mouseClick(window.findChild<QToolButton*>(u"cmdHelp"_s), Qt::LeftButton);
        QCOMPARE(shown(&window), u"假期"_s);
        auto* open = window.findChild<ManualFrm*>();
        open->cmdPrint.click();
        QCOMPARE(m_work->printer.shown, QStringList {u"假期"_s});
        QTest::keyClick(open, Qt::Key_Escape);
        QTRY_VERIFY(!window.findChild<ManualFrm*>());
    }

    /// Its owner is a dialog on the stack.
    void opensBesideAModalDialog()
    {
        HelpKey help(m->session, m_work->printer);
        {
            QDialog dialog;
            dialog.setObjectName(u"EditPassFrm"_s);
            dialog.setModal(true);
            appear(dialog);
            QTest::keyClick(&dialog, Qt::Key_F1);
            QVERIFY(dialog.findChild<ManualFrm*>()->isVisible());
        }
        QDialog other;
        appear(other);
        QTest::keyClick(&other, Qt::Key_F1);
        QCOMPARE(other.findChild<ManualFrm*>()->Contents.currentRow(), 0);
    }

    void firstDayIsOnePage()
    {
        DefaultPrinter printer([] { return QString(); }, [] { return true; });
        auto* form = new ManualFrm(m->session, printer, nullptr);
        form->showSection(u"first-day"_s);
        const QString file = m->folder.filePath(u"第一天.pdf"_s);
        printer.printText(*form->Text.document(), file);
        QFile pdf(file);
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        QCOMPARE(pdf.readAll().count("/Type /Page\n"), 1);
        QVERIFY(form->close());
    }
};

QTEST_MAIN(TestManual)
#include "test_manual.moc"
