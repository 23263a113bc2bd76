#include "desk/reader_picker_form.h"

#include "platform/ui/form/form.h"
#include "platform/ui/grid/list_screen.h"
#include "platform/ui/look/theme.h"

#include <QKeyEvent>

namespace quilla {

namespace {

enum PickerColumn { NameColumn, CodeColumn };

const QString ReaderFormat = u"^读者姓名|^借书证号"_s;
const std::vector<int> ReaderWidths {1650, 1650};

} // namespace

ReaderPickerFrm::ReaderPickerFrm(Session& session, ReaderPicker picker, QWidget* parent)
    : QDialog(parent)
    , Command1(u"查询( &F )"_s)
    , Frame1(u"读者详细资料"_s)
    , m_memo(u"备注："_s)
    , m_session(session)
    , m_picker(std::move(picker))
{
    setObjectName(m_picker.name);
    setWindowTitle(m_picker.title);
    QUILLA_NAMES(Text1, Command1, labNotExists, Grid1, Frame1, Image1, Text2, Command2);
    setCaptions(Command2, {u"选定此读者( &D )"_s, u"取消退出( &Q )"_s});
    layOut();
    wire();
    search();
    Text1.selectAll(); // the first name stands there; what is typed takes its place
}

void ReaderPickerFrm::layOut()
{
    using namespace ReaderDetail;
    QPalette readOnly = palette();
    readOnly.setColor(QPalette::Base, Theme::current().window);
    for (TextBox& box : Text2) {
        box.setReadOnly(true);
        box.setPalette(readOnly);
        box.setFocusPolicy(Qt::ClickFocus); // to copy from; the keys go from the list to the buttons
    }
    labNotExists.setTextFormat(Qt::PlainText);
    labNotExists.setWordWrap(true);
    setTone(labNotExists, Tone::Warning);
    labNotExists.hide();
    const Piece card = fields(2,
        {{u"姓名："_s, Text2[Name]}, {u"性别："_s, Text2[Sex]}, {u"借书证号："_s, Text2[Code]},
            {u"出生年月："_s, Text2[Birthday]}, {u"读者类型："_s, Text2[Class]},
            {u"有效状态："_s, Text2[Status]}, {u"办证日期："_s, Text2[Issued]},
            {u"有效期限："_s, Text2[Term]}, {u"可借册数："_s, Text2[Quota]}, {u"已借册数："_s, Text2[OnLoan]},
            {u"预借册数："_s, Text2[Reserved]}, {u"读者单位："_s, Text2[Unit]},
            {u"证件类型："_s, Text2[PaperKind]}, {u"证件号码："_s, Text2[PaperNumber]},
            {u"家庭住址："_s, Text2[Address]}, {u"Email："_s, Text2[Email]}});
    const Piece list
        = column(row(u"输入姓名："_s, Piece(Text1).grow(), Command1), labNotExists, Piece(Grid1).grow());
    m_memo.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_memo.setMinimumWidth(m_memo.fontMetrics().horizontalAdvance(u"借书证号："_s));
    const Piece details
        = column(row(card.grow(), column(Image1, stretch())), fields(1, {{m_memo, Text2[Memo]}}), stretch());
    build(*this,
        column(row(list.grow(3), group(Frame1, details).grow(7)).grow(),
            row(stretch(), Command2[0], Command2[1])));
    Grid1.setAccessibleName(u"读者"_s);
    resize(pixelsOf(12900, *this), pixelsOf(6300, *this));
}

void ReaderPickerFrm::wire()
{
    enterAsTab({Text1});
    connect(&Text1, &QLineEdit::textChanged, this, [this] { m_shownLine = 0; });
    onClick(Command1, [this] {
        search();
        Grid1.setFocus();
    });
    onRow(Grid1, [this](int row) { showLine(row); });
    connect(&Grid1, &FlexGrid::rowClicked, this, &ReaderPickerFrm::clickLine);
    Command2[0].setEnabled(false); // until a reader is shown
    onClick(Command2[0], [this] { takeReader(); });
    onClick(Command2[1], [this] { reject(); });
    Grid1.installEventFilter(this);
    Grid1.viewport()->installEventFilter(this);
}

void ReaderPickerFrm::search()
{
    const QString part = Text1.text();
    labNotExists.hide();
    m_shownLine = 0;
    auto readers = findReaders(m_session, m_picker, part);
    if (!readers) return;
    if (readers->eof()) return showNobody(part);
    fillGrid(Grid1, *readers, {.format = ReaderFormat, .widths = ReaderWidths});
    Command2[0].setEnabled(true);
    showLine(1);
}

void ReaderPickerFrm::showNobody(const QString& part)
{
    Grid1.setUp(2, ReaderFormat, ReaderWidths);
    labNotExists.setText(part + m_picker.notice);
    labNotExists.show();
    Command2[0].setEnabled(false);
    clearDetails();
}

/// A click on the line whose reader is shown asks anew.
void ReaderPickerFrm::clickLine(int row)
{
    if (row == m_lineAtPress) m_shownLine = 0;
    showLine(row);
}

/// A click on another line and the move to it are one step.
void ReaderPickerFrm::showLine(int row)
{
    const QString code = Grid1.TextMatrix(row, CodeColumn);
    if (code.isEmpty() || row == m_shownLine) return;
    Text1.setText(Grid1.TextMatrix(row, NameColumn));
    m_shownLine = row;
    Command2[0].setEnabled(true);
    showDetails(code);
    labNotExists.hide();
}

void ReaderPickerFrm::showDetails(const QString& readercode)
{
    clearDetails();
    const auto details = readReaderDetails(m_session, readercode);
    if (!details) return;
    for (std::size_t index = 0; index < details->texts.size(); ++index) {
        Text2[index].setText(details->texts[index]);
        Text2[index].setCursorPosition(0); // of a long text the beginning shows
    }
    Image1.showFile(details->photo);
}

void ReaderPickerFrm::clearDetails()
{
    for (TextBox& box : Text2)
        box.clear();
    Image1.showFile({});
}

/// The name typed and the details shown must be those of one line; of two readers of the same name it is
/// the one whose details are shown.
void ReaderPickerFrm::takeReader()
{
    PickedFlag.clear();
    PickedCode.clear();
    const QString name = trimBlanks(Text1.text());
    const QString code = Text2[ReaderDetail::Code].text();
    for (int row = 1; row < Grid1.Rows() && PickedFlag.isEmpty(); ++row) {
        if (!sameText(Grid1.TextMatrix(row, NameColumn), name)) continue;
        if (!sameText(Grid1.TextMatrix(row, CodeColumn), code)) continue;
        PickedCode = Grid1.TextMatrix(row, CodeColumn);
        PickedFlag = u"yes"_s;
    }
    if (!PickedCode.isEmpty()) return accept();
    m_shownLine = 0;
    Command2[0].setEnabled(false);
}

void ReaderPickerFrm::reject()
{
    PickedCode.clear();
    PickedFlag.clear();
    QDialog::reject();
}

bool ReaderPickerFrm::eventFilter(QObject* watched, QEvent* event)
{
    const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (key) {
        const int code = static_cast<QKeyEvent*>(event)->key();
        if (code == Qt::Key_Up || code == Qt::Key_Down) markMove(event->type() == QEvent::KeyPress);
    } else if (event->type() == QEvent::MouseButtonPress) {
        m_lineAtPress = Grid1.Row();
    } else if (event->type() == QEvent::FocusOut) {
        markMove(false);
    }
    return QDialog::eventFilter(watched, event);
}

/// While an arrow key is down the line is marked in another colour.
void ReaderPickerFrm::markMove(bool moving)
{
    QPalette colours;
    if (moving) {
        const Theme& theme = Theme::current();
        colours.setColor(QPalette::Active, QPalette::Highlight, theme.restingSelection);
        colours.setColor(QPalette::Active, QPalette::HighlightedText, theme.text);
    }
    Grid1.setPalette(colours);
}

} // namespace quilla
