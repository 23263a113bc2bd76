#include "holdings/starter_ops.h"

#include "database/circulation_rules.h"
#include "database/row_text.h"
#include "holdings/built_in.h"
#include "holdings/in_transaction.h"
#include "platform/core/dates.h"
#include "platform/core/text.h"
#include "platform/db/decimal.h"
#include "readers/delimited_text.h"
#include "readers/import_lists_ops.h"

#include <QDir>
#include <QSaveFile>

namespace quilla {

namespace {

const QString Types = u"读者类型.csv"_s;
const QString Units = u"读者单位.csv"_s;
const QString Holidays = u"节假日.csv"_s;

Error fault(const QString& text)
{
    return Error(5, u"Starter"_s, text);
}

/// One of the files, its columns found by their headings.
class StarterFile {
public:
    StarterFile(const QString& folder, const QString& name)
        : m_name(name)
    {
        QByteArray content;
        if (folder.isEmpty()) {
            content = builtIn(u"starter/"_s + name);
        } else {
            QFile file(QDir(folder).filePath(name));
            if (!file.exists()) return;
            if (!file.open(QIODevice::ReadOnly)) throw fault(u"无法读取文件 %1。"_s.arg(file.fileName()));
            content = file.readAll();
        }
        m_text = readDelimited(decodedText(content));
    }

    std::size_t lines() const { return m_text.records.size(); }

    /// Trimmed; empty where the column or the line's field is missing.
    QString at(std::size_t line, QStringView heading) const
    {
        const QStringList& headings = m_text.records.front().fields;
        for (qsizetype column = 0; column < headings.size(); ++column) {
            const QString plain = headings[column].trimmed();
            if (plain == heading || plain.startsWith(heading.toString() + u'(')) return field(line, column);
        }
        return {};
    }

    QString need(std::size_t line, QStringView heading) const
    {
        const QString text = at(line, heading);
        if (text.isEmpty()) refuse(line, u"%1是空的"_s.arg(heading));
        return text;
    }

    [[noreturn]] void refuse(std::size_t line, const QString& reason) const
    {
        throw fault(u"%1 第 %2 行：%3。"_s.arg(m_name).arg(m_text.records[line].line).arg(reason));
    }

private:
    QString field(std::size_t line, qsizetype column) const
    {
        return m_text.records[line].fields.value(column).trimmed();
    }

    QString m_name;
    DelimitedText m_text {};
};

QSet<QString> namesThere(Connection& connection, const QString& select)
{
    QSet<QString> names;
    for (Recordset row = connection.open(select); !row.eof(); row.next())
        names.insert(comparable(row.field(0).text()));
    return names;
}

/// The value of a rule as the database takes it, "0" for none.
QString ruleValue(const StarterFile& file, std::size_t line, QStringView caption, RuleKind kind)
{
    const QString heading = caption.toString().section(u'(', 0, 0);
    const QString text = file.at(line, heading);
    if (text.isEmpty() || text == u"否") return u"0"_s;
    if (text == u"是") return u"1"_s;
    const auto number = Decimal::read(text);
    if (!number || number->text().startsWith(u'-')) file.refuse(line, u"%1应该是数：%2"_s.arg(heading, text));
    if (kind != RuleKind::Rate && number->text().contains(u'.'))
        file.refuse(line, u"%1应该是整数：%2"_s.arg(heading, text));
    return number->text();
}

void loadTypes(Connection& connection, const StarterFile& file, StarterReport& report)
{
    QSet<QString> listed = namesThere(connection, u"select readerclass from dzlx"_s);
    QSet<QString> ruled = namesThere(connection, u"select readerclass from jycs"_s);
    RowText type(connection, u"dzlx", u"readerclass");
    RowText rules(connection, u"jycs", u"readerclass,"_s + ruleColumns());
    for (std::size_t line = 1; line < file.lines(); ++line) {
        const QString name = file.need(line, u"读者类型");
        const QString key = comparable(name);
        if (ruled.contains(key)) {
            report.kept.append(name);
            continue;
        }
        rules.text(name);
        for (const auto& rule : circulationRules<QString>())
            rules.value(Value(DecimalText {ruleValue(file, line, rule.caption, rule.kind)}));
        rules.send();
        if (!listed.contains(key)) type.text(name).send();
        listed.insert(key);
        ruled.insert(key);
        ++report.types;
    }
}

void loadUnits(Connection& connection, const StarterFile& file, StarterReport& report)
{
    QSet<QString> there = namesThere(connection, u"select readunit from dzdw"_s);
    RowText row(connection, u"dzdw", u"readunit");
    for (std::size_t line = 1; line < file.lines(); ++line) {
        const QString name = file.need(line, u"读者单位");
        if (there.contains(comparable(name))) {
            report.kept.append(name);
            continue;
        }
        there.insert(comparable(name));
        row.text(name).send();
        ++report.units;
    }
}

QDate dayOf(const StarterFile& file, std::size_t line, QStringView heading)
{
    const QString text = file.need(line, heading);
    const auto day = readDay(text);
    if (!day) file.refuse(line, u"%1应该是日期(例如:2003-01-01)：%2"_s.arg(heading, text));
    return *day;
}

/// The name is the key of a holiday, so each year has names of its own.
void loadHolidays(Connection& connection, const StarterFile& file, StarterReport& report)
{
    QSet<QString> there = namesThere(connection, u"select memo from Global where type='holiday'"_s);
    RowText row(connection, u"Global", u"type,code,memo");
    for (std::size_t line = 1; line < file.lines(); ++line) {
        const QString name = file.need(line, u"名称");
        const QDate first = dayOf(file, line, u"开始日期");
        const QDate last = dayOf(file, line, u"结束日期");
        if (last < first) file.refuse(line, u"结束日期早于开始日期"_s);
        if (there.contains(comparable(name))) {
            report.kept.append(name);
            continue;
        }
        there.insert(comparable(name));
        row.text(u"holiday").text(isoDate(first) + u' ' + isoDate(last)).text(name).send();
        ++report.holidays;
    }
}

} // namespace

StarterReport enterStarter(Connection& connection, const QString& folder)
{
    if (!folder.isEmpty() && !QDir(folder).exists()) throw fault(u"没有文件夹 %1。"_s.arg(folder));
    StarterReport report;
    loadTypes(connection, StarterFile(folder, Types), report);
    loadUnits(connection, StarterFile(folder, Units), report);
    loadHolidays(connection, StarterFile(folder, Holidays), report);
    return report;
}

StarterReport loadStarter(Connection& connection, const QString& folder)
{
    StarterReport report;
    inTransaction(connection, [&] { report = enterStarter(connection, folder); });
    return report;
}

QStringList writeStarter(const QString& folder)
{
    const QDir to(folder);
    if (!to.mkpath(u"."_s)) throw fault(u"无法建立文件夹 %1。"_s.arg(folder));
    const QStringList names {Types, Units, Holidays};
    for (const QString& name : names)
        if (to.exists(name)) throw fault(u"文件 %1 已经存在。"_s.arg(to.filePath(name)));
    QStringList written;
    for (const QString& name : names) {
        QSaveFile file(to.filePath(name));
        // the mark lets spreadsheets know that it is UTF-8
        const bool done = file.open(QIODevice::WriteOnly)
            && file.write("\xef\xbb\xbf" + builtIn(u"starter/"_s + name)) > 0 && file.commit();
        if (!done) throw fault(u"无法写入文件 %1：%2"_s.arg(file.fileName(), file.errorString()));
        written.append(file.fileName());
    }
    return written;
}

} // namespace quilla
