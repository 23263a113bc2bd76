#include "setup/files_page.h"

#include "platform/ui/form/file_dialog.h"

namespace quilla {

FilesPage::FilesPage(SetupPlace& place, SetupPlan& plan)
    : SetupPage(u"导入图书和读者"_s, place, plan)
{
    QUILLA_NAMES(Text1, Command1, chkSkip);
    setCaptions(Command1, {u"浏览(&L)…"_s, u"浏览(&K)…"_s});
    chkSkip.setChecked(true);
    layOut();
    onEnter(Text1[0], [this] { Text1[1].setFocus(); }); // past the buttons
    onEnter(Text1[1], [this] { chkSkip.setFocus(); });
    onEnter(chkSkip, [this] { goOn(); });
    onClick(Command1, [this](int box) { browse(box); });
}

void FilesPage::layOut()
{
    build(*this,
        column(
            note(
                u"没有文件就留空，直接按“下一步”。以后可以随时导入：quilla-db import-books、import-readers。"_s),
            room(8),
            fields(1,
                {{u"图书文件(&T)："_s, row(Piece(Text1[0]).grow(), Command1[0])},
                    {u"读者文件(&R)："_s, row(Piece(Text1[1]).grow(), Command1[1])}}),
            note(
                u"图书：ISO 2709（CNMARC、MARC21），或者第一行是列名的 CSV。\n读者：第一行是列名的 CSV，必须有“读者证号”“姓名”“读者类型”；没有的读者单位会建立。"_s),
            room(8), chkSkip, stretch()));
    for (QPushButton& button : Command1)
        button.setAccessibleName(&button == Command1 ? u"浏览图书文件"_s : u"浏览读者文件"_s);
}

void FilesPage::browse(int box)
{
    const QString books = u"图书 (*.mrc *.iso *.marc *.csv *.tsv *.txt);;所有文件 (*)"_s;
    const QString readers = u"读者 (*.csv *.tsv *.txt);;所有文件 (*)"_s;
    FileDialog dialog(this, box == 0 ? u"图书文件"_s : u"读者文件"_s, box == 0 ? books : readers);
    const QString file = dialog.openFile();
    if (!file.isEmpty()) Text1[box].setText(file);
    Text1[box].setFocus();
}

void FilesPage::goOn()
{
    m_plan.library.booksFile = trimBlanks(Text1[0].text());
    m_plan.library.readersFile = trimBlanks(Text1[1].text());
    m_plan.library.skipRefused = chkSkip.isChecked();
    if (const auto refusal = checkImportFiles(m_plan.library))
        return tellFault(*refusal, {&Text1[0], &Text1[1]});
    Q_EMIT passed();
}

} // namespace quilla
