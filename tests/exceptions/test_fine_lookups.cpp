#include "exceptions/fine_screen_double.h"
#include "exceptions/fine_settlement_ops.h"
#include "support/library_test.h"

using namespace quilla;

/// Finding the loan and working out what is owed. The clock stands at 2026-03-10.
class TestFineLookups : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R1"_s, FineRules);
        m->reader(u"R2"_s, {{u"name"_s, u"O'Neil"_s}});
        for (const QString& barcode : {u"B1"_s, u"B2"_s, u"B3"_s})
            m->copy(barcode, {{u"price"_s, u"25"_s}});
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-15"_s);
        m->loan(u"B2"_s, u"R1"_s, u"2026-03-09"_s);
        m_screen = {};
        m_fines = std::make_unique<FineHandling>(m->session, m_screen, u"A"_s);
        m_screen.handling = m_fines.get();
    }

private Q_SLOTS:
    /// Each box by its look-up: who and what, the loans listed, and the fines that are due at once.
    void found()
    {
        const std::tuple<int, QString, QString, QString, QString> boxes[] {
            {0, u" r1 "_s, u"r1|甲||"_s, u"B1,B2"_s, {}}, {1, u"O'Neil"_s, u"R2|O'Neil||"_s, {}, {}},
            {2, u"B1"_s, u"R1|甲|B1|书名1"_s, u"B1"_s, {}},
            {3, u"书名2"_s, u"R1|甲|B2|书名2"_s, u"B1"_s, u"0"_s}, // the list is R1's still
        };
        for (const auto& [box, text, identity, loans, kinds] : boxes) {
            m_screen.enter(box, text);
            QCOMPARE(m_screen.texts(), identity);
            QCOMPARE(m_screen.loans, loans);
            QCOMPARE(m_screen.kinds(), kinds);
            QVERIFY(m_fines->lookup.LookupDone);
        }
    }

    /// A look-up that finds nothing empties the whole screen.
    void notFound()
    {
        const QString before = m->everything();
        const std::tuple<int, QString, QString> boxes[] {
            {0, u"R'9"_s, u"无效读者证号，取消该操作。"_s},
            {1, u"x'; delete from dzk --"_s, u"无效读者姓名，取消该操作。"_s},
            {2, u"B3"_s, u"此条形码不存在 或 不存在借阅信息。"_s},
            {3, u"%1"_s, u"此图书名不存在 或 不存在借阅信息。"_s},
        };
        for (const auto& [box, text, message] : boxes) {
            m_screen.enter(FineBox::Barcode, u"B2"_s);
            m_screen.setTicked(FineKind::Lost, true);
            m_screen.tickable[2] = false;
            m->prompt.expect(message).titled(u"操作提示").icon(Icon::Warning);
            m_screen.enter(box, text);
            QCOMPARE(m_screen.texts(0, 12), QString(12, u'|'));
            QCOMPARE(m_screen.kinds() + m_screen.loans + m_fines->lookup.GridReader, QString());
            QVERIFY(m_screen.tickable[2]);
            QCOMPARE(m_screen.workings[0] + m_screen.focus, u"Text1(%1)"_s.arg(box));
        }
        QCOMPARE(m->everything(), before);
    }

    void readerOfAnotherBook()
    {
        m_screen.enter(FineBox::Barcode, u"B2"_s);
        m->prompt.expect(u"该读者并不存在此书刊的节阅信息。"_s).titled(u"操作提示").icon(Icon::Warning);
        m_screen.enter(FineBox::ReaderCode, u"R2"_s);
        QCOMPARE(m_screen.texts(0, 12), u"R2|O'Neil"_s + QString(11, u'|'));
        QCOMPARE(m_screen.kinds() + m_screen.workings[0], QString());
        QCOMPARE(m_screen.loans + m_screen.focus, u"Text1(2)"_s);
    }

    void bookOfTheSameReaderKeepsTheGrids()
    {
        m_screen.enter(FineBox::ReaderCode, u"r1"_s);
        m_screen.enter(FineBox::Barcode, u"B2"_s);
        QCOMPARE(m_screen.loans, u"B1,B2"_s);
        m_screen.enter(FineBox::Barcode, u"B1"_s);
        QCOMPARE(m_screen.kinds() + m_screen.texts(4, 6), u"||"_s); // the fines of B2 are gone
    }

    void aLookUpIsMadeOncePerChange()
    {
        m_screen.enter(FineBox::Barcode, u"B1"_s);
        m->failAt({});
        m_fines->lookup.Text1_LostFocus(FineBox::Barcode);
        m_screen.enter(FineBox::ReaderName, u"甲"_s);
        QCOMPARE(m->sent, QStringList());
        m_screen.enter(FineBox::ReaderName, {});
        m_screen.enter(FineBox::ReaderName, u"甲"_s);
        QVERIFY(!m->sent.isEmpty());
    }

    /// Damage and loss take the same way, each with its own rate.
    void amounts()
    {
        const QString large = u"999999989999000.00"_s;
        const std::tuple<QString, QString, QString, QString> rows[] {
            {u"1"_s, u"1.005"_s, u"1.01"_s, u"=(1.00*1.005)"_s},
            {u"null"_s, u"2"_s, u"0.00"_s, u"=(0.00*2)"_s},
            {u"25"_s, u"null"_s, u"0.00"_s, u"=(25.00*0)"_s},
            {u"9999999999.99"_s, u"99999.999"_s, large, u"=(9999999999.99*99999.999)"_s},
        };
        for (const auto& [price, factor, amount, working] : rows) {
            for (const auto& [kind, others] : {std::pair {FineKind::Defile, u"lost=7,defile=%1"_s},
                     {FineKind::Lost, u"defile=7,lost=%1"_s}}) {
                m->send(u"update sck set price="_s + price);
                m->send(u"update dzk set "_s + others.arg(factor));
                lookUpAnew(u"B1"_s);
                m_screen.setTicked(kind, true);
                QCOMPARE(
                    m_screen.texts(FineBox::due(kind), FineBox::remark(kind)), amount + u'|' + amount + u'|');
                QCOMPARE(m_screen.workings[std::size_t(kind)], working);
            }
        }
    }

    void overdue()
    {
        m->holiday(u"假"_s, u"2026-02-20 2026-03-09"_s); // a fine runs through holidays
        const std::tuple<QString, QString, QString, QString> rows[] {
            {u"2026-03-10"_s, u"0.1"_s, QString(), QString()},
            {u"2026-03-09"_s, u"0.1"_s, u"0.10"_s, u"=(0.10*1)"_s},
            {u"2026-02-08"_s, u"0.1"_s, u"3.00"_s, u"=(0.10*30)"_s},
            {u"2026-03-05"_s, u"0.125"_s, u"0.63"_s, u"=(0.13*5)"_s},
            {u"2026-03-07"_s, u"0.005"_s, u"0.02"_s, u"=(0.01*3)"_s},
            {u"2026-03-07"_s, u"null"_s, u"0.00"_s, u"=(0.00*3)"_s},
        };
        for (const auto& [due, rate, amount, working] : rows) {
            m->send(u"update jhsk set yhdate='%1' where barcode='B1'"_s.arg(due));
            m->send(u"update dzk set fine=%1"_s.arg(rate));
            lookUpAnew(u"B1"_s);
            QCOMPARE(m_screen.kinds(), amount.isEmpty() ? QString() : u"0"_s);
            QCOMPARE(m_screen.texts(4, 6), amount + u'|' + amount + u'|');
            QCOMPARE(m_screen.workings[0], working);
        }
    }

    /// The overdue days end on the day of registration, and the amount is that of the register.
    void registeredLoss()
    {
        m->send(u"update jhsk set yhdate='2026-01-05' where barcode='B1'"_s);
        m->send(u"insert into diushik values('R1','甲','','B1','书名1',12.5,'2026-01-15')"_s);
        m_screen.enter(FineBox::Barcode, u"B1"_s);
        QCOMPARE(m_screen.kinds(), u"02"_s);
        QVERIFY(!m_screen.tickable[2]);
        QCOMPARE(m_screen.texts(4, 5) + u' ' + m_screen.texts(10, 11), u"1.00|1.00 12.50|12.50"_s);
        QCOMPARE(m_screen.workings[0] + m_screen.workings[2], u"=(0.10*10)=(25.00*2)"_s);
        m->send(u"update diushik set yfjine=null,createdate='2026-01-05'"_s);
        lookUpAnew(u"B1"_s);
        QCOMPARE(m_screen.kinds() + u' ' + m_screen.texts(10, 11), u"2 0.00|0.00"_s);
        m_screen.enter(FineBox::Barcode, u"B2"_s); // not in the register
        QCOMPARE(m_screen.kinds(), u"0"_s);
        QVERIFY(m_screen.tickable[2]);
    }

    /// A kind needs a book, and cleared it empties its boxes.
    void kinds()
    {
        m_screen.enter(FineBox::ReaderCode, u"R1"_s);
        m_screen.setTicked(FineKind::Lost, true);
        QCOMPARE(m_screen.kinds() + m_screen.boxes[10], QString());
        m_screen.enter(FineBox::Barcode, u"B2"_s);
        m_screen.setTicked(FineKind::Lost, true);
        m_screen.setBox(FineBox::remark(FineKind::Lost), u"整本"_s);
        m_screen.setTicked(FineKind::Lost, false);
        QCOMPARE(m_screen.texts(4, 12), u"0.10|0.10|||||||"_s);
        QCOMPARE(m_screen.workings[2], QString());
    }

    /// An amount is put into its form, what is none comes off the box.
    void takenAmounts()
    {
        for (const int box : {5, 8, 11}) {
            m_screen.enter(box, u" 6.125 "_s);
            QCOMPARE(m_screen.box(box), u"6.13"_s);
            m->prompt.expect(u"无效数字格式，取消该操作。"_s).titled(u"操作提示").icon(Icon::Warning);
            m_screen.enter(box, u"1; delete"_s);
            QCOMPARE(m_screen.box(box) + m_screen.focus, u"Text1(%1)"_s.arg(box));
        }
    }

    /// What the screen's four boxes, its kinds and the library lack for a settlement, each reported once.
    void validation()
    {
        m_screen.enter(FineBox::Barcode, u"B1"_s);
        const auto whole = m_screen.boxes;
        const auto refused = [&](const QString& message, const QString& focus) {
            m->prompt.expect(message).titled(u"操作提示").icon(Icon::Warning);
            const QString before = m->everything();
            m_fines->SavedFlag = u"yes"_s;
            m_fines->save(1);
            QCOMPARE(m_screen.focus, focus);
            QVERIFY(m_fines->SavedFlag.isEmpty() && !m_screen.closed);
            QCOMPARE(m->everything(), before);
        };
        for (int box = 0; box <= 3; ++box) {
            m_screen.setBox(box, {});
            refused(u"无效数据，数据输入不能为空。"_s, u"Text1(%1)"_s.arg(box));
            m_screen.boxes = whole;
        }
        refused(u"请选择罚款类别（罚款原因）。"_s, u"Check1(1)"_s);
        m_screen.setTicked(FineKind::Defile, true);
        m->send(u"delete from jhsk"_s);
        refused(u"无效条形码，取消该操作。"_s, u"Text1(2)"_s);
    }

    /// A look-up goes on after a failing statement, and is made again when the failure is the last thing
    /// seen.
    void failingStatements()
    {
        const QString all = u"R1|甲|B2|书名2"_s;
        const std::tuple<QString, QString, bool> statements[] {
            {u"Select barcode,bookname,orderdate"_s, all, true},
            {u"price,lost,fine"_s, all, true},
            {u"diushik"_s, all, true},
            {u"datediff"_s, all, false},
            {u"Select readercode,name,bookname"_s, u"|||"_s, false},
        };
        m->prompt.expectStart(u"此条形码不存在"_s);
        for (const auto& [statement, identity, done] : statements) {
            m->failAt(statement);
            lookUpAnew(u"B2"_s);
            QCOMPARE(statement + m_screen.texts(), statement + identity);
            QCOMPARE(m_fines->lookup.LookupDone, done);
            QVERIFY(!m->session.error.isSet());
        }
    }

    void noConnection()
    {
        m->settings.values.clear();
        for (int opening = 0; opening < 2; ++opening)
            m->prompt.expectStart(u"无法取得正确连接数据库的信息!"_s).answer(Answer::No);
        m_screen.enter(FineBox::Barcode, u"B2"_s);
        QCOMPARE(m_screen.texts(), u"||B2|"_s);
        QVERIFY(!m_fines->lookup.LookupDone);
        QVERIFY(!SaveFine(m->session, m_screen));
    }

private:
    void lookUpAnew(const QString& barcode)
    {
        m_screen.enter(FineBox::Barcode, {});
        m_screen.enter(FineBox::Barcode, barcode);
    }

    FineScreenDouble m_screen;
    std::unique_ptr<FineHandling> m_fines;
};

QTEST_GUILESS_MAIN(TestFineLookups)
#include "test_fine_lookups.moc"
