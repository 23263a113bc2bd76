#pragma once

#include "platform/ui/form/text_box.h"
#include "statistics/query_ops.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTextEdit>

namespace quilla {

class Prompt;

/// Lets the operator build a condition and a sort order without typing statements, and hands both to the
/// screen that opened it. Modal: construct, `LoadCombo`, perhaps another title, `exec`.
class QueryFrm final : public QDialog {
    Q_OBJECT

public:
    /// The caller must outlive the dialog; its `loadData` is called at most once, after the dialog closed.
    QueryFrm(Prompt& prompt, QueryReceiver& caller, QWidget* parent = nullptr);

    /// The fields offered: names, captions and types ("字符", "数字", "日期"), each a list with ",".
    void LoadCombo(const QString& fields, const QString& captions, const QString& types);

    QListWidget LFields;
    QComboBox cSql; ///< the field of the condition being typed
    QComboBox cFuhao; ///< the operators
    MaskDateEdit lSql; ///< the value
    QTextEdit signSql; ///< the readable form of the current chain
    QListWidget totalSql; ///< those of the merged ones
    QComboBox cOrderby; ///< what is not sorted by yet
    QTextEdit lOrderby;
    QLabel Label2[3];
    QPushButton Label3[2]; ///< ascending, descending
    QPushButton Command1[3];
    QPushButton Command2;
    QPushButton Command3;

    bool eventFilter(QObject* watched, QEvent* event) override;
    void done(int result) override;

private:
    void layOut();
    void nameInputs();
    void wire();
    void takeField(int index);
    void followType(int index);
    void add();
    void merge();
    void sort(int direction);
    void clear();
    void offerSorting();
    void showTexts();
    void findData();

    Prompt& m_prompt;
    QueryReceiver& m_caller;
    std::vector<QueryField> m_fields;
    QueryBuilder m_query;
    std::optional<FieldType> m_currentType; ///< for which the operators are set up
};

/// Opens the query dialog over `parent`, which is modal. True when the operator pressed 确定; the caller's
/// `loadData` has run then.
bool askQuery(Prompt& prompt, const QueryTriple& triple, QueryReceiver& caller, QWidget* parent);

} // namespace quilla
