#include "db/base.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <sqlite3.h>

using namespace quilla;

class TestEmbedded : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_base = std::make_unique<Base>(); }
    void cleanup() { m_base.reset(); }

    void createsFoldersAndRefusesExisting()
    {
        const auto nothing = [](Connection&) {};
        createEmbedded(file(u"a/b/new.db"_s), m_base->schema, m_base->clock, nothing);
        QCOMPARE(QDir(file(u"a/b"_s)).entryList(QDir::Files), QStringList({u"new.db"_s}));
        m_base->open().execute(u"insert into book(code) values('a')");
        QString text;
        QVERIFY(
            errorOf([&] { createEmbedded(m_base->path(), m_base->schema, m_base->clock, nothing); }, &text));
        QVERIFY2(text.contains(m_base->path()), qPrintable(text));
        QCOMPARE(m_base->one(u"select code from book"), u"a"_s);
    }

    void failedFillLeavesNothing()
    {
        const QString path = file(u"sub/new.db"_s);
        QCOMPARE(errorOf([&] {
            createEmbedded(path, m_base->schema, m_base->clock, [](Connection& connection) {
                connection.execute(sql::splitScript(Base::script()).front().text);
                throw Error(7, u"test"_s, u"停"_s);
            });
        }),
            7);
        QCOMPARE(QDir(file(u"sub"_s)).entryList(QDir::Files), QStringList());
    }

    void backsUpWhileInUse()
    {
        const QString copy = file(u"备份/copy.db"_s);
        auto connection = m_base->open();
        connection.execute(u"insert into book(code) values('a')");
        connection.begin();
        connection.execute(u"insert into book(code) values('b')");
        backupEmbedded(m_base->path(), copy); // as it was committed
        connection.commit();
        QCOMPARE(checkEmbedded(copy), QStringList());
        auto other = m_base->factory.open(m_base->text().replace(m_base->path(), copy));
        auto rows = other.open(u"select code from book");
        QCOMPARE(rows.recordCount(), 1);
        QCOMPARE(rows.field(0).text(), u"a"_s);
        QVERIFY(errorOf([&] { backupEmbedded(m_base->path(), copy); }));
        QVERIFY(errorOf([&] { backupEmbedded(file(u"none.db"_s), file(u"x.db"_s)); }));
        QVERIFY(!QFile::exists(file(u"x.db"_s)) && !QFile::exists(file(u"none.db"_s)));
    }

    void findsDamage()
    {
        {
            auto connection = m_base->open();
            connection.begin();
            for (int i = 0; i < 2000; ++i)
                connection.execute(
                    u"insert into book(code,name) values('%1','%2')"_s.arg(i).arg(QString(40, u'书')));
            connection.commit();
        }
        m_base->factory.drain();
        QCOMPARE(checkEmbedded(m_base->path()), QStringList());
        QFile damaged(m_base->path());
        QVERIFY(damaged.open(QIODevice::ReadWrite));
        QVERIFY(damaged.seek(damaged.size() / 2));
        damaged.write(QByteArray(8192, 'x'));
        damaged.close();
        QVERIFY(!checkEmbedded(m_base->path()).isEmpty());
        QString text;
        QVERIFY(errorOf([&] { m_base->one(u"select count(name+code) from book where name<>'x'"); }, &text));
        QVERIFY2(text.contains(u"损坏"_s), qPrintable(text));
    }

    void checksOtherFiles()
    {
        QFile other(file(u"text"_s));
        QVERIFY(other.open(QIODevice::WriteOnly));
        other.write(QByteArray("no database ").repeated(500));
        other.close();
        QCOMPARE(errorOf([&] { checkEmbedded(other.fileName()); }), SQLITE_NOTADB);
        QVERIFY(errorOf([&] { checkEmbedded(file(u"none.db"_s)); }));
    }

private:
    QString file(const QString& name) const { return m_base->folder.filePath(name); }
    std::unique_ptr<Base> m_base;
};

QTEST_GUILESS_MAIN(TestEmbedded)
#include "tst_embedded.moc"
