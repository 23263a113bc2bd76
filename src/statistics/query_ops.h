#pragma once

#include "platform/core/text.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace quilla {

/// A list screen that the query dialog narrows and sorts.
class QueryReceiver {
public:
    virtual ~QueryReceiver() = default;
    /// Shows what meets `condition`, in that `order`. Either may be empty: then everything, in the screen's
    /// own order. The screen writes " where " and " order by " itself.
    virtual void loadData(const QString& condition, const QString& order) = 0;
};

/// What is compared with what: the words "字符", "数字" and "日期" of a caller's type list.
enum class FieldType : qint16 { Text = 0, Number = 1, Date = 2 };

/// A field that a caller offers.
struct QueryField {
    QString name; ///< as it stands in the statement, qualified or not
    QString caption; ///< as the operator knows it
    FieldType type = FieldType::Text;
};

/// What a screen offers to the query dialog: three lists of one length, with "," between their elements.
struct QueryTriple {
    QString fields; ///< names as they stand in the statement
    QString captions;
    QString types; ///< "字符", "数字", "日期"
    QString title {}; ///< of the dialog, where the screen has one of its own
};

/// Takes a caller's three lists apart, split at ",". There are as many fields as field names; an unknown
/// type is text.
std::vector<QueryField> queryFields(const QString& fields, const QString& captions, const QString& types);

/// The operator words of a type, the first one preset.
QStringList queryOperators(FieldType type);

/// A date of which nothing is typed yet.
inline constexpr QStringView BlankDate = u"____-__-__";

/// The condition for one field, every quote in `value` doubled. A date may be filled in as far as the year
/// or the month: "_" is what is missing. nullopt when a number field gets no number.
std::optional<QString> queryCondition(const QueryField& field, QStringView word, const QString& value);

enum class SortDirection { Ascending, Descending };

/// The condition and the sort order that an operator puts together step by step, as the database reads them
/// and as the operator does.
class QueryBuilder {
public:
    /// Joins a condition to the current chain with And. False, and nothing changed, for a blank value and for
    /// a number field without a number.
    bool add(const QueryField& field, QStringView word, const QString& value);
    /// Joins the current chain to the merged ones with OR. The readable form of that chain; empty when there
    /// was none.
    QString merge();
    /// A further field to sort by; `label` is the caption of the direction.
    void sortBy(const QueryField& field, SortDirection direction, QStringView label);
    void clear() { *this = {}; }

    /// The whole condition: what is merged, and the chain that isn't yet.
    QString condition() const;
    const QString& order() const { return m_orderText; }

    const QString& readableCondition() const { return m_signSql; } ///< of the current chain
    const QString& readableOrder() const { return m_readableOrder; }

private:
    QString m_mergedCondition;
    QString m_currentCondition;
    QString m_signSql;
    QString m_orderText;
    QString m_readableOrder;
};

} // namespace quilla
