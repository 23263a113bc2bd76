#include "holdings/book_check.h"

#include "platform/core/dates.h"
#include "platform/core/text.h"
#include "platform/db/decimal.h"
#include "readers/import_fields.h"
#include "readers/text_forms.h"

#include <QRegularExpression>

namespace quilla {

namespace {

const QString OnShelf = u"库本"_s;
const QStringList Gone {u"丢失"_s, u"注销"_s};
const QStringList States {OnShelf, u"典藏"_s, u"借出"_s};

/// "CNY25.00", "￥25", "25.00元(上下册)": the first number.
QString amountIn(const QString& text)
{
    static const QRegularExpression number(u"\\d+(?:\\.\\d+)?"_s);
    const QString plain = QString(text).remove(u',');
    const QRegularExpressionMatch match = number.match(plain);
    return match.hasMatch() ? match.captured() : QString();
}

} // namespace

BookCheck::BookCheck(const sql::Schema& schema, HoldingsLists& lists)
    : m_titleTable(*schema.table(u"zsk"))
    , m_copyTable(*schema.table(u"sck"))
    , m_lists(lists)
{
}

QString BookCheck::check(BookRecord& book)
{
    if (!book.fault.isEmpty()) return book.fault;
    m_reasons.clear();
    m_barcodes.clear();
    checkTitle(book.title);
    checkCopies(book);
    if (m_reasons.isEmpty())
        for (const Digest& barcode : m_barcodes)
            m_lists.barcodes.insert(barcode);
    return m_reasons.join(u"；"_s);
}

void BookCheck::checkTitle(TitleValues& title)
{
    if (isBlank(title[TitleField::Name])) refuse(u"题名是空的"_s);
    checkNumber(title);
    checkDate(title);
    checkWidths(title);
}

void BookCheck::checkWidths(const TitleValues& title)
{
    for (int field = 0; field < TitleField::Count; ++field) {
        if (field == TitleField::Number || field == TitleField::Catalogued) continue;
        const BookFieldInfo& info = titleField(field);
        checkText(info.captions.first(), *m_titleTable.column(info.column), title[std::size_t(field)]);
    }
}

void BookCheck::checkText(const QString& caption, const sql::Column& column, const QString& text)
{
    if (text.size() > column.width) refuse(u"%1太长，最多 %2 个字"_s.arg(caption).arg(column.width));
    if (hasUnseenCharacters(text)) refuse(u"%1里有看不见的字符"_s.arg(caption));
}

/// "12" is a running number, "12-2" one with a mark; anything else is an author's number.
void BookCheck::checkNumber(TitleValues& title)
{
    static const QRegularExpression form(u"^(\\d+)(.*)$"_s);
    QString& number = title[TitleField::Number];
    if (number.isEmpty()) return;
    const QRegularExpressionMatch match = form.match(number);
    if (!match.hasMatch()) {
        if (title[TitleField::AuthorCode].isEmpty()) title[TitleField::AuthorCode] = number;
        number.clear();
        return;
    }
    constexpr int widest = 9;
    if (match.capturedLength(1) > widest)
        return refuse(u"种次号太大，最多 %1 位：%2"_s.arg(widest).arg(shortened(number)));
    if (title[TitleField::Mark].isEmpty()) title[TitleField::Mark] = match.captured(2);
    number = match.captured(1);
}

void BookCheck::checkDate(TitleValues& title)
{
    QString& text = title[TitleField::Catalogued];
    if (text.isNull()) {
        text = isoDate(m_lists.today);
    } else if (!text.isEmpty()) {
        const QString day = storedDay(text);
        if (day.isEmpty()) return refuse(u"入库日期应该是日期(例如:2003-01-01)：%1"_s.arg(text));
        text = day;
    }
}

void BookCheck::checkCopies(BookRecord& book)
{
    leaveGoneOut(book.copies);
    for (CopyValues& copy : book.copies) {
        checkBarcode(copy[CopyField::Barcode]);
        checkPrice(copy[CopyField::Price]);
        checkState(copy[CopyField::State]);
        for (const int field : {CopyField::Barcode, CopyField::Volume, CopyField::Location}) {
            const BookFieldInfo& info = copyField(field);
            checkText(info.captions.first(), *m_copyTable.column(info.column), copy[std::size_t(field)]);
        }
    }
}

/// Their place is the ledger of withdrawn books, which is not part of the file.
void BookCheck::leaveGoneOut(std::vector<CopyValues>& copies)
{
    m_gone += int(
        std::erase_if(copies, [](const CopyValues& copy) { return Gone.contains(copy[CopyField::State]); }));
}

void BookCheck::checkBarcode(const QString& barcode)
{
    if (isBlank(barcode)) return refuse(u"条形码是空的"_s);
    if (isRoundedCode(barcode)) refuse(u"条形码被表格软件写成了科学计数法，位数已经丢失：%1"_s.arg(barcode));
    if (hasWideForms(barcode)) refuse(u"条形码里有全角字符，请改成半角：%1"_s.arg(shortened(barcode)));
    if (barcode.contains(u'\n')) refuse(u"条形码里有换行"_s);
    const Digest digest = barcodeDigest(barcode);
    if (m_lists.barcodes.contains(digest))
        refuse(u"条形码已经存在：%1"_s.arg(shortened(barcode)));
    else if (std::find(m_barcodes.begin(), m_barcodes.end(), digest) != m_barcodes.end())
        refuse(u"条形码在这条记录里重复：%1"_s.arg(shortened(barcode)));
    m_barcodes.push_back(digest);
}

void BookCheck::checkPrice(QString& price)
{
    if (price.isEmpty()) return;
    constexpr qsizetype widest = 13;
    const auto number = Decimal::read(amountIn(price));
    const bool fits = number && number->fixed(2).size() <= widest;
    if (!fits || price.startsWith(u'-') || isRoundedCode(price))
        return refuse(u"价格应该是 0 到 9999999999.99 的数：%1"_s.arg(shortened(price)));
    price = number->fixed(2);
}

void BookCheck::checkState(QString& state)
{
    if (state.isEmpty()) state = OnShelf;
    if (!States.contains(state))
        return refuse(u"图书状态应该是%1之一：%2"_s.arg((States + Gone).join(u"、"_s), shortened(state)));
    if (state != States.last()) return;
    state = OnShelf;
    ++m_loans;
}

void BookCheck::refuse(const QString& reason)
{
    m_reasons.append(shortened(reason));
}

} // namespace quilla
