#include "frame/sublib.h"
#include "platform/core/date_box.h"
#include "platform/db/decimal.h"
#include "readers/reader_card_ops.h"
#include "readers/rule_numbers.h"

namespace quilla {

namespace {

constexpr int TypeMismatch = 13;

QString quoted(const QString& text)
{
    return u'\'' + doubled(text) + u'\'';
}

/// A number as it stands without quotes in a statement; nothing else of a box reaches it.
QString bareNumber(const QString& text)
{
    return Decimal::read(text).value_or(Decimal()).text();
}

/// Whether the text is a number that its column keeps as it is.
bool fitsColumn(int box, const QString& text)
{
    const bool rate = box >= CardBox::OverdueFine && box <= CardBox::LostFine;
    return rate ? isRuleRate(text) : isRuleCount(text);
}

/// One press of the save button, from the first check to the last statement.
class CardSaving {
public:
    CardSaving(Session& session, const CardEdit& edit, ReaderCardView& view)
        : m_session(session)
        , m_edit(edit)
        , m_view(view)
        , m_today(isoDate(GetServerDate(session)))
        , m_card(view.shownCard())
        , m_code(m_card.boxes[CardBox::ReaderCode].trimmed())
    {
    }

    bool run();

private:
    QString box(int index) const { return m_card.boxes[index]; }
    bool isBlank(int index) const { return box(index).trimmed().isEmpty(); }
    QString list(int index) const { return m_card.lists[index].trimmed(); }
    bool refuse(int index, const QString& text);

    bool checkReader();
    bool checkUnit();
    bool checkDate(int index, const QString& noDate);
    void letStateFollowTerm();
    bool checkParameters();
    bool checkCodeIsNew();
    bool checkLimits();
    bool checkCodeIsFree();
    std::optional<bool> isTaken();

    bool write();
    std::vector<std::pair<QString, QString>> columns() const;
    QString insertOfCard() const;
    QString updateOfCard(const QString& code) const;
    void writePapers(Connection& conn, const QString& code);
    void carryCode(Connection& conn);
    bool tellFailure();

