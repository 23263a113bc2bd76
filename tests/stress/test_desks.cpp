#include "database/check.h"
#include "database/library_schema.h"
#include "database/scale.h"
#include "platform/db/pooled_factory.h"
#include "support/field_texts.h"
#include "support/test_database.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace quilla;

/// What desks reported as done, or what of it is in the database.
struct Work {
    qint64 charges = 0;
    qint64 returns = 0; ///< settlements too
    qint64 settlements = 0;
    qint64 reservations = 0;

    void add(const QByteArray& output)
    {
        for (const QByteArray& line : output.split('\n')) {
            charges += line.startsWith("+ ");
            returns += line.startsWith("- ") || line.startsWith("= ");
            settlements += line.startsWith("= ");
            reservations += line.startsWith("* ");
        }
    }
    QString text() const
    {
        return u"%1 charges, %2 returns, %3 of them settlements"_s.arg(charges).arg(returns).arg(settlements);
    }
};

namespace {

int setting(const char* name, int usual)
{
    const int value = qEnvironmentVariableIntValue(name);
    return value > 0 ? value : usual;
}

/// The last one may have been committed and not reported any more, never the other way round.
bool isAtMostOneMore(const Work& written, const Work& told)
{
    const qint64 more = written.charges - told.charges + written.returns - told.returns;
    const qint64 settled = written.settlements - told.settlements;
    return written.charges >= told.charges && written.returns >= told.returns && more <= 1 && settled >= 0
        && settled <= written.returns - told.returns;
}

} // namespace

/// Several desks on one database, and desks that die in the middle of their work.
///
/// QUILLA_STRESS_SECONDS and QUILLA_STRESS_KILLS make the runs longer than a quick test needs.
class TestDesks : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// They only charge: of two desks that take the same loan back at once, the second finds nothing to move
    /// and counts the reader down all the same, which is not this test's matter.
    void twoDesksLoseNoWrite()
    {
        const auto [first, second] = runTwoDesks(u"charge"_s);
        const qint64 one = first.charges;
        const qint64 two = second.charges;
        qInfo("charges %lld and %lld", one, two);
        QVERIFY(one > 0 && two > 0);
        QVERIFY(std::max(one, two) <= 3 * std::min(one, two)); // both get their turns
        const qint64 open = number(u"select count(*) from jhsk"_s);
        QCOMPARE(open, one + two);
        QCOMPARE(number(u"select sum(orderbook) from dzk"_s), open);
        // Two desks that read the same free copy at the same moment both lend it: that alone may be found.
        for (const QString& rule : brokenRules())
            QCOMPARE(rule, u"one-loan-a-copy"_s);
    }

    /// Every reservation counts for its reader, also once it was cleared.
    void twoDesksReserveAndClear()
    {
        const auto [first, second] = runTwoDesks(u"reserve"_s);
        const qint64 placed = first.reservations + second.reservations;
        const qint64 left = number(u"select count(*) from yyk"_s);
        qInfo("%lld and %lld reservations, %lld left", first.reservations, second.reservations, left);
        QVERIFY(first.reservations > 0 && second.reservations > 0 && left > 0 && left < placed);
        QCOMPARE(number(u"select sum(yordercshu) from dzk"_s), placed);
        QCOMPARE(number(u"select count(*) from yyk where oldtime is not null"_s), 0);
        QCOMPARE(brokenRules(), QStringList());
    }

    void killedDeskLeavesACleanBase()
    {
        const int kills = setting("QUILLA_STRESS_KILLS", 8);
        makeLibrary(400);
        Work told;
        // on a busy machine the first desks may die before they settle anything
        for (int kill = 0; kill < kills || (told.settlements == 0 && kill < 20 * kills); ++kill) {
            told.add(killedDesk(100 + kill, u"all"_s));
            const Work written = writtenWork();
            QVERIFY2(isAtMostOneMore(written, told),
                qPrintable(u"told: %1\nwritten: %2"_s.arg(told.text(), written.text())));
            told = written;
            QCOMPARE(brokenRules(), QStringList());
            letLoansFallDue();
        }
        qInfo("%s", qPrintable(told.text()));
        QVERIFY(told.settlements > 0);
    }

    /// Withdrawals and restorations: of the last one alone it may be unknown whether it was written.
    void killedLedgerLosesNothingTold()
    {
        const int kills = setting("QUILLA_STRESS_KILLS", 8);
        makeLibrary(60);
        QSet<QString> told;
        qsizetype steps = 0;
        for (int kill = 0; kill < kills || (steps <= kills && kill < 20 * kills); ++kill) {
            for (const QByteArray& line : killedDesk(500 + kill, u"ledger"_s).split('\n')) {
                if (line.startsWith("w ")) told.insert(QString::fromUtf8(line.mid(2)));
                if (line.startsWith("r ")) told.remove(QString::fromUtf8(line.mid(2)));
                steps += line.size() > 2;
            }
            const QSet<QString> written = withdrawnCopies();
            QVERIFY2((told - written).size() + (written - told).size() <= 1,
                qPrintable(QStringList((told - written).values() + (written - told).values()).join(u' ')));
            told = written;
            QCOMPARE(brokenRules(), QStringList());
        }
        qInfo("%lld withdrawals and restorations in %d killed runs", qlonglong(steps), kills);
        QVERIFY(steps > kills);
    }

