#include "database/opened_library.h"
#include "platform/db/connection_text.h"
#include "setup/setup_form.h"
#include "source_dir.h"
#include "support/file_mode.h"
#include "support/memory_settings.h"
#include "support/scripted_prompt.h"
#include "support/window_steps.h"

#include <QTemporaryDir>

using namespace quilla;

namespace {

struct DeskDouble final : InstanceGuard {
    bool claim() override { return !runs; }
    bool runs = false;
};

} // namespace

/// The set-up by keyboard; what it made is read back from the files.
class TestSetupForm : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_home.emplace();
        qputenv("XDG_DATA_HOME", m_home->path().toUtf8());
        m_settings.values.clear();
        m_desk.runs = false;
    }
    void cleanup()
    {
        m_form.reset();
        QCOMPARE(m_prompt.takeComplaints(), QString());
    }

    void newLibraryWithItsFiles()
    {
        const QString books = written(u"图书.csv"_s, "条形码,正题名,主编\nB1,红楼梦\nB1,西游记\n");
        const QString readers = written(
            u"读者.csv"_s, "读者证号,姓名,读者类型,单位名称\nR1,李雷,学生,一班\nR2,韩梅,没有的类型,一班\n");
        openAt(SetupWay::NewLibrary);
        m_form->Library.txtName.setText(u"城东图书馆"_s);
        press(Qt::Key_Return); // the file
        press(Qt::Key_Return);
        for (const QString& typed : {u"wang"_s, u"geheim"_s, u"anders"_s})
            type(*QApplication::focusWidget(), typed);
        press(Qt::Key_Return);
        m_prompt.expect(u"两次输入的密码不一样，请重新输入。"_s);
        press(Qt::Key_Return);
        QCOMPARE(focusName(), u"txtRepeat"_s);
        type(m_form->Library.txtRepeat, u"geheim"_s);
        press(Qt::Key_Return);
        press(Qt::Key_Return);
        QCOMPARE(&m_form->page(), &m_form->Files);
        m_form->Files.Text1[0].setText(books);
        press(Qt::Key_Return);
        m_form->Files.Text1[1].setText(readers);
        press(Qt::Key_Return);
        press(Qt::Key_Return);
        QCOMPARE(&m_form->page(), &m_form->Confirm);
        QVERIFY(m_form->Confirm.labSteps.text().contains(u"城东图书馆"_s));
        QVERIFY(m_settings.values.isEmpty());
        run();

        QVERIFY(m_form->Run.isDone());
        QCOMPARE(modeOf(own()), 0600u);
        OpenedLibrary place(fileTarget(own()));
        const auto value = [&](QStringView select) { return place.connection.open(select).field(0).text(); };
        QCOMPARE(value(u"select memo from Global where type='library'"), u"城东图书馆"_s);
        QCOMPARE(value(u"select username+password from LibUse where borrow=1"), u"wanggeheim"_s);
        QCOMPARE(value(u"select count(*) from LibUse"), u"1"_s);
        QVERIFY(value(u"select count(*) from jycs").toInt() > 0);
        QCOMPARE(value(u"select bookname from zsk"), u"红楼梦"_s);
        QCOMPARE(value(u"select name from dzk"), u"李雷"_s);
        QVERIFY_THROWS_EXCEPTION(Error, place.connection.execute(u"insert into sck(barcode) values('b1')"));
        for (const QString& name : {u"图书-未导入.csv"_s, u"读者-未导入.csv"_s}) {
            QCOMPARE(modeOf(m_home->filePath(name)), 0600u);
            QVERIFY(m_form->Run.txtOutcome.toPlainText().contains(name));
        }
        QVERIFY(m_form->Run.txtOutcome.toPlainText().contains(u"“主编”"_s)); // the column that was left out
        QCOMPARE(stored().value(u"DSN"), BuiltInDataSource);
        press(Qt::Key_Return);
        QVERIFY(m_form->startsDesk());
        QCOMPARE(m_form->result(), int(QDialog::Accepted));
    }

    void everyInputHasAName()
    {
        openAt(SetupWay::JoinServer);
        for (const QWidget* input : m_form->findChildren<QWidget*>()) {
            const bool takesInput = (input->inherits("QLineEdit") || input->inherits("QComboBox")
                                        || input->inherits("QPlainTextEdit"))
                && !input->parentWidget()->inherits("QComboBox");
            QVERIFY2(!takesInput || !input->accessibleName().isEmpty(), qPrintable(input->objectName()));
        }
    }

    void existingFileIsKept()
    {
        const QString file = written(u"there.db"_s, "mine");
        openAt(SetupWay::NewLibrary);
        m_form->Library.txtName.setText(u"馆"_s);
        m_form->Library.txtFile.setText(file);
        m_prompt.expectStart(u"文件已经存在，不会覆盖："_s);
        m_form->cmdNext.click();
        QCOMPARE(focusName(), u"txtFile"_s);
        QFile kept(file);
        QVERIFY(kept.open(QIODevice::ReadOnly) && kept.readAll() == "mine");
    }

    void nothingBeforeTheLastPage()
    {
        openAt(SetupWay::Demo);
        QCOMPARE(&m_form->page(), &m_form->Confirm);
        m_desk.runs = true;
        m_prompt.expect(u"流通台或者另一个设置窗口正在运行。请先退出它，再按“开始”。"_s);
        press(Qt::Key_Return);
        press(Qt::Key_Escape);
        QVERIFY(!m_form->isVisible());
        QCOMPARE(m_form->result(), int(QDialog::Rejected));
        QVERIFY(m_settings.values.isEmpty());
        QVERIFY(QDir(m_home->path()).isEmpty());
    }

    /// The usual place stays free for a library of one's own.
    void demoBesideTheUsualPlace()
    {
        for (int time = 0; time < 2; ++time) {
            openAt(SetupWay::Demo);
            run();
            QVERIFY(m_form->Run.isDone());
            press(Qt::Key_Escape);
            QVERIFY(!m_form->startsDesk());
            QCOMPARE(m_form->result(), int(QDialog::Accepted));
        }
        QVERIFY(stored().value(u"Database")->endsWith(u"/demo.db"));
        QVERIFY(!QFile::exists(own()));
        QCOMPARE(QDir(m_home->path() + u"/青简文库"_s).entryList({u"*.db"_s}).size(), 1);
    }

    void restoresABackupOfTheOpenLibrary()
    {
        openAt(SetupWay::Demo);
        run();
        openAt(SetupWay::Backups);
        m_prompt.expect(u"请选择要恢复的备份，或者换一个文件夹。"_s);
        press(Qt::Key_Return);
        const QString demo = *stored().value(u"Database");
        makeBackup(*dueBackup(
            m_settings, m_settings.values.value(u"青简文库/Setting/QuillaPass"_s), QDate(2026, 11, 24)));
        OpenedLibrary(fileTarget(demo)).connection.execute(u"delete from jhsk");
        openAt(SetupWay::Backups);
        press(Qt::Key_Down);
        const QString disk = m_home->filePath(u"disk"_s);
        m_form->Backups.txtFolder.setText(disk);
        press(Qt::Key_Return);
        QCOMPARE(&m_form->page(), &m_form->Confirm);
        run();
        QVERIFY2(m_form->Run.isDone(), qPrintable(m_form->Run.txtOutcome.toPlainText()));
        QCOMPARE(backupFolder(m_settings, demo), disk);
        QVERIFY(OpenedLibrary(fileTarget(demo)).connection.open(u"select * from jhsk").recordCount() > 0);
        QVERIFY(m_form->Run.txtOutcome.toPlainText().contains(u"demo-replaced-"_s));
    }

    void opensLibrariesAlone()
    {
        openAt(SetupWay::OpenFile);
        const QString old = m_home->filePath(u"old.db"_s);
        QVERIFY(QFile::copy(QStringLiteral(QUILLA_SOURCE_DIR "/tests/database/library_v1.db"), old));
        QVERIFY(QFile::setPermissions(old, QFile::ReadOwner | QFile::WriteOwner));
        for (const QString& file :
            {m_home->filePath(u"missing.db"_s), m_home->path(), written(u"text.db"_s, "text")}) {
            enter(m_form->Open.txtFile, file);
            QTRY_VERIFY(!m_form->page().isBusy());
            QVERIFY2(m_form->Open.labResult.text().contains(file), qPrintable(m_form->Open.labResult.text()));
            QCOMPARE(focusName(), u"txtFile"_s);
        }
        enter(m_form->Open.txtFile, old);
        QTRY_COMPARE(&m_form->page(), &m_form->Confirm);
        QVERIFY(m_form->Confirm.labSteps.text().contains(u"升级"_s));
        run();
        QVERIFY(m_form->Run.txtOutcome.toPlainText().contains(u"old-v1.db"_s));
        QCOMPARE(stored().value(u"Database"), old);
        OpenedLibrary place(fileTarget(old));
    }

