#include "desk/charge_ops.h"
#include "frame/sublib.h"
#include "source_dir.h"
#include "support/desk_double.h"
#include "support/library_test.h"

#include <QProcess>
#include <QScopeGuard>

using namespace quilla;

/// A desk whose server goes down and comes back while the program runs. On a PostgreSQL of its own, since
/// others would suffer.
class TestServerRestart : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R1"_s);
        for (const QStringView barcode : {u"B1", u"B2", u"B3"})
            m->copy(barcode.toString());
    }
    void finish() override { QCOMPARE(m->broken(), QString()); }

private Q_SLOTS:
    void initTestCase()
    {
        m_state = m_folder.filePath(u"socket"_s);
        qputenv("QUILLA_POSTGRES_SOCKET", m_state.toLocal8Bit());
        qputenv("QUILLA_TEST_ENGINE", "postgres");
        QVERIFY(script("start.sh", {}));
    }

    void cleanupTestCase() { QVERIFY(script("stop.sh", {})); }

    void betweenTwoCharges()
    {
        QCOMPARE(charge(u"B1"_s), Charged);
        restart();
        QCOMPARE(charge(u"B2"_s), Charged);
        QCOMPARE(loans(), u"B1,B2"_s);
    }

    /// Told at each opening; after the answer No a charge ends as one whose reader is unknown.
    void whileItIsDown()
    {
        QCOMPARE(charge(u"B1"_s), Charged);
        QVERIFY(script("restart.sh", {u"down"_s}));
        m->prompt.expectStart(u"对不起，连接数据库失败！错误原因如下：\n"_s).answer(Answer::No);
        m->prompt.expectStart(u"没有找到该读者的信息！"_s);
        QCOMPARE(charge(u"B2"_s), NoSuchReader);
        QVERIFY(script("restart.sh", {u"up"_s}));
        QCOMPARE(charge(u"B3"_s), Charged);
        QCOMPARE(loans(), u"B1,B3"_s);
    }

    void inTheMiddleOfACharge_data()
    {
        QTest::addColumn<QString>("statement"); ///< the server goes just before it
        QTest::addColumn<bool>("charged");
        QTest::newRow("a check") << u"select borrowstatus"_s << true;
        QTest::newRow("the begin") << u"begin"_s << true;
        QTest::newRow("the loan") << u"insert into JHSK"_s << false;
        QTest::newRow("the copy") << u"update SCK"_s << false;
        QTest::newRow("the commit") << u"commit"_s << false;
    }

    /// What has no effect yet is sent again; else the whole charge fails and leaves nothing.
    void inTheMiddleOfACharge()
    {
        QFETCH(QString, statement);
        QFETCH(bool, charged);
        bool gone = false;
        const auto unhook = qScopeGuard([this] { m->factory.setHook({}); });
        m->factory.setHook([&](QStringView sent) {
            if (!gone && sent.startsWith(statement)) {
                gone = true;
                restart();
            }
        });
        QCOMPARE(charge(u"B1"_s), charged ? Charged : NotCharged);
        QVERIFY(gone);
        QCOMPARE(loans(), charged ? u"B1"_s : QString());
        QCOMPARE(charge(u"B2"_s), Charged);
    }

private:
    bool script(const char* name, const QStringList& arguments)
    {
        return QProcess::execute(
                   QStringLiteral(QUILLA_SOURCE_DIR "/tests/postgres/%1").arg(QLatin1String(name)),
                   arguments + QStringList {m_state})
            == 0;
    }
    void restart() { QVERIFY(script("restart.sh", {u"down"_s}) && script("restart.sh", {u"up"_s})); }
    ChargeResult charge(const QString& barcode) { return ChargeBook(m->session, m_desk, barcode, u"R1"_s); }
    QString loans() { return m->rows(u"select barcode from jhsk order by barcode"_s).join(u','); }

    QTemporaryDir m_folder;
    QString m_state;
    DeskDouble m_desk;
};

QTEST_GUILESS_MAIN(TestServerRestart)
#include "test_server_restart.moc"
