#include "differ/side.h"

#include "database/procedures.h"
#include "platform/core/text.h"

#include <QRegularExpression>

namespace quilla::test {

namespace {

/// A fraction as far as a double holds it, which is how SQLite reckons.
QString shortened(const QString& text)
{
    constexpr int heldDigits = 15;
    static const QRegularExpression noDigit(u"[^0-9]"_s);
    if (QString(text).remove(noDigit).size() <= heldDigits) return text;
    return QString::number(text.toDouble(), 'g', heldDigits - 1);
}

/// Numbers without the zeros at the end of their fraction.
QString shown(const Value& value)
{
    if (value.isNull()) return u"NULL"_s;
    if (value.kind() == sql::Kind::Bit) return value.isTrue() ? u"1"_s : u"0"_s;
    QString text = value.text();
    if (value.kind() == sql::Kind::Date) {
        const CanonicalMoment moment(*value.moment());
        text = QString::fromUtf8(moment.view().data(), qsizetype(moment.view().size()));
    } else if (value.kind() == sql::Kind::Decimal && text.contains(u'.')) {
        static const QRegularExpression zeros(u"\\.?0+$"_s);
        text.remove(zeros);
        text = shortened(text);
    }
    return text;
}

QStringList namesOf(const Recordset& rows)
{
    QStringList names;
    for (int field = 0; field < rows.fieldCount(); ++field)
        names += rows.fieldName(field);
    return names;
}

std::vector<QStringList> rowsOf(Recordset row)
{
    std::vector<QStringList> rows {namesOf(row)};
    for (; !row.eof(); row.next()) {
        QStringList& fields = rows.emplace_back();
        for (int field = 0; field < row.fieldCount(); ++field)
            fields += shown(row.field(field));
    }
    return rows;
}

/// The table that a statement writes to; empty for one that reads.
QString writtenTable(const QString& statement)
{
    static const QRegularExpression writes(
        u"^\\s*(?:update|insert\\s+into|insert|delete\\s+from|delete)\\s+(?:dbo\\.)?\\[?(\\w+)"_s,
        QRegularExpression::CaseInsensitiveOption);
    return writes.match(statement).captured(1);
}

/// The number of a new row depends on the rows that were there before, those that were rolled back included.
void forgetNumbers(const QString& statement, const sql::Table& table, std::vector<QStringList>& rows)
{
    if (!statement.trimmed().startsWith(u"insert", Qt::CaseInsensitive) || !table.columns[0].identity) return;
    for (QStringList& row : rows)
        row.removeFirst();
}

bool has(const QString& statement, const QString& words)
{
    return statement.contains(
        QRegularExpression(u"\\b(%1)\\b"_s.arg(words), QRegularExpression::CaseInsensitiveOption));
}

const QString Grouping = u"group by|distinct|union|min|max"_s;

/// Whether only selects in its brackets group, beside or behind a table whose rows it shows.
bool isPlain(QString statement)
{
    static const QRegularExpression text(u"'[^']*'"_s);
    static const QRegularExpression bracket(u"\\([^()]*\\)"_s);
    static const QRegularExpression first(
        u"\\bfrom\\s*\\(+\\s*select\\b"_s, QRegularExpression::CaseInsensitiveOption);
    if (statement.contains(first)) return false;
    statement.remove(text);
    while (statement.contains(bracket))
        statement.remove(bracket);
    return !has(statement, Grouping);
}

void fold(QStringList& row)
{
    for (QString& field : row) {
        field = field.toCaseFolded().normalized(QString::NormalizationForm_KC);
        while (field.endsWith(u' '))
            field.chop(1);
    }
}

/// Whether one engine came upon a value that fails before it found out that there is no row for it.
bool failsEarly(const Outcome& failed, const Outcome& other)
{
    static const QRegularExpression value(u"超出|不是日期|不能为零"_s);
    const bool without = other.rows.size() == 1 || other.rows.back() == QStringList {u"0"_s};
    return without && failed.failure.contains(value);
}

} // namespace

Side::Side(const sql::Schema& known, const Clock& clock, const QString& connectionText)
    : schema(known)
    , factory(schema, clock)
{
    installProcedures(factory);
    connection = factory.open(connectionText);
}

Outcome Side::send(const QString& statement)
{
    Outcome outcome;
    const QString table = writtenTable(statement);
    if (!table.isEmpty()) connection.begin();
    try {
        if (table.isEmpty()) {
            outcome.rows = rowsOf(connection.open(statement));
        } else {
            const QString count = QString::number(connection.execute(statement));
            outcome.rows = rowsOf(connection.open(u"select * from "_s + table));
            forgetNumbers(statement, *schema.table(table), outcome.rows);
            outcome.rows.push_back({count});
        }
    } catch (const Error& error) {
        outcome.failure = error.text;
    }
    if (!table.isEmpty()) connection.rollback();
    return outcome;
}

bool isSame(const QString& statement, const Outcome& left, const Outcome& right)
{
    if (left.failure.isEmpty() != right.failure.isEmpty())
        return left.failure.isEmpty() ? failsEarly(right, left) : failsEarly(left, right);
    if (!left.failure.isEmpty()) return true;
    const bool anyRows = has(statement, u"top"_s) && !has(statement, u"order by"_s);
    if (anyRows) return left.rows.size() == right.rows.size();
    std::vector<QStringList> sides[] = {left.rows, right.rows};
    const bool grouped = has(statement, Grouping);
    const bool ordered = !grouped || isPlain(statement);
    for (std::vector<QStringList>& rows : sides) {
        // Which of the texts that count as the same stands for their group is left to the engine.
        if (grouped || has(statement, u"exec"_s)) std::ranges::for_each(rows, fold);
        if (!ordered) std::sort(rows.begin() + 1, rows.end()); // after the names
    }
    return sides[0] == sides[1];
}

QString shownBeside(const Outcome& outcome, const Outcome& other)
{
    constexpr qsizetype most = 6;
    if (!outcome.failure.isEmpty()) return u"fails: "_s + outcome.failure;
    QStringList lines;
    for (std::size_t i = 0; i < outcome.rows.size() && lines.size() < most; ++i)
        if (i >= other.rows.size() || outcome.rows[i] != other.rows[i])
            lines += QString::number(i) + u": "_s + outcome.rows[i].join(u'|');
    return u"%1 rows\n"_s.arg(outcome.rows.size()) + lines.join(u'\n');
}

} // namespace quilla::test