    Session& m_session;
    const CardEdit& m_edit;
    ReaderCardView& m_view;
    const QString m_today;
    ReaderCard m_card;
    const QString m_code;
};

bool CardSaving::run()
{
    if (!checkReader() || !checkUnit()) return false;
    if (!checkDate(CardBox::Issued, u"请正确输入登记日期(例如:2003-01-01)"_s)) return false;
    if (!checkDate(CardBox::Term, u"请正确输入有效期限(例如:2003-01-01)"_s)) return false;
    letStateFollowTerm();
    return checkParameters() && checkCodeIsNew() && checkLimits() && checkCodeIsFree() && write();
}

bool CardSaving::refuse(int index, const QString& text)
{
    m_session.prompt.inform(text, OperationTitle);
    m_view.focusBox(index);
    return false;
}

bool CardSaving::checkReader()
{
    if (isBlank(CardBox::ReaderCode)) {
        m_session.prompt.warn(u"请正确输入读者号"_s);
        m_view.focusBox(CardBox::ReaderCode);
        return false;
    }
    if (isBlank(CardBox::Name)) {
        m_session.prompt.warn(u"请输入读者姓名"_s);
        m_view.focusBox(CardBox::Name);
        return false;
    }
    if (isBlank(CardBox::LoanCopies)) {
        m_card.boxes[CardBox::LoanCopies] = u"0"_s;
        m_view.setBox(CardBox::LoanCopies, u"0"_s);
    }
    if (!list(CardList::Type).isEmpty()) return true;
    m_session.prompt.inform(u"读者类型没有定义！请添加读者类型！"_s, OperationTitle);
    return false;
}

bool CardSaving::checkUnit()
{
    if (!list(CardList::Unit).isEmpty()) return true;
    if (m_view.hasChoices(CardList::Unit))
        m_session.prompt.warn(u"请输入读者单位"_s);
    else
        m_session.prompt.inform(u"目前没有可用的读者单位，请先定义读者单位"_s);
    m_view.focusList(CardList::Unit);
    return false;
}

bool CardSaving::checkDate(int index, const QString& noDate)
{
    if (!platformDate(box(index))) return refuse(index, noDate);
    if (!startsWithFullYear(box(index))) return refuse(index, u"请输入完整的日期格式!(例如:2003-01-01)"_s);
    return true;
}

/// The term is compared as it was typed: 2004-3-7 lies after 2004-03-07, and the term of a new card is
/// written that way.
void CardSaving::letStateFollowTerm()
{
    const bool isOver = box(CardBox::Term) < m_today;
    const QString from = isOver ? u"有效"_s : u"超期"_s;
    if (!sameText(list(CardList::Status), from)) return;
    m_card.lists[CardList::Status] = isOver ? u"超期"_s : u"有效"_s;
    m_view.setList(CardList::Status, m_card.lists[CardList::Status]);
}

bool CardSaving::checkParameters()
{
    for (int index = CardBox::LoanDays; index <= CardBox::ScienceCopies; ++index)
        if (!fitsColumn(index, box(index))) return refuse(index, u"读者流通参数应该为数值！请重新设定！"_s);
    return true;
}

bool CardSaving::checkCodeIsNew()
{
    if (!m_edit.mode.isAdd()) return true;
    const auto taken = isTaken();
    if (!taken) return false;
    if (!*taken) return true;
    m_session.prompt.warn(u"读者号重复"_s);
    m_view.focusBox(CardBox::ReaderCode);
    return false;
}

/// A card without a quota and a loan period would borrow nothing.
bool CardSaving::checkLimits()
{
    for (const int index : {CardBox::LoanCopies, CardBox::LoanDays}) {
        const auto number = readNumber(box(index));
        if (!number) throw Error(TypeMismatch, u"DzaddFrm"_s, u"类型不匹配"_s);
        if (*number != 0) continue;
        m_view.showParameters();
        return refuse(index, u"有一些必须的参数没有设置，请检查并继续设置！"_s);
    }
    if (!fitsColumn(CardBox::LoanCopies, box(CardBox::LoanCopies)))
        return refuse(CardBox::LoanCopies, u"读者流通参数应该为数值！请重新设定！"_s);
    return true;
}

bool CardSaving::checkCodeIsFree()
{
    const bool isChanged = !m_edit.previousCode.isEmpty() && !sameText(m_code, m_edit.previousCode);
    if (!m_edit.mode.isAdd() && !isChanged) return true;
    const auto taken = isTaken();
    if (!taken) return false;
    return !*taken || refuse(CardBox::ReaderCode, u"该读者证号已经存在，请重新输入！"_s);
}

/// Nothing when that is not known; no second card is written on a guess.
std::optional<bool> CardSaving::isTaken()
{
    Connection conn;
    if (OpenDbConnection(m_session, conn) != GoOn) return {};
    const QString select = u"select readercode from dzk where readercode='%1'"_s.arg(doubled(m_code));
    const auto taken = m_session.error.attempt([&] { return !conn.open(select).eof(); });
    if (!taken) tellFailure();
    return taken;
}

bool CardSaving::write()
{
    Connection conn;
    if (OpenDbConnection(m_session, conn) != GoOn) return false;
    LastError& error = m_session.error;
    if (m_edit.previousCode.isEmpty()) {
        error.attempt([&] { conn.execute(m_edit.mode.isAdd() ? insertOfCard() : updateOfCard(m_code)); });
        error.attempt([&] { writePapers(conn, m_code); });
    } else {
        error.attempt([&] { carryCode(conn); });
    }
    conn.close(); // rolls back what was not committed
    return !error.isSet() || tellFailure();
}

/// What a card writes, the same for a new one and for a change.
std::vector<std::pair<QString, QString>> CardSaving::columns() const
{
    const auto text = [&](int index) { return quoted(box(index)); };
    const auto chosen = [&](int index) { return quoted(m_card.lists[index]); };
    const auto number = [&](int index) { return bareNumber(box(index)); };
    const auto bit = [&](int index) { return m_card.checks[index] ? u"1"_s : u"0"_s; };
    using namespace CardBox;
    return {{u"readercode"_s, quoted(m_code)}, {u"name"_s, text(Name)}, {u"sex"_s, chosen(CardList::Sex)},
        {u"readerclass"_s, chosen(CardList::Type)}, {u"readunit"_s, chosen(CardList::Unit)},
        {u"bookcount"_s, number(LoanCopies)}, {u"orderbook"_s, number(OnLoan)},
        {u"paperdate"_s, text(Issued)}, {u"term"_s, text(Term)}, {u"readstatus"_s, chosen(CardList::Status)},
        {u"photo"_s, quoted(m_card.photo)}, {u"memo"_s, text(Memo)}, {u"daycount"_s, number(LoanDays)},
        {u"fine"_s, number(OverdueFine)}, {u"defile"_s, number(DefileFine)}, {u"lost"_s, number(LostFine)},
        {u"recount"_s, number(Renewals)}, {u"reday"_s, number(RenewalDays)},
        {u"ifcanre"_s, bit(CardCheck::MayHoldOverdue)}, {u"orderday"_s, number(HoldDays)},
        {u"ordercount"_s, number(HoldCopies)}, {u"Acount"_s, number(ArtsCopies)},
        {u"Bcount"_s, number(ScienceCopies)}, {u"wuzheng"_s, bit(CardCheck::NeedsNoCard)}};
}

QString CardSaving::insertOfCard() const
{
    QStringList names;
    QStringList values;
    for (const auto& [name, value] : columns()) {
        names.append(name);
        values.append(value);
    }
    return u"insert into dzk("_s + names.join(u',') + u") Values("_s + values.join(u',') + u')';
}

QString CardSaving::updateOfCard(const QString& code) const
{
    QStringList assignments;
    for (const auto& [name, value] : columns())
        assignments.append(name + u'=' + value);
    return u"update dzk set "_s + assignments.join(u',') + u" where readercode="_s + quoted(code);
}

/// The papers found under `code` go on under the card's code; a row may be left from an earlier card.
void CardSaving::writePapers(Connection& conn, const QString& code)
{
    const QString email = doubled(m_card.papers.texts[CardDetail::Email]);
    const QString kind = doubled(m_card.papers.kind);
    const QString number = doubled(m_card.papers.texts[CardDetail::Number]);
    const QString address = doubled(m_card.papers.texts[CardDetail::Address]);
    const QString old = doubled(code);
    if (conn.open(u"select readercode from dzkx where readercode='%1'"_s.arg(old)).eof()) {
        conn.execute(
            u"insert  into  dzkx  (readercode,email,zhenghaolx,zhenghao,dizhi) values ('%1','%2','%3','%4','%5')"_s
                .arg(doubled(m_code), email, kind, number, address));
        return;
    }
    const bool carried = !m_edit.previousCode.isEmpty();
    const QString newCode = carried ? u"readercode='%1',"_s.arg(doubled(m_code)) : QString();
    conn.execute(
        u"update dzkx  set %1email='%2',zhenghaolx='%3',zhenghao='%4',dizhi='%5'  where readercode='%6'"_s
            .arg(newCode, email, kind, number, address, old));
}

void CardSaving::carryCode(Connection& conn)
{
    const QString old = m_edit.previousCode;
    conn.begin(OnFailure::EndTransaction);
    conn.execute(updateOfCard(old));
    writePapers(conn, old);
    for (const QString& table : {u"fkk"_s, u"jhsk"_s, u"jhslsk"_s, u"yyk"_s})
        conn.execute(u"update %1 set readercode='%2' where readercode='%3'"_s.arg(
            table, doubled(m_code), doubled(old)));
    conn.commit();
}

/// False, as the outcome of the saving.
bool CardSaving::tellFailure()
{
    const QString detail = m_session.error.text();
    m_session.error.clear();
    m_view.tellFailure(m_edit.mode.isAdd() ? u"读者增加失败！请检查后重新操作！详细资料如下："_s
                                           : u"读者修改失败！请检查后重新操作！详细资料如下："_s,
        detail);
    return false;
}

} // namespace

bool saveCard(Session& session, const CardEdit& edit, ReaderCardView& view)
{
    return CardSaving(session, edit, view).run();
}

} // namespace quilla
