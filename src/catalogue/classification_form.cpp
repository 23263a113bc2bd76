#include "catalogue/classification_form.h"

#include "catalogue/classification_ops.h"
#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

namespace quilla {

namespace {

enum Column { Number, Line };

const QString Format = u"^序号|<类目"_s;
constexpr int ScreenWidth = 11530; // twips
constexpr int ScreenHeight = 6570;

/// Line by line, each with its number; the columns are as wide as their texts.
void fill(FlexGrid& grid, const QStringList& lines)
{
    {
        const GridModel::Filling filling(grid.cells());
        grid.setRows(std::max<int>(2, int(lines.size()) + 1));
        for (int row = 1; row <= lines.size(); ++row) {
            grid.setTextMatrix(row, Number, QString::number(row));
            grid.setTextMatrix(row, Line, lines[row - 1]);
        }
    }
    grid.setColWidths({grid.contentTwips(Number), grid.contentTwips(Line)});
    grid.setRow(1);
}

} // namespace

fenleihelp::fenleihelp(Session& session, const QString& folder)
    : m_session(session)
    , m_file(classificationFile(folder))
{
    setObjectName(u"fenleihelp"_s);
    setWindowTitle(u"《中国图书馆分类法》（第四版）"_s);
    QUILLA_NAMES(Grid1, Grid2);
    build(*this,
        row(group(u"二十二大类目"_s, Piece(Grid1).grow()).grow(),
            group(u"相应类目二级以上简表"_s, Piece(Grid2).grow()).grow()));
    resize(pixelsOf(ScreenWidth, *this), pixelsOf(ScreenHeight, *this));
    Grid1.setUp(2, Format);
    Grid2.setUp(2, Format);
    onRow(Grid1, [this](int) { loadSecondLevel(); });
    loadMainClasses();
    Grid1.setFocus();
}

void fenleihelp::loadMainClasses()
{
    const auto lines = readMainClasses(m_session.prompt, m_file);
    if (!lines) return;
    fill(Grid1, *lines);
    loadSecondLevel();
}

/// The file is read anew for each class.
void fenleihelp::loadSecondLevel()
{
    Grid2.setUp(2, Format);
    const QString line = trimBlanks(Grid1.current(Line));
    if (line.isEmpty()) return;
    if (const auto lines = readSecondLevel(m_session.prompt, m_file, line[0])) fill(Grid2, *lines);
}

} // namespace quilla
