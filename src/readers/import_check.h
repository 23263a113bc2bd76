#pragma once

#include "readers/delimited_text.h"
#include "readers/import_lists_ops.h"

namespace quilla {

/// Brings the reader of a code that is listed already.
using CurrentReader = std::function<ImportValues(const QString& code)>;

/// Turns lines into readers, one after the other, since each must differ from those before it.
class LineCheck {
public:
    /// `fields` are those of the file's columns. All must outlive it. With `current` a known code is that of
    /// a reader to change: what the line leaves empty stays as it is.
    LineCheck(const sql::Schema& schema, const ImportLists& lists, const std::vector<int>& fields,
        bool anyUnit, CurrentReader current = {});

    /// The reader, whole and in the form in which it is written; else why not.
    bool check(const TextRecord& record);
    const ImportValues& reader() const { return m_values; }
    bool isKnown() const { return m_known; } ///< the reader is one to change
    QString reason() const { return m_reasons.join(u"；"_s); }

private:
    void take(const TextRecord& record);
    void needNoMore(const TextRecord& record);
    void keepCurrent();
    void fillIn();
    void takeParameters();
    void checkCode(int line);
    void checkType();
    void checkUnit();
    void checkSex();
    void checkDigits();
    void checkState();
    void checkForms();
    void checkQuota();
    void checkForm(int field);
    void refuse(const QString& reason) { m_reasons.append(shortened(reason)); }
    bool isGiven(int field) const { return !m_given[std::size_t(field)].isEmpty(); }
    bool isEmpty(int field) const { return m_values[std::size_t(field)].isEmpty(); }
    QString& value(int field) { return m_values[std::size_t(field)]; }

    const sql::Schema& m_schema;
    const ImportLists& m_lists;
    const std::vector<int>& m_fields;
    const bool m_anyUnit;
    QHash<QString, int> m_lineOfCode;
    CurrentReader m_current;
    ImportValues m_given; ///< by the line
    ImportValues m_values; ///< with what the line leaves open
    bool m_known = false;
    QStringList m_reasons;
};

} // namespace quilla
