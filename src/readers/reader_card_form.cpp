#include "readers/reader_card_form.h"

#include "frame/sublib.h"
#include "platform/ui/form/error_form.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/on_screen.h"
#include "platform/ui/form/open_list.h"
#include "platform/ui/form/small_screen.h"
#include "platform/ui/look/theme.h"
#include "readers/reader_card_checks_ops.h"

#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>

namespace quilla {

namespace {

constexpr int ScreenWidth = 10200; // twips, as the heights
constexpr int HeightWithParameters = 6960;
constexpr int HeightWithout = 4425;

/// Where the boxes of a card stand in its record; the remarks have a box of another kind.
constexpr struct {
    int box;
    QString ReaderCard::*text;
} Boxes[] {{CardBox::ReaderCode, &ReaderCard::code}, {CardBox::Name, &ReaderCard::name},
    {CardBox::OnLoan, &ReaderCard::onLoan}, {CardBox::Issued, &ReaderCard::issued},
    {CardBox::Term, &ReaderCard::term}, {CardBox::Type, &ReaderCard::type},
    {CardBox::ArtsOnLoan, &ReaderCard::artsOnLoan}, {CardBox::ScienceOnLoan, &ReaderCard::scienceOnLoan},
    {CardBox::Reserved, &ReaderCard::reserved}};

constexpr struct {
    int list;
    QString ReaderCard::*text;
    int limit;
} Lists[] {{CardList::Sex, &ReaderCard::sex, CardLimit::Sex},
    {CardList::Type, &ReaderCard::type, CardLimit::Type},
    {CardList::Unit, &ReaderCard::unit, CardLimit::Unit},
    {CardList::Status, &ReaderCard::status, CardLimit::Status}};

constexpr struct {
    int box;
    QString ReaderPapers::*text;
    int limit;
} Details[] {{CardDetail::Number, &ReaderPapers::number, CardLimit::PapersNumber},
    {CardDetail::Email, &ReaderPapers::email, CardLimit::Email},
    {CardDetail::Address, &ReaderPapers::address, CardLimit::Address}};

/// The boxes of the rules, in the order of `numberRules`.
constexpr int RuleBoxes[NumberRules] {CardBox::LoanDays, CardBox::LoanCopies, CardBox::OverdueFine,
    CardBox::DefileFine, CardBox::LostFine, CardBox::Renewals, CardBox::RenewalDays, CardBox::HoldDays,
    CardBox::HoldCopies, CardBox::ArtsCopies, CardBox::ScienceCopies};

/// The lists are no wider than their column of the form.
void openList(QComboBox& list, int limit)
{
    takeAnyText(list);
    list.lineEdit()->setMaxLength(limit);
    list.setMinimumContentsLength(6);
    list.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
}

/// What is stored may be longer than what may be typed, and is not cut.
void setStored(QLineEdit& box, int limit, const QString& text)
{
    box.setMaxLength(std::max(limit, int(text.size())));
    box.setText(text);
    box.setCursorPosition(0);
}

/// To read and to copy from; the keys pass it by.
void makeReadOnly(TextBox& box)
{
    QPalette colours = box.palette();
    colours.setColor(QPalette::Base, Theme::current().window);
    box.setPalette(colours);
    box.setReadOnly(true);
    box.setFocusPolicy(Qt::ClickFocus);
}

} // namespace

DzaddFrm::DzaddFrm(Session& session, std::function<void()> refreshList, QWidget* parent)
    : QDialog(parent)
    , Frame2(u"流通参数信息---(下面参数的修改只影响该读者)"_s)
    , cmdUpdateZheng(u"修改读者证"_s)
    , cmdXianShi(u"参 数(&C)"_s)
    , CmdSave(u"保 存(&S)"_s)
    , CmdQuit(u"退 出(&Q)"_s)
    , m_memo(u"备注"_s)
    , m_session(session)
    , m_refreshList(std::move(refreshList))
{
    setObjectName(u"DzaddFrm"_s);
    QUILLA_NAMES(
        Text1, Combo1, Combo2, Text2, ManPic, Frame2, Check1, cmdUpdateZheng, cmdXianShi, CmdSave, CmdQuit);
    Text1[CardBox::Memo].setObjectName({});
    Memo.setObjectName(u"Text1(6)"_s);
    LoadCombo();
    layOut();
    wire();
    setParametersShown(false);
}

void DzaddFrm::LoadCombo()
{
    for (const auto& list : Lists)
        openList(Combo1[list.list], list.limit);
    openList(Combo2, CardLimit::PapersKind);
    Combo2.addItems({u"身份证"_s, u"教师证"_s, u"学生证"_s, u"军官证"_s, u"驾驶证"_s, u"其它"_s});
    Combo1[CardList::Sex].addItems({u"男"_s, u"女"_s});
    Combo1[CardList::Status].addItems({u"有效"_s, u"超期"_s, u"挂失"_s, u"无效"_s});
    for (const int list : {CardList::Type, CardList::Unit})
        fillEmptyList(list);
    Combo1[CardList::Status].setCurrentIndex(-1);
}

/// Keeps the text.
void DzaddFrm::fillEmptyList(int list)
{
    QComboBox& box = Combo1[list];
    if (box.count() > 0) return;
    const QString text = box.currentText();
    const CardChoice choice = list == CardList::Type ? CardChoice::Type : CardChoice::Unit;
    if (const auto texts = cardChoices(m_session, choice)) box.addItems(*texts);
    box.setCurrentIndex(-1);
    box.setEditText(text);
}

void DzaddFrm::layOut()
{
    using namespace CardBox;
    for (const int box : {OnLoan, ArtsOnLoan, ScienceOnLoan, Reserved, Type})
        makeReadOnly(Text1[box]);
    Memo.setMaxLength(CardLimit::Memo);
    setTone(m_whyNotSaved, Tone::Warning);
    m_whyNotSaved.hide();
    m_memo.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_memo.setMinimumWidth(fontMetrics().horizontalAdvance(u"单位名称"_s)); // in line with the labels above
    const Piece card = fields(2,
        {{u"读者证号"_s, row(Piece(Text1[ReaderCode]).grow(), cmdUpdateZheng)}, {u"姓名"_s, Text1[Name]},
            {u"性别"_s, Combo1[CardList::Sex]}, {u"读者类型"_s, Combo1[CardList::Type]},
            {u"单位名称"_s, Combo1[CardList::Unit]}, {u"有效状态"_s, Combo1[CardList::Status]},
            {u"办证日期"_s, Text1[Issued]}, {u"有效期限"_s, Text1[Term]}, {u"证件类型"_s, Combo2},
            {u"证件号码"_s, Text2[CardDetail::Number]}, {u"Email"_s, Text2[CardDetail::Email]},
            {u"家庭住址"_s, Text2[CardDetail::Address]}});
    const Piece counts = fields(4,
        {{u"已借册数"_s, Text1[OnLoan]}, {u"已借(文)"_s, Text1[ArtsOnLoan]},
            {u"已借(理)"_s, Text1[ScienceOnLoan]}, {u"预借册数"_s, Text1[Reserved]}});
    std::vector<FormField> rules {{u"读者类型"_s, Text1[Type]}};
    int number = 0;
    int flag = 0;
    for (const auto& rule : circulationRules<QString>()) {
        const QString caption = rule.caption.toString();
        if (rule.kind != RuleKind::Flag) {
            rules.emplace_back(caption, Text1[RuleBoxes[number++]]);
            continue;
        }
        Check1[flag].setText(caption);
        rules.emplace_back(QString(), Check1[flag++]);
    }
    const Piece parameters = fields(4, rules);
    build(*this,
        column(row(column(card, fields(1, {{m_memo, Memo}}), counts).grow(), column(ManPic, stretch())),
            group(Frame2, parameters), stretch(), m_whyNotSaved,
            row(cmdXianShi, stretch(), CmdSave, CmdQuit)));
    saveHeight({this, &Frame2});
}

void DzaddFrm::wire()
{
    enterAsTab(allOf(Text1));
    enterAsTab(allOf(Text2));
    enterAsTab(allOf(Combo1));
    enterAsTab({Combo2});
    enterAsTab(allOf(Check1));
    onEnter(Text1[CardBox::Term], [this] { takeYears(); });
    for (TextBox& box : Text1)
        box.installEventFilter(this);
    Memo.installEventFilter(this);
    for (const int list : {CardList::Type, CardList::Unit})
        onFocus(Combo1[list], [this, list] { fillEmptyList(list); });
    connect(&Combo1[CardList::Type], &QComboBox::activated, this, &DzaddFrm::takeType);
    onClick(cmdUpdateZheng, [this] { startCodeChange(); });
    onClick(cmdXianShi, [this] { toggleParameters(); });
    onClick(CmdSave, [this] { save(); });
    onClick(CmdQuit, [this] { reject(); });
}

void DzaddFrm::SetEditMode(const QString& mode)
{
    m_edit.mode = EditorMode(mode);
    CmdSave.setEnabled(m_edit.mode.maySave());
}

void DzaddFrm::LoadReader(const QString& readercode)
{
    const bool isNew = readercode.isEmpty();
    m_edit.storedCode.clear();
    m_edit.takesNewCode = false;
    m_whyNotSaved.setText(u"这里只供查看。要修改，请打开“读者管理”。"_s);
    m_whyNotSaved.setVisible(!m_edit.mode.maySave());
    cmdUpdateZheng.setVisible(m_edit.mode.isEdit());
    cmdUpdateZheng.setEnabled(true);
    Text1[CardBox::ReaderCode].setEnabled(isNew);
    Combo1[CardList::Type].setEnabled(isNew);
    setWindowTitle(isNew ? u"新增读者信息"_s : u"修改读者信息"_s);
    showPapers({.kind = Combo2.currentText()});
    showCard(isNew ? newCard(m_session) : ReaderCard());
    if (!isNew) showStored(readCard(m_session, readercode));
    Text1[isNew ? CardBox::ReaderCode : CardBox::Name].setFocus();
}

/// What is not known must not be written over: without it there is no saving.
void DzaddFrm::showStored(const std::optional<LoadedCard>& stored)
{
    if (!stored) return barSaving(u"没有读到这个读者证，不能保存。请退出后刷新读者列表再试。"_s);
    m_edit.storedCode = stored->storedCode;
    showCard(stored->card);
    if (stored->papers) return showPapers(*stored->papers);
    barSaving(u"没有读到读者的证件资料，为免将其覆盖，不能保存。请退出后再试。"_s);
}

void DzaddFrm::barSaving(const QString& why)
{
    m_whyNotSaved.setText(why);
    m_whyNotSaved.show();
    CmdSave.setEnabled(false);
}

void DzaddFrm::showCard(const ReaderCard& card)
{
    for (const auto& [box, text] : Boxes)
        Text1[box].setText(card.*text);
    setStored(Text1[CardBox::Name], CardLimit::Name, card.name);
    Memo.setText(card.memo);
    for (const auto& list : Lists)
        setList(list.list, card.*list.text);
    showRules(card.rules);
    ManPic.setFile(card.photo);
}

void DzaddFrm::showRules(const RuleTexts& rules)
{
    const auto numbers = numberRules<QString>();
    for (std::size_t i = 0; i < numbers.size(); ++i)
        Text1[RuleBoxes[i]].setText(rules.*numbers[i].number);
    Check1[0].setChecked(rules.mayHoldOverdue);
    Check1[1].setChecked(rules.needsNoCard);
}

void DzaddFrm::showPapers(const ReaderPapers& papers)
{
    Combo2.setEditText(papers.kind);
    for (const auto& [box, text, limit] : Details)
        setStored(Text2[box], limit, papers.*text);
}

ReaderCard DzaddFrm::shownCard() const
{
    ReaderCard card;
    for (const auto& [box, text] : Boxes)
        card.*text = Text1[box].text();
    card.memo = Memo.text();
    for (const auto& list : Lists)
        card.*list.text = chosenOrTyped(Combo1[list.list]);
    const auto numbers = numberRules<QString>();
    for (std::size_t i = 0; i < numbers.size(); ++i)
        card.rules.*numbers[i].number = Text1[RuleBoxes[i]].text();
    card.rules.mayHoldOverdue = Check1[0].isChecked();
    card.rules.needsNoCard = Check1[1].isChecked();
    card.photo = ManPic.file();
    card.papers.kind = Combo2.currentText();
    for (const auto& [box, text, limit] : Details)
        card.papers.*text = Text2[box].text();
    return card;
}

bool DzaddFrm::hasUnits() const
{
    return Combo1[CardList::Unit].count() > 0;
}

void DzaddFrm::showQuota(const QString& text)
{
    Text1[CardBox::LoanCopies].setText(text);
}

void DzaddFrm::showStatus(const QString& text)
{
    setList(CardList::Status, text);
}

void DzaddFrm::setList(int list, const QString& text)
{
    QComboBox& box = Combo1[list];
    box.setCurrentIndex(box.findText(text));
    const int limit = std::ranges::find(Lists, list, [](const auto& each) { return each.list; })->limit;
    setStored(*box.lineEdit(), limit, text);
}

void DzaddFrm::focusField(int field)
{
    if (field == CardField::Unit) return Combo1[CardList::Unit].setFocus();
    const bool isRule = field >= CardField::FirstRule;
    if (isRule) setParametersShown(true);
    constexpr int boxes[] {CardBox::ReaderCode, CardBox::Name, -1, CardBox::Issued, CardBox::Term};
    TextBox& box = Text1[isRule ? RuleBoxes[field - CardField::FirstRule] : boxes[field]];
    box.setEnabled(true);
    box.setFocus();
}

void DzaddFrm::showParameters()
{
    setParametersShown(true);
}

void DzaddFrm::tellFailure(const QString& headline, const QString& detail)
{
    ShowOperationFailure(this, headline, detail);
}

/// Picked in the list; what was typed into the parameters gives way.
void DzaddFrm::takeType()
{
    const QString type = Combo1[CardList::Type].currentText();
    if (type.isEmpty()) return;
    const auto rules = rulesOfType(m_session, type);
    if (!rules) return;
    showRules(*rules);
    Text1[CardBox::Type].setText(type);
}

void DzaddFrm::startCodeChange()
{
    cmdUpdateZheng.setEnabled(false);
    Text1[CardBox::ReaderCode].setEnabled(true);
    Text1[CardBox::ReaderCode].setFocus();
    m_edit.takesNewCode = true;
}

void DzaddFrm::takeYears()
{
    TextBox& term = Text1[CardBox::Term];
    if (const auto day = termOfYears(m_session, term.text(), Text1[CardBox::Issued].text()))
        term.setText(*day);
}

void DzaddFrm::writeToday(TextBox& box)
{
    box.setText(isoDate(GetServerDate(m_session)));
}

bool DzaddFrm::eventFilter(QObject* watched, QEvent* event)
{
    const bool down
        = event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down;
    if (!down) return QDialog::eventFilter(watched, event);
    if (watched == &Memo) {
        Memo.selectAll();
        return true;
    }
    auto& box = static_cast<TextBox&>(*watched);
    if (&box == &Text1[CardBox::Issued] || &box == &Text1[CardBox::Term]) writeToday(box);
    box.selectAll();
    return true;
}

void DzaddFrm::toggleParameters()
{
    const bool show = Frame2.isHidden();
    setParametersShown(show);
    if (show) Text1[CardBox::LoanDays].setFocus();
}

void DzaddFrm::setParametersShown(bool shown)
{
    Frame2.setVisible(shown);
    layout()->activate();
    const int height = pixelsOf(shown ? HeightWithParameters : HeightWithout, *this);
    const QSize least = layout()->totalMinimumSize();
    resize(
        std::max({width(), pixelsOf(ScreenWidth, *this), least.width()}), std::max(height, least.height()));
    if (isVisible()) keepOnScreen(*this);
}

void DzaddFrm::save()
{
    if (!saveCard(m_session, m_edit, *this)) return;
    if (m_edit.mode.isEdit()) return accept();
    if (m_refreshList) m_refreshList();
    for (const int box : {CardBox::ReaderCode, CardBox::Name})
        Text1[box].clear();
    Text1[CardBox::ReaderCode].setFocus();
}

} // namespace quilla