private:
    /// The form after its first page.
    void openAt(SetupWay way)
    {
        m_form = std::make_unique<SetupFrm>(SetupPlace {m_settings, m_prompt, m_desk});
        appear(*m_form);
        m_form->Welcome.Option1[int(way)].setChecked(true);
        m_form->Welcome.Option1[int(way)].setFocus();
        press(Qt::Key_Return);
    }
    /// From the page before the last one to the end of the work.
    void run()
    {
        QCOMPARE(focusName(), u"cmdNext"_s);
        press(Qt::Key_Return);
        QCOMPARE(&m_form->page(), &m_form->Run);
        QTRY_VERIFY_WITH_TIMEOUT(!m_form->page().isBusy(), 60'000);
    }
    static void press(Qt::Key key)
    {
        QWidget* control = QApplication::focusWidget();
        QVERIFY(control);
        QTest::keyClick(control, key);
    }
    QString own() const { return m_home->path() + u"/青简文库/quilla.db"_s; }
    QString written(const QString& name, const QByteArray& content) const
    {
        QFile file(m_home->filePath(name));
        const bool done = file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
        return done ? file.fileName() : QString();
    }
    ConnectionItems stored() const
    {
        return ConnectionItems(m_settings.values.value(u"青简文库/Setting/QuillaPass"_s));
    }

    std::optional<QTemporaryDir> m_home;
    MemorySettings m_settings;
    ScriptedPrompt m_prompt;
    DeskDouble m_desk;
    std::unique_ptr<SetupFrm> m_form;
};

QTEST_MAIN(TestSetupForm)
#include "test_setup_form.moc"
