#pragma once

#include "readers/delimited_text.h"
#include "readers/import_lists_ops.h"

namespace quilla {

/// Turns lines into readers, one after the other, since each must differ from those before it.
class LineCheck {
public:
    /// `fields` are those of the file's columns. All must outlive it.
    LineCheck(
        const sql::Schema& schema, const ImportLists& lists, const std::vector<int>& fields, bool anyUnit);

    /// The reader, whole and in the form in which it is written; else why not.
    bool check(const TextRecord& record);
    const ImportValues& reader() const { return m_values; }
    QString reason() const { return m_reasons.join(u"；"_s); }

private:
    void take(const TextRecord& record);
    void needNoMore(const TextRecord& record);
    void fillIn();
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
    bool isEmpty(int field) const { return m_values[std::size_t(field)].isEmpty(); }
    QString& value(int field) { return m_values[std::size_t(field)]; }

    const sql::Schema& m_schema;
    const ImportLists& m_lists;
    const std::vector<int>& m_fields;
    const bool m_anyUnit;
    QHash<QString, int> m_lineOfCode;
    ImportValues m_values;
    QStringList m_reasons;
};

} // namespace quilla
