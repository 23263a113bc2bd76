#include "readers/import_check.h"

#include "platform/core/dates.h"
#include "platform/db/decimal.h"
#include "readers/rule_numbers.h"
#include "readers/text_forms.h"

namespace quilla {

namespace {

const QString Valid = u"有效"_s;
const QString Expired = u"超期"_s;
const QStringList States {Valid, Expired, u"挂失"_s, u"无效"_s};
const QStringList Sexes {u"男"_s, u"女"_s};

QString captionOf(int field)
{
    return importField(field).captions.first();
}

/// Whether a text has characters that nobody sees, half ones too. No statement takes a control character; a
/// code that has any of the others is never found again.
bool hasUnseen(int field, const QString& text)
{
    if (hasUnseenCharacters(text)) return true;
    const QList<uint> characters = text.toUcs4();
    return field == ImportField::Code && std::any_of(characters.begin(), characters.end(), [](uint c) {
        return c != u'\n' && !QChar::isPrint(c);
    });
}

/// As short as it can be written: spreadsheets make "20.00" of 20 at times.
template <bool (*Fits)(const QString&)> QString storedNumber(const QString& text)
{
    if (!Fits(text)) return {};
    const QString number = Decimal::read(text)->text();
    return number.startsWith(u'-') ? QString() : number;
}

QString storedBit(const QString& text)
{
    for (const QString& yes : {u"1"_s, u"是"_s, u"true"_s, u"yes"_s, u"y"_s})
        if (text.compare(yes, Qt::CaseInsensitive) == 0) return u"1"_s;
    for (const QString& no : {u"0"_s, u"否"_s, u"false"_s, u"no"_s, u"n"_s})
        if (text.compare(no, Qt::CaseInsensitive) == 0) return u"0"_s;
    return {};
}

} // namespace

LineCheck::LineCheck(const sql::Schema& schema, const ImportLists& lists, const std::vector<int>& fields,
    bool anyUnit, CurrentReader current)
    : m_schema(schema)
    , m_lists(lists)
    , m_fields(fields)
    , m_anyUnit(anyUnit)
    , m_current(std::move(current))
{
}

bool LineCheck::check(const TextRecord& record)
{
    m_reasons.clear();
    take(record);
    keepCurrent();
    needNoMore(record);
    checkCode(record.line);
    if (isEmpty(ImportField::Name)) refuse(u"姓名是空的"_s);
    checkType();
    checkUnit();
    fillIn();
    checkForms();
    checkSex();
    checkDigits();
    checkState();
    checkQuota();
    return m_reasons.isEmpty();
}

void LineCheck::take(const TextRecord& record)
{
    m_values = {};
    const auto count = std::min(m_fields.size(), std::size_t(record.fields.size()));
    for (std::size_t column = 0; column < count; ++column)
        if (m_fields[column] >= 0) value(m_fields[column]) = record.fields[qsizetype(column)].trimmed();
}

void LineCheck::needNoMore(const TextRecord& record)
{
    for (qsizetype column = qsizetype(m_fields.size()); column < record.fields.size(); ++column)
        if (!record.fields[column].trimmed().isEmpty())
            return refuse(u"比列标题多出的内容：%1"_s.arg(record.fields[column]));
}

void LineCheck::checkCode(int line)
{
    if (isEmpty(ImportField::Code)) return refuse(u"读者证号是空的"_s);
    const QString code = comparable(value(ImportField::Code));
    if (!m_known && m_lists.codes.contains(code)) refuse(u"读者证号已经存在"_s);
    const int earlier = m_lineOfCode.value(code);
    if (earlier) return refuse(u"读者证号与第 %1 行重复"_s.arg(earlier));
    m_lineOfCode.insert(code, line);
}

/// The card takes the name as the list spells it.
void LineCheck::checkType()
{
    QString& type = value(ImportField::Type);
    if (m_known && !isGiven(ImportField::Type)) return;
    if (type.isEmpty()) return refuse(u"读者类型是空的"_s);
    const auto known = m_lists.types.constFind(comparable(type));
    if (known == m_lists.types.constEnd()) return refuse(u"没有这个读者类型：%1"_s.arg(type));
    type = *known;
}

void LineCheck::checkUnit()
{
    QString& unit = value(ImportField::Unit);
    if (!isGiven(ImportField::Unit)) return;
    const auto known = m_lists.units.constFind(comparable(unit));
    if (known != m_lists.units.constEnd())
        unit = *known;
    else if (!m_anyUnit)
        refuse(u"没有这个读者单位：%1（可用 --add-units 建立）"_s.arg(unit));
}

/// A reader of another type gets its parameters, as in the editor.
void LineCheck::keepCurrent()
{
    m_given = m_values;
    m_known = m_current && m_lists.codes.contains(comparable(value(ImportField::Code)));
    if (!m_known) return;
    m_values = m_current(value(ImportField::Code));
    const bool sameType
        = !isGiven(ImportField::Type) || sameText(value(ImportField::Type), m_given[ImportField::Type]);
    for (int field = 0; field < ImportField::Count; ++field)
        if (isGiven(field))
            value(field) = m_given[std::size_t(field)];
        else if (!sameType && field >= FirstParameter && field < FirstDetail)
            value(field).clear();
}

void LineCheck::takeParameters()
{
    const ImportValues rules = m_lists.parameters.value(comparable(value(ImportField::Type)));
    for (int field = FirstParameter; field < FirstDetail; ++field)
        if (isEmpty(field))
            value(field) = rules[std::size_t(field)].isEmpty() ? u"0"_s : rules[std::size_t(field)];
}

/// What the file leaves open. A known reader may well have no term.
void LineCheck::fillIn()
{
    takeParameters();
    if (m_known) return;
    if (isEmpty(ImportField::Issued)) value(ImportField::Issued) = isoDate(m_lists.today);
    if (isEmpty(ImportField::Term)) value(ImportField::Term) = isoDate(m_lists.today.addYears(1));
    if (isEmpty(ImportField::State)) value(ImportField::State) = Valid;
}

void LineCheck::checkForms()
{
    for (int field = 0; field < ImportField::Count; ++field)
        if (!isEmpty(field)) checkForm(field);
}

void LineCheck::checkForm(int field)
{
    QString& text = value(field);
    const sql::Column& column = importColumn(m_schema, field);
    if (column.kind == sql::Kind::Text) {
        if (text.size() > column.width)
            refuse(u"%1太长，最多 %2 个字"_s.arg(captionOf(field)).arg(column.width));
        if (hasUnseen(field, text)) refuse(u"%1里有看不见的字符"_s.arg(captionOf(field)));
        const bool lines = field == ImportField::Memo || field == ImportField::Address;
        if (!lines && text.contains(u'\n')) refuse(u"%1里有换行"_s.arg(captionOf(field)));
        return;
    }
    if (column.kind == sql::Kind::Date && text == NoDate) return text.clear();
    const struct {
        sql::Kind kind;
        QString (*stored)(const QString&);
        QString wanted;
    } forms[] {{sql::Kind::Date, storedDay, u"日期(例如:2003-01-01)"_s},
        {sql::Kind::Integer, storedNumber<isRuleCount>, u"不小于 0 的整数"_s},
        {sql::Kind::Decimal, storedNumber<isRuleRate>, u"不小于 0 且小于 100000 的数"_s},
        {sql::Kind::Bit, storedBit, u"“是”或“否”"_s}};
    const auto* form = std::find_if(
        std::begin(forms), std::end(forms), [&](const auto& known) { return known.kind == column.kind; });
    const QString stored = form->stored(text);
    if (stored.isEmpty()) return refuse(u"%1应该是%2：%3"_s.arg(captionOf(field), form->wanted, text));
    text = stored;
}

/// The editor offers these two; statistics count by them.
void LineCheck::checkSex()
{
    if (!isGiven(ImportField::Sex) || Sexes.contains(value(ImportField::Sex))) return;
    refuse(u"性别应该是男或女，或者不填：%1"_s.arg(value(ImportField::Sex)));
}

void LineCheck::checkDigits()
{
    for (const int field : {ImportField::Code, ImportField::PaperNumber})
        if (isRoundedCode(value(field)))
            refuse(
                u"%1被表格软件写成了科学计数法，位数已经丢失：%2。请把这一列设为文本格式，再填写完整的号码"_s
                    .arg(captionOf(field), value(field)));
    if (hasWideForms(value(ImportField::Code)))
        refuse(u"读者证号里有全角字符，请改成半角：%1"_s.arg(value(ImportField::Code)));
}

/// A card past its term is "超期" and one within it is not, as the editor saves them.
void LineCheck::checkState()
{
    QString& state = value(ImportField::State);
    if (m_known && state.isEmpty()) return;
    const auto known = std::find_if(
        States.begin(), States.end(), [&](const QString& listed) { return sameText(listed, state); });
    if (known == States.end()) return refuse(u"有效状态应该是%1之一：%2"_s.arg(States.join(u"、"_s), state));
    const auto term = readDay(value(ImportField::Term));
    if (!term || (*known != Valid && *known != Expired)) return;
    state = *term < m_lists.today ? Expired : Valid;
}

/// A type without rules yet would make cards that lend nothing. A 0 in the file is meant.
void LineCheck::checkQuota()
{
    if (m_known || !m_lists.types.contains(comparable(value(ImportField::Type)))) return;
    for (const int field : {ImportField::LoanCopies, ImportField::LoanDays})
        if (value(field) == u"0" && !isGiven(field))
            refuse(u"%1不能是 0；请填写，或先设置该读者类型的流通参数"_s.arg(captionOf(field)));
}

} // namespace quilla
