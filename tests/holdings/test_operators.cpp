#include "holdings/operators_ops.h"
#include "holdings/starter_ops.h"
#include "support/library_test.h"

using namespace quilla;

/// Who may sign in, and what a new library begins with.
class TestOperators : public LibraryTest {
    Q_OBJECT

    void fill() override { connection = m->factory.open(m->connectionText); }
    void finish() override { connection.close(); }

private Q_SLOTS:
    void neverWithoutAnOperator()
    {
        m->send(u"delete from LibUse"_s);
        m->operatorUser(u"编目"_s, u"x"_s, false);
        addOperator(connection, u"Li"_s, u"a b"_s);
        QVERIFY_THROWS_EXCEPTION(Error, addOperator(connection, u"LI"_s, u""_s));
        QVERIFY_THROWS_EXCEPTION(Error, removeOperator(connection, u"li"_s));
        addOperator(connection, u"Wu"_s, u""_s);
        setPassword(connection, u"WU"_s, u"密码"_s);
        removeOperator(connection, u"li"_s);
        QVERIFY_THROWS_EXCEPTION(Error, removeOperator(connection, u"Wu"_s));
        QCOMPARE(m->rows(u"select username,password,borrow from LibUse order by userid"_s).last(),
            m->rows(u"select username,password,borrow from LibUse where password='密码'"_s).first());
        QCOMPARE(int(listOperators(connection).size()), 2);
    }

    void refusesWhatNoLoginTakes()
    {
        const QString before = m->everything();
        for (const QString& text : {u"O'Hara"_s, u" a"_s, QString(51, u'长'), u"a\tb"_s}) {
            QVERIFY_THROWS_EXCEPTION(Error, addOperator(connection, text, u"x"_s));
            QVERIFY_THROWS_EXCEPTION(Error, addOperator(connection, u"new"_s, text));
        }
        QCOMPARE(m->everything(), before);
    }

    void starterKeepsWhatIsThere()
    {
        m->insert(u"jycs"_s, {{u"readerclass"_s, u"学生"_s}, {u"bookcount"_s, u"77"_s}});
        const StarterReport first = loadStarter(connection);
        QVERIFY(first.types > 0 && first.units > 0 && first.holidays > 0);
        QCOMPARE(first.kept, QStringList {u"学生"_s});
        QCOMPARE(m->value(u"select bookcount from jycs where readerclass='学生'"_s), u"77"_s);
        const StarterReport again = loadStarter(connection);
        QCOMPARE(again.types + again.units + again.holidays, 0);
        QCOMPARE(int(again.kept.size()), first.types + first.units + first.holidays + 1);
    }

private:
    Connection connection;
};

QTEST_GUILESS_MAIN(TestOperators)
#include "test_operators.moc"
