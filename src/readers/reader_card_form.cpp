#include "readers/reader_card_form.h"

#include "frame/sublib.h"
#include "platform/ui/form/error_form.h"
#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

#include <QFileDialog>
#include <QKeyEvent>
#include <QLayout>
#include <QScreen>

namespace quilla {

namespace {

constexpr int ScreenWidth = 10200; // twips, as the heights
constexpr int HeightWithParameters = 6960;
constexpr int HeightWithout = 4425;

const QString PhotoFilter
    = u"Bitmaps|*.BMP|GIF Images|*.GIF|JPEG Images|*.JPG|All Pictures|*.BMP;*.GIF;*.JPG"_s;
const QStringList PhotoEntries {u"选择照片"_s, u"取消照片"_s};

/// A file filter as Qt's dialog takes it.
QString dialogFilter(const QString& filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList kinds;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        kinds.append(u"%1 (%2)"_s.arg(parts[i], QString(parts[i + 1]).replace(u';', u' ')));
    return kinds.join(u";;"_s);
}

QString askForPhoto(QWidget* parent, const QString& filter)
{
    return QFileDialog::getOpenFileName(parent, PhotoEntries[0], {}, dialogFilter(filter));
}

/// A list that also takes any text. Only what the operator picks in it counts as a choice: a text typed to
/// the end, though it be one of the list, does not.
void takeAnyText(QComboBox& list)
{
    list.setEditable(true);
    list.setInsertPolicy(QComboBox::NoInsert);
    list.setCompleter(nullptr);
    keepPlain(*list.lineEdit());
    list.setMinimumContentsLength(6);
    list.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    QObject::disconnect(list.lineEdit(), &QLineEdit::editingFinished, &list, nullptr);
}

/// What is stored may be longer than what may be typed, and is not cut.
void setStored(TextBox& box, int limit, const QString& text)
{
    box.setMaxLength(std::max(limit, int(text.size())));
    box.setText(text);
}

/// To read and to copy from; the keys pass it by.
void makeReadOnly(TextBox& box)
{
    QPalette colours = box.palette();
    colours.setColor(QPalette::Base, Theme().window);
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
    , m_choosePhoto(askForPhoto)
{
    setObjectName(u"DzaddFrm"_s);
    QUILLA_NAMES(
        Text1, Combo1, Combo2, Text2, ManPic, Frame2, Check1, cmdUpdateZheng, cmdXianShi, CmdSave, CmdQuit);
    Text1[CardBox::Memo].setObjectName({});
    Memo.setObjectName(u"Text1(6)"_s);
    setCaptions(Check1, {u"有过期书刊时还可以借书"_s, u"可以无证借书"_s});
    LoadCombo();
    layOut();
    wire();
    setParametersShown(false);
}

void DzaddFrm::LoadCombo()
{
    for (QComboBox& list : Combo1)
        takeAnyText(list);
    takeAnyText(Combo2);
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
    if (const auto choices = cardChoices(m_session, list)) box.addItems(*choices);
    box.setCurrentIndex(-1);
    box.setEditText(text);
}

void DzaddFrm::layOut()
{
    using namespace CardBox;
    for (const int box : {OnLoan, ArtsOnLoan, ScienceOnLoan, Reserved, Type})
        makeReadOnly(Text1[box]);
    Text1[Name].setMaxLength(ReaderNameLimit);
    Memo.setMaxLength(ReaderMemoLimit);
    ManPic.setHint(PhotoEntries[0]);
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
    const Piece parameters = fields(3,
        {{u"读者类型"_s, Text1[Type]}, {u"可借天数(天)"_s, Text1[LoanDays]},
            {u"可借册数(册)"_s, Text1[LoanCopies]}, {u"超期罚款(元/天)"_s, Text1[OverdueFine]},
            {u"污损罚款(倍)"_s, Text1[DefileFine]}, {u"丢失罚款(倍)"_s, Text1[LostFine]},
            {u"可续借次数(次)"_s, Text1[Renewals]}, {u"可续借天数(天)"_s, Text1[RenewalDays]},
            {u""_s, Check1[CardCheck::MayHoldOverdue]}, {u"可预借天数(天)"_s, Text1[HoldDays]},
            {u"可预借册数(册)"_s, Text1[HoldCopies]}, {u""_s, Check1[CardCheck::NeedsNoCard]},
            {u"文艺类可借册数(册)"_s, Text1[ArtsCopies]}, {u"理科类可借册数(册)"_s, Text1[ScienceCopies]}});
    build(*this,
        column(row(column(card, fields(1, {{m_memo, Memo}}), counts).grow(), column(ManPic, stretch())),
            group(Frame2, parameters), stretch(), row(cmdXianShi, stretch(), CmdSave, CmdQuit)));
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
    connect(&ManPic, &PhotoBox::doubleClicked, this, &DzaddFrm::choosePhoto);
    ManPic.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&ManPic, &QWidget::customContextMenuRequested, this, &DzaddFrm::offerPhotoMenu);
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
    m_edit.previousCode.clear();
    cmdUpdateZheng.setVisible(m_edit.mode.isEdit());
    cmdUpdateZheng.setEnabled(true);
    Text1[CardBox::ReaderCode].setEnabled(isNew);
    Combo1[CardList::Type].setEnabled(isNew);
    setWindowTitle(isNew ? u"新增读者信息"_s : u"修改读者信息"_s);
    for (TextBox& box : Text2)
        box.clear();
    showCard(isNew ? newCard(m_session) : ReaderCard());
    if (!isNew) showStored(readCard(m_session, readercode));
    Text1[isNew ? CardBox::ReaderCode : CardBox::Name].setFocus();
}

/// What is not known must not be written over: without it there is no saving.
void DzaddFrm::showStored(const std::optional<LoadedCard>& stored)
{
    if (stored) showCard(stored->card);
    if (stored && stored->papers) return showPapers(*stored->papers);
    CmdSave.setEnabled(false);
}

void DzaddFrm::showCard(const ReaderCard& card)
{
    for (int box = 0; box < CardBox::Count; ++box)
        setBox(box, card.boxes[box]);
    for (int list = 0; list < CardList::Count; ++list)
        setList(list, card.lists[list]);
    for (int check = 0; check < CardCheck::Count; ++check)
        Check1[check].setChecked(card.checks[check]);
    showPhoto(card.photo);
}

void DzaddFrm::showPapers(const ReaderPapers& papers)
{
    Combo2.setEditText(papers.kind);
    for (int detail = 0; detail < CardDetail::Count; ++detail) {
        Text2[detail].setText(papers.texts[detail]);
        Text2[detail].setCursorPosition(0);
    }
}

ReaderCard DzaddFrm::shownCard() const
{
    ReaderCard card;
    for (int box = 0; box < CardBox::Count; ++box)
        card.boxes[box] = Text1[box].text();
    card.boxes[CardBox::Memo] = Memo.text();
    for (int list = 0; list < CardList::Count; ++list)
        card.lists[list] = Combo1[list].currentText();
    for (int check = 0; check < CardCheck::Count; ++check)
        card.checks[check] = Check1[check].isChecked();
    card.photo = ManPic.toolTip();
    card.papers.kind = Combo2.currentText();
    for (int detail = 0; detail < CardDetail::Count; ++detail)
        card.papers.texts[detail] = Text2[detail].text();
    return card;
}

bool DzaddFrm::hasChoices(int list) const
{
    return Combo1[list].count() > 0;
}

void DzaddFrm::setBox(int box, const QString& text)
{
    if (box == CardBox::Memo) return Memo.setText(text);
    if (box == CardBox::Name) return setStored(Text1[box], ReaderNameLimit, text);
    Text1[box].setText(text);
}

void DzaddFrm::setList(int list, const QString& text)
{
    Combo1[list].setCurrentIndex(Combo1[list].findText(text));
    Combo1[list].setEditText(text);
}

void DzaddFrm::focusBox(int box)
{
    if (Frame2.isAncestorOf(&Text1[box])) setParametersShown(true);
    Text1[box].setEnabled(true);
    Text1[box].setFocus();
}

void DzaddFrm::focusList(int list)
{
    Combo1[list].setFocus();
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
    ReaderCard card = shownCard();
    if (type.isEmpty() || !takeParameters(m_session, type, card)) return;
    for (const int box : parameterBoxes())
        setBox(box, card.boxes[box]);
    for (int check = 0; check < CardCheck::Count; ++check)
        Check1[check].setChecked(card.checks[check]);
}

void DzaddFrm::startCodeChange()
{
    TextBox& code = Text1[CardBox::ReaderCode];
    cmdUpdateZheng.setEnabled(false);
    code.setEnabled(true);
    code.setFocus();
    m_edit.previousCode = code.text().trimmed();
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

/// Half a card does not go by a key that has no step here.
void DzaddFrm::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) QDialog::keyPressEvent(event);
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
    if (isVisible()) keepOnScreen();
}

/// The screen grows downwards, and its buttons with it.
void DzaddFrm::keepOnScreen()
{
    const QRect room = screen()->availableGeometry();
    const int below = frameGeometry().bottom() - room.bottom();
    if (below > 0) move(x(), std::max(y() - below, room.top()));
}

void DzaddFrm::offerPhotoMenu()
{
    const int entry = PhotoMenu.Popup(PhotoEntries);
    if (entry == 1) choosePhoto();
    if (entry == 2) showPhoto({});
}

void DzaddFrm::choosePhoto()
{
    const QString file = m_choosePhoto(this, PhotoFilter);
    if (!file.isEmpty()) showPhoto(file);
}

void DzaddFrm::showPhoto(const QString& file)
{
    ManPic.setToolTip(file);
    ManPic.showFile(file);
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
