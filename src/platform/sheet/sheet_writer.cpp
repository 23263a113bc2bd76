#include "platform/sheet/sheet_writer.h"

#include "platform/core/dates.h"
#include "platform/core/private_files.h"
#include "platform/core/text.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <xlsxwriter.h>

namespace quilla {

namespace {

constexpr qsizetype LongestText = 32767;
constexpr lxw_color_t CaptionGround = 0xCCFFCC; // number 42 of the spreadsheets' own palette
constexpr int TitleSize = 14;
/// From here on day numbers are the same everywhere; the spreadsheets know a 29 February 1900.
const QDate FirstDate(1900, 3, 1);
const QDate DayZero(1899, 12, 30);

[[noreturn]] void fail(const QString& text)
{
    throw Error(ErrorNumber::CannotWriteSheet, u"Quilla.Sheet"_s, text);
}

void check(lxw_error result)
{
    if (result != LXW_NO_ERROR) fail(u"无法写入电子表格："_s + QString::fromUtf8(lxw_strerror(result)));
}

/// A text in the form that a cell stores. Two codes stand for no character and would make the whole file
/// unreadable. "_x0041_" is how a file writes the character 41, so the same letters in a text are escaped.
QByteArray cellText(QStringView text)
{
    static const QRegularExpression noCharacter(u"[\\x{FFFE}\\x{FFFF}]"_s);
    static const QRegularExpression writtenCode(u"_(?=x[0-9A-Fa-f]{4}_)"_s);
    const bool plainText
        = std::none_of(text.begin(), text.end(), [](QChar c) { return c == u'_' || c >= u'\xFFFE'; });
    if (plainText) return text.toUtf8();
    QString plain = text.toString();
    plain.replace(noCharacter, QString(QChar(QChar::ReplacementCharacter)));
    return plain.replace(writtenCode, u"_x005F_"_s).toUtf8();
}

} // namespace

QString partialFile(const QString& file)
{
    return file + u".part"_s;
}

struct SheetWriter::Book {
    explicit Book(const QString& name)
        : file(name)
        , partial(partialFile(name))
        , folder(QFile::encodeName(QFileInfo(name).absolutePath()))
    {
    }

    void open();
    void close();
    void makeFormats();

    QString file;
    QString partial;
    QByteArray folder; ///< also of the temporary files, so that a full disk is one and the same
    lxw_workbook* book = nullptr;
    std::vector<lxw_worksheet*> sheets;
    lxw_worksheet* sheet = nullptr;
    lxw_format* titleFormat = nullptr;
    lxw_format* captionFormat = nullptr;
    lxw_format* moneyFormat = nullptr;
    lxw_format* dateFormat = nullptr;
};

/// Tries the folder before any work is done. The library keeps the mode of the file that stands there.
void SheetWriter::Book::open()
{
    QFile trial(partial);
    if (!trial.open(QIODevice::WriteOnly, OwnerOnly))
        fail(u"无法写入文件 "_s + file + u"："_s + trial.errorString());
    trial.close();
    lxw_workbook_options options {};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = folder.data();
    book = workbook_new_opt(QFile::encodeName(partial).constData(), &options);
    if (!book) fail(u"无法写入文件 "_s + file);
    makeFormats();
}

void SheetWriter::Book::makeFormats()
{
    titleFormat = workbook_add_format(book);
    format_set_font_name(titleFormat, "宋体");
    format_set_font_size(titleFormat, TitleSize);
    format_set_bold(titleFormat);
    format_set_align(titleFormat, LXW_ALIGN_CENTER);
    format_set_align(titleFormat, LXW_ALIGN_VERTICAL_CENTER);
    captionFormat = workbook_add_format(book);
    format_set_align(captionFormat, LXW_ALIGN_CENTER);
    format_set_align(captionFormat, LXW_ALIGN_VERTICAL_BOTTOM);
    format_set_pattern(captionFormat, LXW_PATTERN_SOLID);
    format_set_fg_color(captionFormat, CaptionGround);
    moneyFormat = workbook_add_format(book);
    format_set_num_format(moneyFormat, "0.00");
    dateFormat = workbook_add_format(book);
    format_set_num_format(dateFormat, "yyyy-mm-dd");
}

/// What the library wrote to its temporary files is not watched by it: a full disk would leave rows out
/// without a word.
void SheetWriter::Book::close()
{
    bool whole = true;
    for (lxw_worksheet* each : sheets)
        if (each->optimize_tmpfile)
            whole = std::fflush(each->optimize_tmpfile) == 0 && std::ferror(each->optimize_tmpfile) == 0
                && whole;
    const lxw_error result = workbook_close(std::exchange(book, nullptr));
    if (!whole) fail(u"磁盘已满，无法写入文件 "_s + file);
    check(result);
}

SheetWriter::SheetWriter(const QString& file)
    : m(std::make_unique<Book>(file))
{
    m->open();
}

SheetWriter::~SheetWriter()
{
    if (m->book) workbook_close(m->book);
    QFile::remove(m->partial);
}

void SheetWriter::addSheet(const QString& name, const std::vector<double>& widths)
{
    lxw_worksheet* sheet = workbook_add_worksheet(m->book, name.toUtf8().constData());
    if (!sheet) fail(u"无法写入文件 "_s + m->file);
    m->sheets.push_back(sheet);
    m->sheet = sheet;
    for (std::size_t col = 0; col < widths.size(); ++col)
        if (widths[col] > 0)
            check(worksheet_set_column(sheet, lxw_col_t(col), lxw_col_t(col), widths[col], nullptr));
}

void SheetWriter::selectSheet(int index)
{
    m->sheet = m->sheets.at(std::size_t(index));
}

void SheetWriter::title(const QString& text, int columns)
{
    check(worksheet_merge_range(
        m->sheet, 0, 0, 1, lxw_col_t(columns - 1), text.toUtf8().constData(), m->titleFormat));
}

void SheetWriter::captions(int row, const QStringList& captions)
{
    for (qsizetype col = 0; col < captions.size(); ++col)
        check(worksheet_write_string(
            m->sheet, lxw_row_t(row), lxw_col_t(col), captions[col].toUtf8().constData(), m->captionFormat));
}

void SheetWriter::text(int row, int col, const QString& text)
{
    if (text.isEmpty()) return;
    QStringView part = QStringView(text).left(LongestText);
    if (part.back().isHighSurrogate()) part.chop(1);
    check(worksheet_write_string(
        m->sheet, lxw_row_t(row), lxw_col_t(col), cellText(part).constData(), nullptr));
}

void SheetWriter::number(int row, int col, double number)
{
    check(worksheet_write_number(m->sheet, lxw_row_t(row), lxw_col_t(col), number, nullptr));
}

void SheetWriter::money(int row, int col, double amount)
{
    check(worksheet_write_number(m->sheet, lxw_row_t(row), lxw_col_t(col), amount, m->moneyFormat));
}

void SheetWriter::date(int row, int col, const QDate& date)
{
    if (date < FirstDate) return text(row, col, isoDate(date));
    check(worksheet_write_number(
        m->sheet, lxw_row_t(row), lxw_col_t(col), double(DayZero.daysTo(date)), m->dateFormat));
}

void SheetWriter::save()
{
    m->close();
    QFile::remove(m->file);
    if (!QFile::rename(m->partial, m->file)) fail(u"无法写入文件 "_s + m->file);
}

} // namespace quilla
