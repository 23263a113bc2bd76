#include "readers/reader_card_saving_ops.h"

#include "frame/work.h"
#include "platform/core/date_box.h"
#include "readers/reader_card_checks_ops.h"

namespace quilla {

namespace {

QString quoted(const QString& text)
{
    return u'\'' + doubled(text) + u'\'';
}

/// The day alone, in the form that every database takes: 2026年3月1日 may have been typed, or a time after
/// it. The term that a new card offers is written as it stands.
QString quotedDay(const QString& text)
{
    const auto day = platformDate(text);
    return quoted(!day || text == unpaddedDate(*day) ? text : isoDate(*day));
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
        , m_code(keepsCode() ? edit.storedCode : trimBlanks(m_card.code))
    {
    }

    bool run();

private:
    bool keepsCode() const { return !m_edit.mode.isAdd() && !m_edit.takesNewCode; }

    std::optional<Refusal> objection();
    std::optional<Refusal> missingRights();
    void letStateFollowTerm();
    std::optional<Refusal> repeatedCode();
    std::optional<Refusal> takenCode();
    std::optional<bool> isTaken(const QString& code);

    bool write();
    ColumnValues columns() const;
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
    const QString m_code; ///< under which the card is written
};

bool CardSaving::run()
{
    const auto refusal = objection();
    if (!refusal) return write();
    tell(m_session.prompt, *refusal, [this](int field) { m_view.focusField(field); });
    return false;
}

std::optional<Refusal> CardSaving::objection()
{
    if (auto refusal = missingReader(m_card)) return refusal;
    if (isBlank(m_card.rules.loanCopies)) {
        m_card.rules.loanCopies = u"0"_s;
        m_view.showQuota(m_card.rules.loanCopies);
    }
    if (auto refusal = missingTypeOrUnit(m_card, m_view.hasUnits())) return refusal;
    if (auto refusal = wrongDates(m_card)) return refusal;
    letStateFollowTerm();
    if (auto refusal = wrongNumbers(m_card.rules)) return refusal;
    if (auto refusal = repeatedCode()) return refusal;
    if (auto refusal = missingRights()) return refusal;
    return takenCode();
}

std::optional<Refusal> CardSaving::missingRights()
{
    auto refusal = missingLimits(m_card.rules);
    if (refusal) m_view.showParameters();
    return refusal;
}

/// The term is compared as it was typed: 2004-3-7 sorts after 2004-03-07, and the term of a new card is
/// written that way.
void CardSaving::letStateFollowTerm()
{
    const bool isOver = m_card.term < m_today;
    if (!sameText(m_card.status, isOver ? u"有效"_s : u"超期"_s)) return;
    m_card.status = isOver ? u"超期"_s : u"有效"_s;
    m_view.showStatus(m_card.status);
}

/// The first of two tests: it takes the code as it was typed, the second one without blanks around it.
std::optional<Refusal> CardSaving::repeatedCode()
{
    if (!m_edit.mode.isAdd()) return {};
    const auto taken = isTaken(m_card.code);
    if (!taken) return Refusal {};
    if (!*taken) return {};
    return Refusal {
        .text = u"读者号重复"_s, .title = QString(), .icon = Icon::Warning, .box = CardField::Code};
}

std::optional<Refusal> CardSaving::takenCode()
{
    if (keepsCode() || (m_edit.takesNewCode && sameText(m_code, m_edit.storedCode))) return {};
    const auto taken = isTaken(m_code);
    if (!taken) return Refusal {};
    if (!*taken) return {};
    return Refusal {.text = u"该读者证号已经存在，请重新输入！"_s, .box = CardField::Code};
}

/// Nullopt when that could not be found out, which is reported: no second card is written on a guess.
std::optional<bool> CardSaving::isTaken(const QString& code)
{
    ResumingWork work(m_session);
    if (!work) return {};
    const QString select = u"select readercode from dzk where readercode='%1'"_s.arg(doubled(code));
    const auto taken = m_session.error.attempt([&] { return !work.connection().open(select).eof(); });
    if (!taken) tellFailure();
    return taken;
}

bool CardSaving::write()
{
    ResumingWork work(m_session);
    if (!work) return false;
    if (m_edit.takesNewCode) {
        m_session.error.attempt([&] { carryCode(work.connection()); });
    } else {
        work.send(m_edit.mode.isAdd() ? insertOfCard() : updateOfCard(m_code));
        // The papers are written even if the card was not, but another desk is waited for only once.
        if (m_session.error.number() != ErrorNumber::InUse)
            m_session.error.attempt([&] { writePapers(work.connection(), m_code); });
    }
    work.release();
    return !work.failed() || tellFailure();
}

/// What a card writes, the same for a new one and for a change.
ColumnValues CardSaving::columns() const
{
    ColumnValues columns {{u"readercode"_s, quoted(m_code)}, {u"name"_s, quoted(m_card.name)},
        {u"sex"_s, quoted(m_card.sex)}, {u"readerclass"_s, quoted(m_card.type)},
        {u"readunit"_s, quoted(m_card.unit)}, {u"bookcount"_s, bareNumber(m_card.rules.loanCopies)},
        {u"orderbook"_s, bareNumber(m_card.onLoan)}, {u"paperdate"_s, quotedDay(m_card.issued)},
        {u"term"_s, quotedDay(m_card.term)}, {u"readstatus"_s, quoted(m_card.status)},
        {u"photo"_s, quoted(m_card.photo)}, {u"memo"_s, quoted(m_card.memo)}};
    for (auto& rule : ruleValues(m_card.rules))
        if (rule.first != u"bookcount") columns.push_back(std::move(rule));
    return columns;
}

QString CardSaving::insertOfCard() const
{
    return u"insert into dzk("_s + namesAndValues(columns(), u") Values(") + u')';
}

QString CardSaving::updateOfCard(const QString& code) const
{
    return u"update dzk set "_s + assignments(columns()) + u" where readercode="_s + quoted(code);
}

/// The papers found under `code` go on under the card's code; a row may be left from an earlier card.
void CardSaving::writePapers(Connection& conn, const QString& code)
{
    const ReaderPapers& papers = m_card.papers;
    const QString old = doubled(code);
    if (conn.open(u"select readercode from dzkx where readercode='%1'"_s.arg(old)).eof()) {
        conn.execute(
            u"insert  into  dzkx  (readercode,email,zhenghaolx,zhenghao,dizhi) values ('%1','%2','%3','%4','%5')"_s
                .arg(doubled(m_code), doubled(papers.email), doubled(papers.kind), doubled(papers.number),
                    doubled(papers.address)));
        return;
    }
    const QString newCode = m_edit.takesNewCode ? u"readercode='%1',"_s.arg(doubled(m_code)) : QString();
    conn.execute(
        u"update dzkx  set %1email='%2',zhenghaolx='%3',zhenghao='%4',dizhi='%5'  where readercode='%6'"_s
            .arg(newCode, doubled(papers.email), doubled(papers.kind), doubled(papers.number),
                doubled(papers.address), old));
}

void CardSaving::carryCode(Connection& conn)
{
    const QString old = m_edit.storedCode;
    conn.begin(OnFailure::EndTransaction);
    conn.execute(updateOfCard(old));
    writePapers(conn, old);
    // The register of lost books is left out on purpose: an open entry stays under the code it was reported
    // with.
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
