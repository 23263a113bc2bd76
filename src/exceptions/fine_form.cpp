#include "exceptions/fine_form.h"

#include "platform/db/decimal.h"
#include "platform/ui/form/form.h"
#include "platform/ui/grid/list_screen.h"
#include "platform/ui/look/theme.h"

namespace quilla {

namespace {

const QString LoanFormat = u"条 形 码|书    名|借阅日期|应还日期"_s;
const QString FineFormat = u"条 形 码|书    名|罚款原因|罚款金额|罚款日期"_s;
constexpr int AmountColumn = 3; ///< of the fines
const std::vector<int> LoanWidths {1500, 4200, 1400, 1400};
const std::vector<int> FineWidths {1500, 3200, 1200, 1200, 1400};

} // namespace

FKmangerFrm::FKmangerFrm(Session& session, const QString& entryMode, QWidget* parent)
    : QDialog(parent)
    , m_fines(session, *this, entryMode)
{
    setObjectName(u"FKmangerFrm"_s);
    setWindowTitle(u"罚款管理"_s);
    QUILLA_NAMES(Text1, Check1, SSTab1, lXinXi, lSum, lHint, Grid1, Command1);
    setCaptions(Check1, {u"超期"_s, u"污损"_s, u"丢失"_s});
    setCaptions(Command1, {u"&A 保存增加"_s, u"&S  保存"_s, u"&X  关闭"_s});
    lHint.setWordWrap(true);
    setTone(lHint, Tone::Warning);
    layOut();
    wire();
    Grid1[0].setUp(2, LoanFormat, LoanWidths);
    Grid1[1].setUp(2, FineFormat, FineWidths);
    Check1[int(FineKind::Overdue)].setEnabled(false);
    for (const FineKind kind : FineKinds)
        Text1[FineBox::due(kind)].setEnabled(false);
    for (int index = FineBox::ReaderCode; index <= FineBox::Title; ++index)
        Text1[index].setEnabled(entryMode != u"E");
    if (entryMode == u"E") Command1[1].setFocus(); // a key meant for the desk must not tick a kind
    showSum();
}

Piece FKmangerFrm::pageOf(FineKind kind, const QString& caption)
{
    QLabel& working = lXinXi[int(kind)];
    working.setTextFormat(Qt::PlainText);
    return column(
        fields(2,
            {{u"应罚金额："_s, Text1[FineBox::due(kind)]}, {u"实罚金额："_s, Text1[FineBox::taken(kind)]}}),
        fields(1, {{u"备\u3000\u3000注："_s, Text1[FineBox::remark(kind)]}}),
        row(caption, working, stretch()), stretch());
}

void FKmangerFrm::layOut()
{
    const Piece overdue = pageOf(FineKind::Overdue, u"罚款信息：超期参数(元/天)*超期天数"_s);
    const Piece defile = pageOf(FineKind::Defile, u"罚款信息：价格*污损倍数"_s);
    const Piece lost = pageOf(FineKind::Lost, u"罚款信息：价格*丢失倍数"_s);
    build(*this,
        column(
            fields(2,
                {{u"读者证号："_s, Text1[FineBox::ReaderCode]}, {u"读者姓名："_s, Text1[FineBox::ReaderName]},
                    {u"条 形 码："_s, Text1[FineBox::Barcode]}, {u"图 书 名："_s, Text1[FineBox::Title]}}),
            row(u"罚款类别："_s, Check1[0], room(16), Check1[1], room(16), Check1[2], stretch()),
            tabs(SSTab1,
                {{u"超期罚款"_s, overdue}, {u"污损罚款"_s, defile}, {u"丢失罚款"_s, lost},
                    {u"借阅明细"_s, Piece(Grid1[0]).grow()}, {u"罚款明细"_s, Piece(Grid1[1]).grow()}})
                .grow(),
            row(lSum, room(16), Piece(lHint).grow(), Command1[0], Command1[1], Command1[2])));
    resize(pixelsOf(9600, *this), pixelsOf(5400, *this));
}

void FKmangerFrm::wire()
{
    enterAsTab(allOf(Text1));
    for (int index = 0; index < FineBox::Count; ++index)
        onLeave(Text1[index], [this, index] { m_fines.lookup.Text1_LostFocus(index); });
    for (int index = FineBox::ReaderCode; index <= FineBox::Title; ++index)
        connect(&Text1[index], &QLineEdit::textChanged, this, [this] { m_fines.identityChanged(); });
    for (const FineKind kind : FineKinds) {
        QCheckBox& box = Check1[int(kind)];
        // the look-up of a box just left comes before the tick, which it would clear
        connect(&box, &QCheckBox::pressed, &box, [&box] { ControlKeys::runWaitingLeaves(box); });
        connect(&box, &QCheckBox::toggled, this, [this, kind] {
            m_fines.kindChanged(kind);
            showSum();
        });
        onClick(box, [this, kind] {
            if (isTicked(kind)) SSTab1.setCurrentIndex(int(kind));
        });
    }
    for (const FineKind kind : FineKinds)
        connect(&Text1[FineBox::taken(kind)], &QLineEdit::textChanged, this, [this] { showSum(); });
    connect(&Text1[FineBox::Barcode], &QLineEdit::textChanged, this, [this] { showSum(); });
    onClick(Command1[0], [this] { m_fines.save(0); });
    onClick(Command1[1], [this] { m_fines.save(1); });
    onClick(Command1[2], [this] { reject(); });
}

/// What the reader pays in all. A copy on its due date has no kind of its own, and the desk hands it over
/// even so: then a sentence says what can be done.
void FKmangerFrm::showSum()
{
    Decimal sum;
    bool anyKind = false;
    for (const FineKind kind : FineKinds) {
        anyKind = anyKind || isTicked(kind);
        if (isTicked(kind)) sum = sum + Decimal::read(box(FineBox::taken(kind))).value_or(Decimal());
    }
    lSum.setText(u"合计："_s + sum.fixed(2));
    const bool bookWithoutKind = !anyKind && !box(FineBox::Barcode).isEmpty();
    lHint.setText(bookWithoutKind
            ? u"此书没有超期罚款，不能直接保存；如有污损或丢失，请先勾选罚款类别，否则请关闭本窗口。"_s
            : QString());
}

QString FKmangerFrm::box(int index) const
{
    return Text1[index].text();
}

void FKmangerFrm::setBox(int index, const QString& text)
{
    Text1[index].setText(text);
}

/// A box on a page that does not show could not take the focus.
void FKmangerFrm::focusBox(int index)
{
    if (index >= FineBox::FirstOfKinds) SSTab1.setCurrentIndex((index - FineBox::FirstOfKinds) / 3);
    Text1[index].setFocus();
}

bool FKmangerFrm::isTicked(FineKind kind) const
{
    return Check1[int(kind)].isChecked();
}

void FKmangerFrm::setTicked(FineKind kind, bool ticked)
{
    Check1[int(kind)].setChecked(ticked);
}

void FKmangerFrm::setTickable(FineKind kind, bool tickable)
{
    Check1[int(kind)].setEnabled(tickable);
}

void FKmangerFrm::focusKind(FineKind kind)
{
    Check1[int(kind)].setFocus();
}

void FKmangerFrm::setWorking(FineKind kind, const QString& text)
{
    lXinXi[int(kind)].setText(text);
}

void FKmangerFrm::showLoans(Recordset& loans)
{
    fillGrid(Grid1[0], loans, {.format = LoanFormat, .widths = LoanWidths});
}

void FKmangerFrm::showFines(Recordset& fines)
{
    fillGrid(Grid1[1], fines, {.format = FineFormat, .money = {AmountColumn}, .widths = FineWidths});
}

void FKmangerFrm::closeScreen()
{
    accept();
}

} // namespace quilla
