#include "holdings/import_books_ops.h"

#include "holdings/book_check.h"
#include "holdings/book_source.h"
#include "holdings/holdings_writer_ops.h"
#include "platform/core/text.h"

namespace quilla {

namespace {

/// What happens to the records of one file.
class BookImport {
public:
    BookImport(Connection& connection, const sql::Schema& schema, BookSource& source,
        const RefusedBook& refused, Progress& progress)
        : m_source(source)
        , m_refused(refused)
        , m_progress(progress)
        , m_lists(readHoldings(connection))
        , m_check(schema, m_lists)
        , m_writer(connection, m_lists, connection.lastNumber(*schema.table(u"zsk")))
    {
    }

    void run()
    {
        BookRecord book;
        m_progress.setTotal(m_source.total());
        while (!m_report.stopped && m_source.next(book)) {
            take(book);
            constexpr int step = 500;
            if (m_report.records % step == 0) tellProgress();
        }
        m_writer.finish();
    }

    BookImportReport report() const
    {
        BookImportReport report = m_report;
        report.titles = m_writer.titles();
        report.copies = m_writer.copies();
        report.joined = m_writer.joined();
        report.numbered = m_writer.numbered();
        report.loansLeftOut = m_check.loansLeftOut();
        report.goneCopies = m_check.goneCopies();
        report.byLines = m_source.hasLines();
        report.unknownHeadings = m_source.unknownHeadings();
        return report;
    }

private:
    void take(BookRecord& book)
    {
        ++m_report.records;
        book.isLine = m_source.hasLines();
        if (book.repaired) ++m_report.repaired;
        const QString reason = m_check.check(book);
        if (reason.isEmpty()) return m_writer.write(book);
        ++m_report.refused;
        m_refused(book, reason);
    }

    void tellProgress()
    {
        m_progress.setDone(m_source.done());
        m_report.stopped = !m_progress.goOn();
    }

    BookSource& m_source;
    const RefusedBook& m_refused;
    Progress& m_progress;
    HoldingsLists m_lists;
    BookCheck m_check;
    HoldingsWriter m_writer;
    BookImportReport m_report;
};

struct Shown {
    explicit Shown(Progress& shown)
        : progress(shown)
    {
        progress.begin();
    }
    ~Shown() { progress.end(); }
    Q_DISABLE_COPY_MOVE(Shown)
    Progress& progress;
};

/// Ends the transaction of its caller when nothing fails.
BookImportReport importWhole(Connection& connection, const sql::Schema& schema, BookSource& source,
    const BookImportOptions& options, const RefusedBook& refused, Progress& progress)
{
    const sql::Table& titles = *schema.table(u"zsk");
    BookImport import(connection, schema, source, refused, progress);
    connection.withOwnNumbers(titles, connection.lastNumber(titles), [&] { import.run(); });
    BookImportReport report = import.report();
    report.written = !options.dryRun && !report.stopped && (report.refused == 0 || options.skipRefused);
    report.written ? connection.commit() : connection.rollback();
    return report;
}

} // namespace

BookImportReport importBooks(Connection& connection, const sql::Schema& schema, const QString& file,
    const BookImportOptions& options, const RefusedBook& refused, Progress& progress)
{
    const auto source = openBooks(file, options.format, options.codePage, options.fields);
    const Shown shown(progress);
    connection.begin(OnFailure::EndTransaction);
    BookImportReport report;
    try {
        report = importWhole(connection, schema, *source, options, refused, progress);
    } catch (...) {
        connection.rollback();
        throw;
    }
    if (report.written) connection.gatherStatistics();
    return report;
}

} // namespace quilla
