#include "catalogue/classification_ops.h"
#include "source_dir.h"
#include "support/cases.h"
#include "support/scripted_prompt.h"
#include "support/write_file.h"

#include <QStringConverter>
#include <QTemporaryDir>

using namespace quilla;

namespace {

const QString Table
    = u"之前\n [大类表] \nA 甲\n\n [注]\n  B 乙\n[]\nC 丙\n[二级类目表]\nA1 一\n[A8] 二\nB1 三\n A2 "
      u"不算\n[A9]\nA3 之后\n"_s;

} // namespace

/// The file of the classification table.
class TestClassification : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_file = classificationFile(m_folder.path()); }
    void cleanup() { QCOMPARE(m_prompt.takeComplaints(), QString()); }

    void encodings_data()
    {
        QString windows = Table;
        windows.replace(u'\n', u"\r\n"_s);
        QStringEncoder national("GB18030");
        QVERIFY(national.isValid());
        cases<QByteArray>({{"UTF-8", {Table.toUtf8()}}, {"marked", {"\xEF\xBB\xBF" + Table.toUtf8()}},
            {"GB18030", {national(windows)}}, {"no end of line", {Table.chopped(1).toUtf8()}}});
    }
    /// A section begins at its trimmed header and ends at a bracket around the line as it stands; a blank
    /// line is a line.
    void encodings()
    {
        writeFile(m_file, std::get<0>(given<QByteArray>()));
        QCOMPARE(readMainClasses(m_prompt, m_file)->join(u'|'), u"A 甲|| [注]|  B 乙"_s);
        QCOMPARE(readSecondLevel(m_prompt, m_file, u'A')->join(u'|'), u"A1 一|[A8] 二"_s);
        QCOMPARE(readSecondLevel(m_prompt, m_file, u'C')->size(), 0);
    }

    void noTable()
    {
        writeFile(m_file, "A1\n");
        QCOMPARE(readMainClasses(m_prompt, m_file)->size(), 0);
        QFile::remove(m_file);
        m_prompt.expect(u"配置文件【%1】丢失。"_s.arg(m_file)).titled(OperationTitle).icon(Icon::Information);
        QVERIFY(!readMainClasses(m_prompt, m_file));
    }

    /// What comes with the program: 22 classes, each with its second level.
    void shipped()
    {
        const QString file = classificationFile(QString::fromUtf8(QUILLA_SOURCE_DIR "/src/catalogue/"));
        const auto classes = readMainClasses(m_prompt, file);
        QCOMPARE(classes->size(), 22);
        for (const QString& line : *classes)
            QVERIFY2(readSecondLevel(m_prompt, file, line[0])->size() >= 3, qPrintable(line));
    }

private:
    QTemporaryDir m_folder;
    QString m_file;
    ScriptedPrompt m_prompt;
};

QTEST_GUILESS_MAIN(TestClassification)
#include "test_classification.moc"