private:
    void makeLibrary(int copies)
    {
        m_copies = copies;
        m_folder = std::make_unique<QTemporaryDir>();
        m_database = TestDatabase::make(m_folder->path(), m_schema, m_clock);
        m_text = m_database->connectionText();
        PooledFactory factory(m_schema, m_clock);
        Connection conn = factory.open(m_text);
        conn.begin();
        insertInitialRows(conn, u"desk"_s);
        ScaleOptions scale;
        scale.readers = 100;
        scale.copies = copies;
        scale.history = 0;
        scale.loans = 0;
        scale.today = m_clock.now().date;
        fillScaleData(conn, scale);
        conn.execute(u"update dzk set bookcount=30000,ordercount=30000");
        conn.execute(u"delete from yyk");
        conn.execute(u"update dzk set yordercshu=0");
        conn.commit();
    }

    std::unique_ptr<QProcess> startDesk(int seed, int milliseconds, const QString& work)
    {
        auto desk = std::make_unique<QProcess>();
        desk->start(QStringLiteral(DESK_LOOP),
            {m_text, QString::number(seed), QString::number(milliseconds), u"100"_s,
                QString::number(m_copies), work});
        return desk;
    }

    /// What two desks reported that did this work at once in a new library.
    std::pair<Work, Work> runTwoDesks(const QString& work)
    {
        const int seconds = setting("QUILLA_STRESS_SECONDS", 4);
        makeLibrary(seconds * 2000);
        const auto first = startDesk(1, seconds * 1000, work);
        const auto second = startDesk(2, seconds * 1000, work);
        const auto isRunning = [](QProcess& desk) {
            desk.waitForReadyRead(20); // a desk would wait at a full pipe
            return desk.state() != QProcess::NotRunning;
        };
        for (bool running = true; running;)
            running = isRunning(*first) | isRunning(*second);
        std::pair<Work, Work> told;
        told.first.add(first->readAllStandardOutput());
        told.second.add(second->readAllStandardOutput());
        return told;
    }

    /// A desk that was killed at some moment of its work, and what it had reported until then.
    QByteArray killedDesk(int seed, const QString& work)
    {
        const auto desk = startDesk(seed, 60'000, work);
        if (!desk->waitForReadyRead(10'000)) return {};
        QTest::qSleep(int(QRandomGenerator::global()->bounded(1, 120)));
        desk->kill();
        desk->waitForFinished();
        m_database->waitForTheDead();
        return desk->readAllStandardOutput();
    }

    qint64 number(const QString& tsql)
    {
        PooledFactory factory(m_schema, m_clock);
        Connection conn = factory.open(m_text);
        return conn.open(tsql).field(0).integer().value_or(0);
    }

    QSet<QString> withdrawnCopies()
    {
        PooledFactory factory(m_schema, m_clock);
        Connection conn = factory.open(m_text);
        Recordset rows = conn.open(u"select barcode from BookOut");
        const QStringList barcodes = fieldTexts(rows, u"barcode");
        return {barcodes.begin(), barcodes.end()};
    }

    QStringList brokenRules()
    {
        PooledFactory factory(m_schema, m_clock);
        Connection conn = factory.open(m_text);
        QStringList rules = m_database->faults();
        for (const Finding& finding : checkLibrary(conn))
            rules.append(finding.rule);
        return rules;
    }

    Work writtenWork()
    {
        Work work;
        work.returns = number(u"select count(*) from jhslsk"_s);
        work.charges = number(u"select count(*) from jhsk"_s) + work.returns;
        work.settlements = number(u"select count(*) from fkk"_s);
        return work;
    }

    /// Half of what is out: the next desk settles it.
    void letLoansFallDue()
    {
        PooledFactory factory(m_schema, m_clock);
        Connection conn = factory.open(m_text);
        conn.execute(u"update jhsk set yhdate=dateadd(day,-60,yhdate) where jhskid%2=0 and yhdate>getdate()");
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<TestDatabase> m_database;
    QString m_text;
    int m_copies = 0;
    SystemClock m_clock;
    sql::Schema m_schema = librarySchema();
};

QTEST_GUILESS_MAIN(TestDesks)
#include "test_desks.moc"
