#pragma once

#include <QString>

#include <vector>

namespace quilla {

struct MarcSubfield {
    QChar code;
    QString text;
};

struct MarcField {
    QString tag;
    QString data; ///< of a control field
    std::vector<MarcSubfield> subfields;
};

/// A record with its texts decoded.
struct MarcRecord {
    QString leader;
    std::vector<MarcField> fields;

    bool has(QStringView tag) const
    {
        for (const MarcField& field : fields)
            if (field.tag == tag) return true;
        return false;
    }
};

} // namespace quilla
