#pragma once

#include <QHash>
#include <QString>

#include <memory>
#include <random>
#include <vector>

namespace quilla::test {

/// A rule as it was applied: which alternative, and what stands in its places.
struct Growth {
    QString rule; ///< with its subject, as "column:dzk"
    std::size_t alternative = 0;
    std::vector<std::unique_ptr<Growth>> parts;

    std::unique_ptr<Growth> copy() const;
};

/// Makes texts from rules in a file. A line without indent names a rule, the indented lines after it are its
/// alternatives; a line "-" stands for the empty text. "|rule|" is a place for another rule. A rule has a
/// subject, by default that of the rule around it: "|rule:x|" gives it the subject x. "$" stands for the
/// subject, so that "|$.text|" leads to the rule "dzk.text" below the subject dzk. The first alternative of a
/// rule is its simplest one; it must come to an end.
class Grammar {
public:
    explicit Grammar(const QString& file);

    std::unique_ptr<Growth> grow(const QString& rule, std::mt19937_64& chance) const;
    QString text(const Growth& growth) const;
    /// What is one step simpler, the simplest first.
    std::vector<std::unique_ptr<Growth>> simpler(const Growth& growth) const;

private:
    struct Piece {
        QString text;
        bool place = false;
    };
    using Alternative = std::vector<Piece>;

    const std::vector<Alternative>& alternatives(const QString& rule) const;
    std::unique_ptr<Growth> grow(const QString& rule, std::mt19937_64* chance, int depth) const;

    QHash<QString, std::vector<Alternative>> m_rules;
};

} // namespace quilla::test
