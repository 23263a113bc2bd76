#pragma once

#include <QHash>
#include <QStringList>

#include <vector>

namespace quilla::demo {

struct Surname {
    QString text;
    QChar letter; ///< first of its reading, for author numbers
};

struct Publisher {
    QString name;
    QString place;
    QString isbnPart; ///< its number within group 7 of the ISBN
};

/// How titles on any subject of a block may be called: "%教程".
struct TitlePattern {
    QString pattern;
    QString role; ///< of the author: 著, 编著, 主编, 译, ...
    QString subdivision; ///< after the subject in the subject terms; "=" before it: all of the terms
};

struct Subject {
    QString classcode;
    QString name;
};

struct Block {
    int share; ///< tenths
    QString place;
    QStringList publishers;
    bool once; ///< no two titles of it may be the same
    std::vector<TitlePattern> patterns;
    std::vector<Subject> subjects;
};

struct Classic {
    QString classcode;
    QString bookname;
    QString author;
    QString publisher;
    int year;
    QString terms;
    QString language;
};

/// Whom the books of a foreign literature are by.
struct ForeignAuthors {
    QString classcode; ///< the beginning of it
    QString country; ///< one character: 美, 英, ...
    QStringList names;
};

/// The word lists that the demo library is made of.
struct Words {
    std::vector<Surname> surnames;
    QStringList men;
    QStringList women;
    std::vector<ForeignAuthors> foreigners;
    QHash<QString, Publisher> publishers;
    std::vector<Block> blocks;
    std::vector<Classic> classics;
};

Words readWords();

} // namespace quilla::demo
