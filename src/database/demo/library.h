#pragma once

#include "database/circulation_rules.h"

#include <QDate>
#include <QString>

#include <vector>

namespace quilla::demo {

// The rows of a demo library before they are written. Rows refer to each other by their place in the
// vectors of `Library`; amounts are in hundredths of a yuan, multiples in hundredths.

struct Title {
    QString bookname;
    QString author;
    QString publisher;
    QString pubplace;
    QString pubdate;
    QString isbn;
    QString classcode;
    int zch = 0;
    QString fzqfh;
    QString lagclass;
    QString edition;
    QString measure;
    int pages = 0;
    QString books;
    QString authorcode;
    QString terms;
    QString place; ///< where its copies stand
    qint64 price = 0;
    QDate catalogued;
    int popularity = 1; ///< weight at the desk
    std::vector<int> copies;
};

enum class CopyState { In, Out, Reference, Lost, Withdrawn };

struct Copy {
    int title;
    QString barcode;
    QString place;
    CopyState state = CopyState::In;
    bool held = false; ///< set aside for a reader
};

struct ReaderClass {
    QString name;
    RuleNumbers rules;
};

struct Reader {
    QString code;
    QString name;
    QString sex;
    int readerclass = 0;
    QString unit;
    QString status;
    QDate paperdate;
    QDate term;
    QDate lastLoan; ///< borrows nothing after this day
    QDate birthday;
    QString documentKind;
    QString address;
    QString memo;
    int weight = 1; ///< how eager a borrower
    int reservations = 0;
    std::vector<int> openLoans;
};

struct Holiday {
    QString name;
    QDate first;
    QDate last;
};

struct Loan {
    int reader;
    int copy;
    QDate ordered;
    QDate due;
    QDate comesBack;
    QDate reportedLost; ///< no date unless the book got lost
    int renewals = 0;
    QString operater;
    bool open = true;
};

struct FinishedLoan {
    int reader;
    int copy;
    QDate ordered;
    QDate due;
    QDate back;
    QString operater;
};

struct Fine {
    int reader;
    int copy;
    qint64 due;
    qint64 taken;
    QString cause;
    QDate date;
    QString operater;
    QString memo;
};

struct LostReport {
    int reader;
    int copy;
    qint64 amount;
    QDate date;
};

struct Withdrawal {
    int copy;
    QString cause;
    QString memo; ///< null for none
    QDate date;
    QString operater;
};

struct Reservation {
    int reader;
    int title;
    int copy = -1; ///< the copy set aside, or none yet
    QDate placed;
    QDate heldUntil; ///< no date while waiting, and when the copy came in by way of the fine screen
};

struct Library {
    QDate today;
    std::vector<Title> titles;
    std::vector<Copy> copies;
    std::vector<ReaderClass> classes;
    std::vector<QString> units;
    std::vector<Reader> readers;
    std::vector<Holiday> holidays;
    std::vector<Loan> loans; ///< closed ones too
    std::vector<FinishedLoan> history;
    std::vector<Fine> fines;
    std::vector<LostReport> lostReports;
    std::vector<Withdrawal> withdrawals;
    std::vector<Reservation> reservations;

    Copy& copyOf(const Loan& loan) { return copies[std::size_t(loan.copy)]; }
    Title& titleOf(const Loan& loan) { return titles[std::size_t(copyOf(loan).title)]; }
    const RuleNumbers& rulesOf(const Reader& reader) const
    {
        return classes[std::size_t(reader.readerclass)].rules;
    }
    const RuleNumbers& rulesOf(int reader) const { return rulesOf(readers[std::size_t(reader)]); }
};

} // namespace quilla::demo
