#pragma once

#include <QStringList>

#include <optional>
#include <vector>

namespace quilla {

/// A section of the manual: the text about one screen, or the beginning of a chapter.
struct ManualSection {
    QString title;
    QStringList names; ///< links lead to them; the first one is its own, most are object names of screens
    QString text; ///< Markdown, without the heading
    bool isChapter = false;
};

/// The whole manual in its order. It is built into the program.
const std::vector<ManualSection>& manual();

/// Where the section of that name stands; nullopt when there is none.
std::optional<std::size_t> findSection(const QString& name);

/// The sections of a text whose headings "# 借还台 {#LtMainFrm #frmLook}" begin a chapter and whose headings
/// "## …" begin a section. What stands before the first heading is left out.
std::vector<ManualSection> readManual(const QString& markdown);

} // namespace quilla
