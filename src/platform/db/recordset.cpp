#include "platform/db/sources.h"

#include "platform/core/error.h"

namespace quilla {

Recordset::Recordset() = default;
Recordset::Recordset(std::unique_ptr<Source> source)
    : m_source(std::move(source))
{
}
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;

qsizetype Recordset::recordCount() const
{
    return m_source ? m_source->recordCount() : 0;
}

bool Recordset::eof() const
{
    return !m_source || m_source->eof();
}

void Recordset::next()
{
    if (!m_source) throw Error(ErrorNumber::NoCurrentRow, u"Recordset"_s, u"没有当前记录。"_s);
    m_source->next();
}

void Recordset::first()
{
    if (m_source) m_source->first();
}

int Recordset::fieldCount() const
{
    return m_source ? int(m_source->fields().size()) : 0;
}

namespace {

[[noreturn]] void throwNoSuchField(const QString& which)
{
    throw Error(ErrorNumber::NoSuchField, u"Recordset"_s, u"没有字段 %1。"_s.arg(which));
}

} // namespace

QString Recordset::fieldName(int index) const
{
    if (index < 0 || index >= fieldCount()) throwNoSuchField(QString::number(index));
    return m_source->fields()[std::size_t(index)].name;
}

sql::Kind Recordset::fieldKind(int index) const
{
    if (index < 0 || index >= fieldCount()) throwNoSuchField(QString::number(index));
    return m_source->fields()[std::size_t(index)].kind;
}

std::optional<int> Recordset::findField(QStringView name) const
{
    for (int index = 0; index < fieldCount(); ++index) {
        const QString& candidate = m_source->fields()[std::size_t(index)].name;
        if (candidate.size() == name.size() && name.compare(candidate, Qt::CaseInsensitive) == 0)
            return index;
    }
    return {};
}

int Recordset::needField(QStringView name) const
{
    if (const auto place = findField(name)) return *place;
    throwNoSuchField(name.toString());
}

Recordset Recordset::child(QStringView name) const
{
    if (!m_source) throw Error(ErrorNumber::NoCurrentRow, u"Recordset"_s, u"没有当前记录。"_s);
    return m_source->child(name);
}

const Value& Recordset::field(int index) const
{
    if (!m_source) throw Error(ErrorNumber::NoCurrentRow, u"Recordset"_s, u"没有当前记录。"_s);
    return m_source->field(index);
}

Cell Recordset::cell(int index) const
{
    if (eof()) throw Error(ErrorNumber::NoCurrentRow, u"Recordset"_s, u"没有当前记录。"_s);
    if (index < 0 || index >= fieldCount()) throwNoSuchField(QString::number(index));
    return m_source->cell(index);
}

const Value& Recordset::field(QStringView name) const
{
    return m_source ? field(needField(name)) : field(0);
}

} // namespace quilla
