#include "differ/grammar.h"

#include "platform/core/text.h"
#include "sql/case_file.h"

namespace quilla::test {

namespace {

constexpr int Deepest = 14; ///< the deeper, the oftener the simplest alternative is taken; here always

QString subjectOf(const QString& rule)
{
    return rule.section(u':', 1);
}

/// The rule that a place leads to inside a rule.
QString ruleAt(QString place, const QString& around)
{
    place.replace(u'$', subjectOf(around));
    return place.contains(u':') ? place : place + u':' + subjectOf(around);
}

} // namespace

std::unique_ptr<Growth> Growth::copy() const
{
    auto result = std::make_unique<Growth>(rule, alternative);
    for (const auto& part : parts)
        result->parts.push_back(part->copy());
    return result;
}

Grammar::Grammar(const QString& file)
{
    QString rule;
    for (const QString& line : readText(file).split(u'\n')) {
        if (line.startsWith(u'#') || line.trimmed().isEmpty()) continue;
        if (!line.startsWith(u' ')) {
            rule = line.trimmed();
            continue;
        }
        const QString text = line.sliced(4);
        Alternative alternative;
        bool place = false;
        for (const QString& piece : (text == u"-" ? QString() : text).split(QChar(u'|'))) {
            alternative.push_back({piece, place});
            place = !place;
        }
        m_rules[rule].push_back(std::move(alternative));
    }
}

const std::vector<Grammar::Alternative>& Grammar::alternatives(const QString& rule) const
{
    const auto found = m_rules.constFind(rule.section(u':', 0, 0));
    if (found == m_rules.constEnd()) qFatal("no rule %s", qPrintable(rule));
    return *found;
}

std::unique_ptr<Growth> Grammar::grow(const QString& rule, std::mt19937_64& chance) const
{
    return grow(rule.contains(u':') ? rule : rule + u':', &chance, 0);
}

/// Without chance the simplest.
std::unique_ptr<Growth> Grammar::grow(const QString& rule, std::mt19937_64* chance, int depth) const
{
    const auto& all = alternatives(rule);
    auto growth = std::make_unique<Growth>(rule);
    if (chance && int((*chance)() % Deepest) >= depth) growth->alternative = (*chance)() % all.size();
    for (const Piece& piece : all[growth->alternative])
        if (piece.place) growth->parts.push_back(grow(ruleAt(piece.text, rule), chance, depth + 1));
    return growth;
}

QString Grammar::text(const Growth& growth) const
{
    QString text;
    std::size_t part = 0;
    for (const Piece& piece : alternatives(growth.rule)[growth.alternative]) {
        if (piece.place)
            text += this->text(*growth.parts[part++]);
        else
            text += QString(piece.text).replace(u'$', subjectOf(growth.rule));
    }
    return text;
}

std::vector<std::unique_ptr<Growth>> Grammar::simpler(const Growth& growth) const
{
    std::vector<std::unique_ptr<Growth>> result;
    if (growth.alternative > 0) result.push_back(grow(growth.rule, nullptr, 0));
    for (const auto& part : growth.parts)
        if (part->rule == growth.rule) result.push_back(part->copy());
    for (std::size_t i = 0; i < growth.parts.size(); ++i)
        for (auto& part : simpler(*growth.parts[i])) {
            result.push_back(growth.copy());
            result.back()->parts[i] = std::move(part);
        }
    return result;
}

} // namespace quilla::test
