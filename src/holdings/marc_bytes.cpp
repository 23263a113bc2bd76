#include "holdings/marc_parser.h"

namespace quilla {

namespace {

QByteArray digits(qsizetype number, int width)
{
    return QByteArray::number(number).rightJustified(width, '0');
}

} // namespace

QByteArray marcBytes(QByteArray leader, const std::vector<RawMarcField>& fields)
{
    constexpr qsizetype LeaderLength = 24;
    QByteArray directory;
    QByteArray data;
    for (const auto& [tag, content] : fields) {
        const qsizetype length = content.size() + 1;
        if (length > LongestMarcField || data.size() > LongestMarcRecord) return {};
        directory += tag + digits(length, 4) + digits(data.size(), 5);
        data += content + FieldEnd;
    }
    const qsizetype base = LeaderLength + directory.size() + 1;
    const qsizetype whole = base + data.size() + 1;
    if (whole > LongestMarcRecord) return {};
    leader.replace(0, 5, digits(whole, 5)).replace(12, 5, digits(base, 5));
    return leader + directory + FieldEnd + data + RecordEnd;
}

} // namespace quilla
