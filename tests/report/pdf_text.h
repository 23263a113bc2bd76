#pragma once

#include "platform/core/text.h"
#include "platform/report/page_output.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace quilla {

/// What a reader finds on the pages of a PDF file: a page a text, blanks and line breaks as one blank.
inline QStringList textsOf(const QString& file)
{
    QProcess reader;
    reader.start(u"pdftotext"_s, {u"-layout"_s, file, u"-"_s});
    reader.waitForFinished();
    QStringList pages = QString::fromUtf8(reader.readAllStandardOutput()).split(u'\f');
    pages.removeLast();
    for (QString& page : pages)
        page = page.simplified();
    return pages;
}

inline QStringList textsOf(const PrintedPages& pages, const FontBook& fonts)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"report.pdf"_s);
    savePdf(pages, fonts, file);
    return textsOf(file);
}

} // namespace quilla
