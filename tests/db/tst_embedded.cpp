#include "db/base.h"

#include <QFile>
#include <QTest>

#include <sqlite3.h>

using namespace quilla;

class TestEmbedded : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_base = std::make_unique<Base>(); }
    void cleanup() { m_base.reset(); }

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
