#pragma once

#include "holdings/book_record.h"

#include <QStringDecoder>

#include <memory>

namespace quilla {

/// Decodes the texts of records.
class MarcText {
public:
    explicit MarcText(CodePage codePage);
    ~MarcText();

    /// Nullopt when the bytes are not of that code page. `unicode`: the record says that it is UTF-8.
    std::optional<QString> decoded(const QByteArray& bytes, bool unicode);

private:
    std::optional<QString> by(CodePage codePage, const QByteArray& bytes);
    std::optional<QString> byMarc8(const QByteArray& bytes);
    static std::vector<CodePage> candidates(const QByteArray& bytes, bool unicode);

    CodePage m_codePage;
    QStringDecoder m_gb18030;
    struct Marc8;
    std::unique_ptr<Marc8> m_marc8;
};

} // namespace quilla
