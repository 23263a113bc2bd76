#include "statistics/query_form.h"

#include "platform/core/prompt.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/look/theme.h"

#include <QKeyEvent>

namespace quilla {

namespace {

enum Button { MergeButton, OkButton, CloseButton };

} // namespace

QueryFrm::QueryFrm(Prompt& prompt, QueryReceiver& caller, QWidget* parent)
    : QDialog(parent)
    , lSql(QString())
    , Command2(u"&C  清除"_s)
    , Command3(u"&A加入"_s)
    , m_prompt(prompt)
    , m_caller(caller)
{
    setObjectName(u"QueryFrm"_s);
    setWindowTitle(u"统计条件"_s);
    QUILLA_NAMES(LFields, cSql, cFuhao, lSql, signSql, totalSql, cOrderby, lOrderby, Label2, Label3, Command1,
        Command2, Command3);
    setCaptions(Label2, {u"查找项目"_s, u"查找条件"_s, u"查找关系"_s});
    setCaptions(Label3, {u"升序"_s, u"降序"_s});
    setCaptions(Command1, {u"&U 条件合并"_s, u"&O  确定"_s, u"&X  关闭"_s});
    layOut();
    wire();
}

void QueryFrm::layOut()
{
    const int line = fontMetrics().height();
    for (QTextEdit* text : {&signSql, &lOrderby}) {
        text->setReadOnly(true);
        text->setMinimumHeight(2 * line);
        text->setMaximumHeight(3 * line);
        text->installEventFilter(this);
    }
    LFields.setMinimumWidth(7 * line);
    totalSql.setMinimumHeight(2 * line);
    cSql.setMinimumWidth(6 * line);
    lSql.setMinimumWidth(8 * line);
    nameInputs();
    const Piece entry = row(column(u"项目"_s, cSql), column(Label2[2], cFuhao),
        column(Label2[1], row(Piece(lSql).grow(), Command3)).grow());
    const Piece conditions = column(entry, u"当前条件"_s, signSql, row(stretch(), Command1[MergeButton]),
        u"已合并条件"_s, Piece(totalSql).grow());
    const Piece order = column(row(Piece(cOrderby).grow(), Label3[0], Label3[1]), lOrderby);
    const Piece work = column(group(u"条件"_s, conditions).grow(), group(u"排序"_s, order));
    build(*this,
        column(row(column(Label2[0], Piece(LFields).grow()).grow(1), work.grow(4)).grow(),
            row(stretch(), Command2, Command1[OkButton], Command1[CloseButton])));
    resize(pixelsOf(10200, *this), pixelsOf(6900, *this));
}

void QueryFrm::nameInputs()
{
    LFields.setAccessibleName(Label2[0].text());
    cSql.setAccessibleName(u"项目"_s);
    cFuhao.setAccessibleName(Label2[2].text());
    lSql.setAccessibleName(Label2[1].text());
    signSql.setAccessibleName(u"当前条件"_s);
    totalSql.setAccessibleName(u"已合并条件"_s);
    cOrderby.setAccessibleName(u"排序项目"_s);
    lOrderby.setAccessibleName(u"排序"_s);
}

void QueryFrm::wire()
{
    connect(&LFields, &QListWidget::currentRowChanged, this, &QueryFrm::takeField);
    connect(&LFields, &QListWidget::itemClicked, this, [this] { takeField(LFields.currentRow()); });
    connect(&LFields, &QListWidget::itemDoubleClicked, this, [this] { cSql.setFocus(); });
    connect(&cSql, &QComboBox::currentIndexChanged, this, &QueryFrm::followType);
    enterAsTab({cSql, cFuhao});
    onEnter(lSql, [this] { add(); });
    onClick(Command3, [this] { add(); });
    onClick(Label3, [this](int direction) { sort(direction); });
    onClick(Command2, [this] { clear(); });
    onClick(Command1[MergeButton], [this] { merge(); });
    onClick(Command1[OkButton], [this] { findData(); });
    onClick(Command1[CloseButton], [this] { reject(); });
}

void QueryFrm::LoadCombo(const QString& fields, const QString& captions, const QString& types)
{
    m_fields = queryFields(fields, captions, types);
    LFields.clear();
    cSql.clear();
    for (const QueryField& field : m_fields) {
        LFields.addItem(field.caption);
        cSql.addItem(field.caption);
    }
    offerSorting();
    if (!m_fields.empty()) LFields.setCurrentRow(0);
}

void QueryFrm::takeField(int index)
{
    if (index < 0) return;
    cSql.setCurrentIndex(index);
    followType(index);
}

/// A field of the same type keeps the operator chosen and the value typed.
void QueryFrm::followType(int index)
{
    if (index < 0) return;
    const FieldType type = m_fields[std::size_t(index)].type;
    if (m_currentType == type) return;
    m_currentType = type;
    cFuhao.clear();
    cFuhao.addItems(queryOperators(type));
    cFuhao.setCurrentIndex(0);
    lSql.setMask(type == FieldType::Date ? u"####-##-##"_s : QString());
}

void QueryFrm::add()
{
    if (cSql.currentIndex() < 0) return;
    if (!m_query.add(m_fields[std::size_t(cSql.currentIndex())], cFuhao.currentText(), lSql.Text())) return;
    lSql.clear();
    showTexts();
}

void QueryFrm::merge()
{
    const QString chain = m_query.merge();
    if (chain.isEmpty()) return;
    totalSql.addItem(chain);
    showTexts();
}

/// No field sorts twice: what is taken leaves the list. Of fields with one caption the first is meant.
void QueryFrm::sort(int direction)
{
    const QString caption = cOrderby.currentText();
    if (caption.isEmpty()) {
        m_prompt.stop(u"请选择排序项目，取消该操作。"_s, OperationTitle);
        cOrderby.setFocus();
        return;
    }
    const auto field = std::find_if(m_fields.begin(), m_fields.end(),
        [&](const QueryField& candidate) { return candidate.caption == caption; });
    m_query.sortBy(*field, SortDirection(direction), Label3[direction].text());
    cOrderby.removeItem(cOrderby.currentIndex());
    cOrderby.setCurrentIndex(-1);
    showTexts();
}

void QueryFrm::clear()
{
    m_query.clear();
    lSql.clear();
    totalSql.clear();
    offerSorting();
    showTexts();
}

void QueryFrm::offerSorting()
{
    cOrderby.clear();
    for (int index = 0; index < cSql.count(); ++index)
        cOrderby.addItem(cSql.itemText(index));
    cOrderby.setCurrentIndex(-1);
}

void QueryFrm::showTexts()
{
    signSql.setPlainText(m_query.readableCondition());
    lOrderby.setPlainText(m_query.readableOrder());
}

/// A value that was typed and not added does not count.
void QueryFrm::findData()
{
    const QString condition = m_query.condition();
    const QString order = m_query.order();
    accept();
    const WaitCursor wait;
    m_caller.loadData(condition, order);
}

void QueryFrm::done(int result)
{
    m_query.clear();
    m_currentType.reset();
    QDialog::done(result);
}

/// The two readable texts take no keys, but for those that lead out of them.
bool QueryFrm::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || (watched != &signSql && watched != &lOrderby))
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    return key != Qt::Key_Tab && key != Qt::Key_Backtab && key != Qt::Key_Escape;
}

bool askQuery(Prompt& prompt, const QueryTriple& triple, QueryReceiver& caller, QWidget* parent)
{
    QueryFrm query(prompt, caller, parent);
    query.LoadCombo(triple.fields, triple.captions, triple.types);
    if (!triple.title.isEmpty()) query.setWindowTitle(triple.title);
    return query.exec() == QDialog::Accepted;
}

} // namespace quilla
