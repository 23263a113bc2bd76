#include "database/demo/titles.h"

#include "database/demo/isbn.h"
#include "platform/core/dates.h"
#include "platform/core/text.h"

namespace quilla::demo {

namespace {

constexpr int DaysOfCataloguing = 3650;
constexpr int RecentDays = 1000;
constexpr int MostCopies = 8;

/// Deals a block's pairs of pattern and subject, each once before any comes again.
struct Deck {
    std::vector<std::pair<int, int>> pairs;
    std::size_t dealt = 0;
};

/// Invents titles one by one.
class TitleMaker {
public:
    TitleMaker(const Words& words, Random& random, const QDate& today);

    std::vector<Title> make(int count);

private:
    void addClassics();
    void addFromBlocks(int count);
    void addFrom(std::size_t block);
    void addSecondEditions(int count);
    void numberWithinClasses();
    void giveBookNumbers();

    QString author(const Subject& subject, const QString& role, QChar& letter);
    QString translatedAuthor(const Subject& subject);
    QDate cataloguingDay(int leastYear);
    void describe(Title& title, int year, int month);

    const Words& m_words;
    Random& m_random;
    QDate m_today;
    std::vector<Deck> m_decks;
    Weighted m_blocks;
    std::vector<Title> m_titles;
};

TitleMaker::TitleMaker(const Words& words, Random& random, const QDate& today)
    : m_words(words)
    , m_random(random)
    , m_today(today)
{
    for (const Block& block : words.blocks) {
        m_blocks.add(block.share);
        Deck deck;
        for (int pattern = 0; pattern < int(block.patterns.size()); ++pattern)
            for (int subject = 0; subject < int(block.subjects.size()); ++subject)
                deck.pairs.emplace_back(pattern, subject);
        random.shuffle(deck.pairs);
        m_decks.push_back(std::move(deck));
    }
}

bool byCataloguing(const Title& left, const Title& right)
{
    return left.catalogued < right.catalogued;
}

std::vector<Title> TitleMaker::make(int count)
{
    const int editions = count / 20;
    addClassics();
    addFromBlocks(count - editions);
    std::stable_sort(m_titles.begin(), m_titles.end(), byCataloguing);
    numberWithinClasses();
    addSecondEditions(editions);
    std::stable_sort(m_titles.begin(), m_titles.end(), byCataloguing);
    giveBookNumbers();
    return std::move(m_titles);
}

void TitleMaker::addClassics()
{
    for (const Classic& classic : m_words.classics) {
        if (classic.year >= m_today.year()) continue;
        Title title;
        title.bookname = classic.bookname;
        title.author = classic.author;
        title.publisher = classic.publisher;
        title.classcode = classic.classcode;
        title.terms = classic.terms;
        title.lagclass = classic.language;
        title.place = classic.classcode.startsWith(u'I')                       ? u"文学书库"_s
            : classic.classcode < u"N"_s || classic.classcode.startsWith(u'Z') ? u"社会科学书库"_s
                                                                               : u"自然科学书库"_s;
        title.catalogued = cataloguingDay(classic.year + 1);
        title.popularity = m_random.between(10, 40);
        describe(title, classic.year, m_random.between(1, 12));
        m_titles.push_back(std::move(title));
    }
}

void TitleMaker::addFromBlocks(int count)
{
    while (int(m_titles.size()) < count)
        addFrom(m_blocks.pick(m_random));
}

/// Adds no title when the block is used up.
void TitleMaker::addFrom(std::size_t at)
{
    const Block& block = m_words.blocks[at];
    Deck& deck = m_decks[at];
    if (deck.dealt == deck.pairs.size()) {
        if (block.once) return;
        deck.dealt = 0;
    }
    const auto [patternAt, subjectAt] = deck.pairs[deck.dealt++];
    const TitlePattern& pattern = block.patterns[std::size_t(patternAt)];
    const Subject& subject = block.subjects[std::size_t(subjectAt)];
    QChar letter;
    Title title;
    title.bookname = QString(pattern.pattern).replace(u'%', subject.name);
    title.author = author(subject, pattern.role, letter);
    if (!letter.isNull()) title.authorcode = letter + QString::number(m_random.between(100, 999));
    title.publisher = m_random.pick(block.publishers);
    title.classcode = subject.classcode;
    title.terms = pattern.subdivision.startsWith(u'=') ? pattern.subdivision.sliced(1)
                                                       : subject.name + u'-' + pattern.subdivision;
    title.lagclass = u"汉语"_s;
    title.place = block.place;
    title.catalogued = cataloguingDay(m_today.year() - 10);
    const QDate published = title.catalogued.addDays(-m_random.between(60, 900));
    title.popularity = m_random.skewed(3, 4);
    describe(title, published.year(), published.month());
    m_titles.push_back(std::move(title));
}

/// A later edition of a textbook keeps the number within the class and differs by its mark.
void TitleMaker::addSecondEditions(int count)
{
    std::vector<Title> editions;
    for (const Title& first : m_titles) {
        if (int(editions.size()) == count) break;
        const bool revised = first.terms.contains(u"教材"_s) && m_random.chance(700);
        if (!revised || first.catalogued > m_today.addDays(-800)) continue;
        Title second = first;
        second.fzqfh = u"=2"_s;
        second.catalogued = first.catalogued.addDays(m_random.between(400, 790));
        describe(second, second.catalogued.year() - 1, m_random.between(1, 12));
        second.edition = u"2版"_s;
        editions.push_back(std::move(second));
    }
    m_titles.insert(m_titles.end(), editions.begin(), editions.end());
}

void TitleMaker::numberWithinClasses()
{
    QHash<QString, int> last;
    for (Title& title : m_titles)
        title.zch = ++last[title.classcode];
}

void TitleMaker::giveBookNumbers()
{
    IsbnCounter counter;
    for (Title& title : m_titles) {
        const Publisher& publisher = *m_words.publishers.constFind(title.publisher);
        title.pubplace = publisher.place;
        title.isbn = counter.next(publisher.isbnPart, title.pubdate.left(4).toInt(), m_random.between(1, 9));
    }
}

QString TitleMaker::author(const Subject& subject, const QString& role, QChar& letter)
{
    if (role == u"译"_s) return translatedAuthor(subject);
    const Person first = makePerson(m_words, m_random);
    letter = first.letter;
    if (!m_random.chance(role == u"主编"_s ? 400 : 80)) return first.name + role;
    return first.name + u", "_s + makePerson(m_words, m_random).name + role;
}

QString TitleMaker::translatedAuthor(const Subject& subject)
{
    for (const ForeignAuthors& foreigners : m_words.foreigners) {
        if (!subject.classcode.startsWith(foreigners.classcode)) continue;
        const QString& writer = m_random.pick(foreigners.names);
        return u'(' + foreigners.country + u')' + writer + u"著; "_s + makePerson(m_words, m_random).name
            + u"译"_s;
    }
    return makePerson(m_words, m_random).name + u"译"_s;
}

/// A quarter of the collection is of the last years. Not before `leastYear`.
QDate TitleMaker::cataloguingDay(int leastYear)
{
    const QDate earliest = std::max(QDate(leastYear, 1, 4), m_today.addDays(-DaysOfCataloguing));
    const QDate recent = std::max(earliest, m_today.addDays(-RecentDays));
    const bool old = !m_random.chance(250) && earliest < recent;
    const QDate from = old ? earliest : recent;
    const QDate to = old ? recent : m_today.addDays(-3);
    return from.addDays(m_random.below(int(std::max<qint64>(1, from.daysTo(to)))));
}

/// What follows from the kind of book and the year: size, pages, price, series.
void TitleMaker::describe(Title& title, int year, int month)
{
    const bool textbook = title.terms.contains(u"教材"_s);
    const bool novel = title.terms.startsWith(u"长篇小说"_s);
    title.pubdate = u"%1.%2"_s.arg(year).arg(month);
    title.edition = u"1版"_s;
    title.measure = title.place == u"自然科学书库"_s ? u"26cm"_s : u"21cm"_s;
    title.pages = novel ? m_random.between(210, 620) : m_random.between(140, 480);
    const int tenthsOfFenAPage = std::max(8, 40 + (year - 1995) * 3);
    const qint64 price = qint64(title.pages) * tenthsOfFenAPage / 10;
    title.price = std::max<qint64>(35, price / 50 * 50 + (m_random.chance(300) ? 30 : 0));
    if (textbook && m_random.chance(300)) title.books = u"高等学校规划教材"_s;
    if (title.terms == u"长篇小说-中国-当代"_s && m_random.chance(150)) title.books = u"当代长篇小说丛书"_s;
}

void addCopy(Library& library, int at, const QString& place, CopyState state)
{
    const QString barcode = QString::number(1000001 + library.copies.size());
    library.titles[std::size_t(at)].copies.push_back(int(library.copies.size()));
    library.copies.push_back({at, barcode, place, state});
}

/// One copy a title; the others go where readers ask for them.
std::vector<int> shareCopies(const std::vector<Title>& titles, Random& random, int copies)
{
    Weighted byPopularity;
    for (const Title& title : titles)
        byPopularity.add(2 + title.popularity);
    std::vector<int> counts(titles.size(), 1);
    copies = std::min(copies, int(titles.size()) * MostCopies / 2);
    for (int given = int(titles.size()); given < copies;) {
        int& count = counts[byPopularity.pick(random)];
        if (count == MostCopies) continue;
        ++count;
        ++given;
    }
    return counts;
}

} // namespace

void makeCollection(Library& library, const Words& words, Random& random, int titles, int copies)
{
    library.titles = TitleMaker(words, random, library.today).make(titles);
    const std::vector<int> counts = shareCopies(library.titles, random, copies);
    for (int at = 0; at < int(library.titles.size()); ++at) {
        const QString place = library.titles[std::size_t(at)].place;
        const bool forReference = place == u"工具书阅览室"_s;
        const int count = counts[std::size_t(at)];
        const bool keepOne = count >= 4 && random.chance(300);
        for (int copy = 0; copy < count; ++copy) {
            if (keepOne && copy == 0)
                addCopy(library, at, u"典藏室"_s, CopyState::Reference);
            else
                addCopy(library, at, place, forReference ? CopyState::Reference : CopyState::In);
        }
    }
}

Person makePerson(const Words& words, Random& random)
{
    const Surname& surname = random.pick(words.surnames);
    const bool woman = random.chance(480);
    const QString& given = random.pick(woman ? words.women : words.men);
    return {surname.text + given, woman ? u"女"_s : u"男"_s, surname.letter};
}

} // namespace quilla::demo
