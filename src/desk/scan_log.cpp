#include "desk/scan_log.h"

#include "platform/core/text.h"

#include <QStringList>

namespace quilla {

namespace {

QString timeOf(const ScanEntry& entry)
{
    return entry.time.time.toString(u"HH:mm:ss"_s);
}

QString joined(const QString& first, const QString& second)
{
    return second.isEmpty() ? first : first + u' ' + second;
}

QString resultOf(const ScanEntry& entry)
{
    return joined(wordOf(entry.outcome), entry.note);
}

QString cell(const ScanEntry& entry, int column)
{
    switch (column) {
    case ScanLog::Time:
        return timeOf(entry);
    case ScanLog::What:
        return wordOf(entry.kind);
    case ScanLog::Barcode:
        return entry.barcode;
    case ScanLog::Title:
        return entry.title;
    case ScanLog::Reader:
        return joined(entry.readercode, entry.readername);
    case ScanLog::Result:
        return resultOf(entry);
    default:
        return {};
    }
}

} // namespace

QString wordOf(ScanKind kind)
{
    static const std::array words {u"借"_s, u"还"_s, u"续"_s, u"罚"_s, u"证"_s};
    return words[std::size_t(kind)];
}

QString wordOf(ScanOutcome outcome)
{
    static const std::array words {u"成功"_s, u"拒绝"_s, u"失败"_s, u"未处理"_s};
    return words[std::size_t(outcome)];
}

QString lineOf(const ScanEntry& entry)
{
    return QStringList {timeOf(entry), wordOf(entry.kind), entry.barcode, resultOf(entry)}.join(u' ');
}

void ScanLog::beginDay()
{
    beginResetModel();
    m_entries.clear();
    m_counts = {};
    endResetModel();
}

void ScanLog::add(const ScanEntry& entry)
{
    if (!m_entries.empty() && m_entries.back().time.date != entry.time.date) beginDay();
    ++m_counts[std::size_t(entry.outcome)];
    beginInsertRows({}, 0, 0);
    m_entries.push_back(entry);
    endInsertRows();
}

int ScanLog::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

int ScanLog::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant ScanLog::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const ScanEntry& scan = entry(index.row());
    if (role == OutcomeRole) return int(scan.outcome);
    const bool read = role == Qt::DisplayRole || role == Qt::ToolTipRole;
    return read ? QVariant(cell(scan, index.column())) : QVariant();
}

QVariant ScanLog::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const std::array captions {u"时间"_s, u"事项"_s, u"条形码"_s, u"书名"_s, u"读者"_s, u"结果"_s};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return captions[std::size_t(section)];
}

} // namespace quilla
