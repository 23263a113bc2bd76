#include "database/demo/readers.h"

#include "database/demo/titles.h"
#include "platform/core/dates.h"
#include "platform/core/text.h"

#include <array>

namespace quilla::demo {

namespace {

enum ClassIndex { Teacher, Student, Graduate, Staff, Outsider };

/// Types, with one that nobody has yet.
std::vector<ReaderClass> readerClasses()
{
    return {
        // days, books, three fines, renewals, days, overdue?, days held, reservations, A, B, no card?
        {u"教师"_s, {60, 15, 10, 100, 300, 2, 30, true, 7, 5, 10, 10, true}},
        {u"学生"_s, {30, 5, 10, 100, 300, 1, 15, false, 5, 3, 3, 5, false}},
        {u"研究生"_s, {45, 10, 10, 100, 300, 1, 30, false, 7, 4, 5, 10, false}},
        {u"职工"_s, {30, 8, 10, 100, 300, 1, 15, false, 5, 2, 8, 4, true}},
        {u"校外读者"_s, {20, 2, 30, 150, 500, 0, 0, false, 3, 0, 2, 2, false}},
        {u"临时读者"_s, {7, 1, 50, 200, 500, 0, 0, false, 3, 0, 1, 1, false}},
    };
}

constexpr std::array<QStringView, 10> Departments = {u"中文系", u"历史系", u"数学系", u"物理系", u"化学系",
    u"生物系", u"外语系", u"计算机系", u"经济管理系", u"法律系"};
constexpr std::array<QStringView, 6> Offices
    = {u"图书馆", u"教务处", u"学生处", u"后勤处", u"财务处", u"校医院"};
constexpr int StudentYears = 5; ///< four at the college, one that has left

/// The year in which this year's first-year students came.
int latestEntry(const QDate& today)
{
    return today.month() >= 9 ? today.year() : today.year() - 1;
}

QString studentUnit(QStringView department, int year)
{
    return u"%1%2级"_s.arg(department).arg(year);
}

std::vector<QString> makeUnits(const QDate& today)
{
    std::vector<QString> units;
    for (const QStringView department : Departments)
        units.push_back(department.toString());
    for (const QStringView office : Offices)
        units.push_back(office.toString());
    for (int back = StudentYears - 1; back >= 0; --back)
        for (const QStringView department : Departments)
            units.push_back(studentUnit(department, latestEntry(today) - back));
    units.push_back(u"校外"_s);
    return units;
}

/// Invents reader cards one by one.
class ReaderMaker {
public:
    ReaderMaker(const Words& words, Random& random, const QDate& today)
        : m_words(words)
        , m_random(random)
        , m_today(today)
    {
    }

    Reader make(int number);

private:
    void makeStudent(Reader& reader, int number);
    void makeEmployee(Reader& reader, ClassIndex kind, int number);
    void makeOutsider(Reader& reader, int number);
    void settleState(Reader& reader);

    const Words& m_words;
    Random& m_random;
    QDate m_today;
};

Reader ReaderMaker::make(int number)
{
    Reader reader;
    const Person person = makePerson(m_words, m_random);
    reader.name = person.name;
    reader.sex = person.sex;
    const int lot = m_random.below(100);
    if (lot < 62)
        makeStudent(reader, number);
    else if (lot < 70)
        makeEmployee(reader, Graduate, number);
    else if (lot < 88)
        makeEmployee(reader, Teacher, number);
    else if (lot < 95)
        makeEmployee(reader, Staff, number);
    else
        makeOutsider(reader, number);
    reader.weight = m_random.skewed(4, 3);
    reader.lastLoan = reader.term.addDays(-20);
    settleState(reader);
    return reader;
}

void ReaderMaker::makeStudent(Reader& reader, int number)
{
    const int entry = latestEntry(m_today) - m_random.below(StudentYears);
    reader.readerclass = Student;
    reader.code = u"S%1%2"_s.arg(entry % 100, 2, 10, QChar(u'0')).arg(number, 4, 10, QChar(u'0'));
    reader.unit = studentUnit(m_random.pick(Departments), entry);
    reader.paperdate = QDate(entry, 9, 1).addDays(m_random.below(15));
    reader.term = QDate(entry + 4, 6, 30);
    reader.birthday = QDate(entry - 19, 9, 1).addDays(m_random.below(365));
    reader.documentKind = u"学生证"_s;
    const int block = m_random.between(1, 12);
    const int floor = m_random.between(1, 6);
    reader.address = u"学生公寓%1号楼%2室"_s.arg(block).arg(floor * 100 + m_random.between(1, 30));
    if (reader.paperdate > m_today) reader.paperdate = m_today;
}

void ReaderMaker::makeEmployee(Reader& reader, ClassIndex kind, int number)
{
    reader.readerclass = kind;
    reader.code = (kind == Teacher           ? u"T"_s
                          : kind == Graduate ? u"G"_s
                                             : u"Z"_s)
        + u"%1"_s.arg(number, 4, 10, QChar(u'0'));
    reader.unit = (kind == Staff ? m_random.pick(Offices) : m_random.pick(Departments)).toString();
    const int years = kind == Graduate ? 2 : 12;
    reader.paperdate = m_today.addDays(-m_random.between(30, years * 365));
    reader.term = kind == Graduate ? reader.paperdate.addYears(3) : QDate(m_today.year() + 5, 12, 31);
    const int age = kind == Graduate ? m_random.between(23, 29) : m_random.between(28, 58);
    reader.birthday = m_today.addDays(-age * 365 - m_random.below(365));
    reader.documentKind = kind == Teacher ? u"教师证"_s : kind == Graduate ? u"学生证"_s : u"其它"_s;
    reader.address = u"教工住宅区%1栋%2号"_s.arg(m_random.below(20) + 1).arg(100 + number % 60);
}

void ReaderMaker::makeOutsider(Reader& reader, int number)
{
    reader.readerclass = Outsider;
    reader.code = u"W%1"_s.arg(number, 4, 10, QChar(u'0'));
    reader.unit = u"校外"_s;
    reader.paperdate = m_today.addDays(-m_random.between(20, 340));
    reader.term = reader.paperdate.addYears(1);
    reader.birthday = m_today.addDays(-m_random.between(18 * 365, 70 * 365));
    reader.documentKind = u"其它"_s;
    reader.address = u"解放路%1号"_s.arg(m_random.between(1, 300));
}

/// A card whose term is today has run out already.
void ReaderMaker::settleState(Reader& reader)
{
    reader.status = u"有效"_s;
    if (reader.term <= m_today) {
        reader.status = u"超期"_s;
    } else if (m_random.chance(14)) {
        reader.status = u"挂失"_s;
        reader.lastLoan = m_today.addDays(-m_random.between(1, 40));
        reader.memo = isoDate(reader.lastLoan.addDays(1)) + u" 挂失"_s;
    } else if (m_random.chance(14)) {
        reader.status = u"无效"_s;
        reader.lastLoan = m_today.addDays(-m_random.between(200, 600));
        reader.memo = u"已离校"_s;
    }
}

} // namespace

void makeReaders(Library& library, const Words& words, Random& random, int readers)
{
    library.classes = readerClasses();
    library.units = makeUnits(library.today);
    ReaderMaker maker(words, random, library.today);
    for (int number = 1; number <= readers; ++number)
        library.readers.push_back(maker.make(number));
}

} // namespace quilla::demo
