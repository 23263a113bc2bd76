#include "desk/reader_picker_form.h"
#include "support/screen_test.h"

#include <QImage>

using namespace quilla;

class TestReaderPicker : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        for (const auto& [code, name] : {std::pair {u"R1"_s, u"王一"_s}, {u"R2"_s, u"王一"_s},
                 {u"R3"_s, u"O'Neil"_s}, {u"R4"_s, u"王二"_s}})
            m->reader(code, {{u"name"_s, name}, {u"wuzheng"_s, code == u"R4" ? u"0"_s : u"1"_s}});
    }

private Q_SLOTS:
    void lists()
    {
        for (const auto& [part, listed] : {std::pair {QString(), u"O'NeilR3 王一R1 王一R2"_s},
                 std::pair {u"王"_s, u"王一R1 王一R2"_s}, std::pair {u"o'n"_s, u"O'NeilR3"_s}}) {
            open();
            search(part);
            QCOMPARE(names(), listed);
            QVERIFY(m_form->Grid1.hasFocus());
            QCOMPARE(m_form->Text1.text(), m_form->Grid1.current(0));
            QCOMPARE(m_form->Text2[3].text(), m_form->Grid1.current(1));
        }
        open(everyReaderPicker());
        QCOMPARE(names(), u"O'NeilR3 王一R1 王一R2 王二R4"_s);
    }

    void nobodyFound()
    {
        for (const auto& [picker, notice] : {std::pair {noCardPicker(), u"x' or 1=1 --，没有无证借书权限"_s},
                 std::pair {everyReaderPicker(), u"x' or 1=1 --，没有登记读者证！"_s}}) {
            open(picker);
            search(u"x' or 1=1 --"_s);
            QCOMPARE(m_form->labNotExists.text(), notice);
            QVERIFY(m_form->labNotExists.isVisible() && !m_form->Command2[0].isEnabled());
            QCOMPARE(names() + m_form->Text2[0].text(), QString());
            search({});
            QVERIFY(!m_form->labNotExists.isVisible() && m_form->Command2[0].isEnabled());
        }
    }

    void details()
    {
        m->send(u"update dzk set paperdate='2024-09-01',yordercshu=3 where readercode='R3'"_s);
        m->insert(u"dzkx"_s,
            {{u"readercode"_s, u"R3"_s}, {u"zhenghao"_s, u"Z9"_s}, {u"birthday"_s, u"2008-05-06"_s}});
        open();
        search(u"neil"_s);
        QStringList texts;
        for (const TextBox& box : m_form->Text2)
            texts.append(box.text());
        QCOMPARE(texts.join(u'|'), u"O'Neil||2008-05-06|R3|学生|有效|2024-09-01|2027-12-31|5|0|3||Z9||||"_s);
        search(u"王"_s); // a reader without a row of details
        QCOMPARE(m_form->Text2[2].text() + m_form->Text2[12].text(), QString());
    }

    void photos()
    {
        const QString face = m->folder.filePath(u"face.png"_s);
        QVERIFY(QImage(300, 400, QImage::Format_RGB32).save(face));
        open();
        for (const QString& photo : {face, u"/dev/null"_s, face, QString()}) {
            m->send(u"update dzk set photo='%1' where readercode='R3'"_s.arg(photo));
            search(u"neil"_s);
            QCOMPARE(m_form->Image1.pixmap(Qt::ReturnByValue).isNull(), photo != face);
        }
    }

    void sameNameTakesTheLineShown()
    {
        open();
        search(u"王"_s);
        const auto colour
            = [this] { return m_form->Grid1.palette().color(QPalette::Active, QPalette::Highlight); };
        const QColor resting = colour();
        QTest::keyPress(&m_form->Grid1, Qt::Key_Down);
        QVERIFY(colour() != resting);
        QTest::keyRelease(&m_form->Grid1, Qt::Key_Down);
        QCOMPARE(colour(), resting);
        const QString second = m_form->Grid1.TextMatrix(2, 1);
        m_form->Command2[0].click();
        QVERIFY(!m_form->isVisible());
        QCOMPARE(m_form->PickedCode + m_form->PickedFlag, second + u"yes"_s);
    }

    void anotherNameIsNotTaken()
    {
        open();
        QCOMPARE(m_form->Text1.selectedText(), m_form->Text1.text()); // typing replaces the first name
        search(u"neil"_s);
        m_form->Text1.setFocus();
        QTest::keyClick(&m_form->Text1, Qt::Key_Return);
        QVERIFY(m_form->Command1.hasFocus());
        m_form->Text1.selectAll();
        m_form->Text1.insert(u"王一"_s);
        m_form->Command2[0].click();
        QVERIFY(m_form->isVisible() && !m_form->Command2[0].isEnabled());
        QCOMPARE(m_form->PickedCode + m_form->PickedFlag, QString());
        // a click on the line brings the reader back
        QTest::mouseClick(m_form->Grid1.viewport(), Qt::LeftButton, {}, {20, 10});
        QCOMPARE(m_form->Text1.text(), u"O'Neil"_s);
        m_form->Command2[0].click();
        QCOMPARE(m_form->PickedCode, u"R3"_s);
    }

    void readerGoneAndNobodyTaken()
    {
        open();
        search(u"王"_s);
        m->send(u"delete from dzk"_s);
        m->prompt.expect(u"该读者不存在！(可能已经被删除)"_s).titled(u"操作提示").icon(Icon::Information);
        QTest::keyClick(&m_form->Grid1, Qt::Key_Down);
        QCOMPARE(m_form->Text2[0].text() + m_form->Text2[3].text(), QString());
        m_form->Command2[0].click();
        QVERIFY(m_form->isVisible());
        m_form->PickedCode = u"R1"_s;
        m_form->Command2[1].click();
        QVERIFY(!m_form->isVisible());
        QCOMPARE(m_form->PickedCode, QString());
    }

    void failingStatements()
    {
        open();
        m->failAt(u"from dzkx"_s);
        m->prompt.expectStart(u"语句失败"_s).titled(u"操作提示");
        search(u"neil"_s);
        QCOMPARE(m_form->Text2[3].text(), QString()); // nobody half shown
        m->failAt(u"wuzheng=1"_s);
        m_form->Command1.click();
        QCOMPARE(m_form->labNotExists.text(), u"O'Neil，没有无证借书权限"_s);
    }

private:
    QString names()
    {
        QStringList list;
        for (int row = 1; row < m_form->Grid1.Rows(); ++row)
            list.append(m_form->Grid1.TextMatrix(row, 0) + m_form->Grid1.TextMatrix(row, 1));
        list.sort();
        return list.join(u' ');
    }
    void open(const ReaderPicker& picker = noCardPicker())
    {
        m_form = &opened<ReaderPickerFrm>(m->session, picker);
    }
    void search(const QString& part)
    {
        m_form->Text1.selectAll();
        m_form->Text1.insert(part);
        m_form->Command1.click();
    }

    ReaderPickerFrm* m_form = nullptr;
};

QTEST_MAIN(TestReaderPicker)
#include "test_reader_picker.moc"
