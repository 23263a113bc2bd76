#pragma once

#include "support/test_library.h"

namespace quilla {

/// A library whose copies, cards and loans the test tells one by one.
class Circulation : public TestLibrary {
public:
    void title(const QString& barcode, const QString& classcode)
    {
        copy(barcode);
        send(u"update zsk set classcode=%1 where zskid=(select zskid from sck where barcode='%2')"_s.arg(
            classcode.isNull() ? u"null"_s : u'\'' + classcode + u'\'', barcode));
    }
    void card(const QString& code, const QString& unit, const QString& type)
    {
        reader(code, {{u"readunit"_s, unit}, {u"readerclass"_s, type}});
    }
    /// A loan that ended; due thirty days after its charge unless told.
    void lent(const QString& reader, const QString& barcode, const QString& from, const QString& back,
        const QString& due = {})
    {
        const QString late = isoDate(readDate(from)->addDays(30));
        insert(u"jhslsk"_s,
            {{u"readercode"_s, reader}, {u"barcode"_s, barcode}, {u"orderdate"_s, from},
                {u"yhdate"_s, due.isNull() ? late : due}, {u"backdate"_s, back},
                {u"operater"_s, u"李馆员"_s}});
    }
    void open(const QString& reader, const QString& barcode, const QString& from)
    {
        insert(u"jhsk"_s,
            {{u"readercode"_s, reader}, {u"barcode"_s, barcode}, {u"orderdate"_s, from},
                {u"yhdate"_s, u"2026-04-01"_s}, {u"operater"_s, u"王馆员"_s}});
    }
    void fine(const QString& money, const QString& date)
    {
        insert(u"fkk"_s, {{u"readercode"_s, u"R1"_s}, {u"sfmoney"_s, money}, {u"opratedate"_s, date}});
    }
    void withdrawn(const QString& date) { insert(u"BookOut"_s, {{u"outdate"_s, date}}); }

    /// The lines of a statistic, each with its first column and the figures that are not 0 under their
    /// names; lines without any are counted, not shown.
    QStringList figures(const QString& call) { return figuresOf(factory.open(connectionText).open(call)); }
    static QStringList figuresOf(Recordset rows)
    {
        QStringList lines;
        const auto count = rows.recordCount();
        for (; !rows.eof(); rows.next()) {
            QString line = rows.field(0).text();
            for (int at = 1; at < rows.fieldCount(); ++at)
                if (rows.field(at).text() != u"0")
                    line += u" %1=%2"_s.arg(rows.fieldName(at).toUpper(), rows.field(at).text());
            if (line != rows.field(0).text()) lines += line;
        }
        return lines += u"%1x%2"_s.arg(count).arg(rows.fieldCount());
    }
};

} // namespace quilla
