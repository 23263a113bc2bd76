#include "setup/library_page.h"

#include "database/library_name.h"
#include "platform/db/connection_text.h"
#include "platform/ui/form/file_dialog.h"

namespace quilla {

LibraryPage::LibraryPage(SetupPlace& place, SetupPlan& plan)
    : SetupPage(u"新的图书馆"_s, place, plan)
{
    QUILLA_NAMES(txtName, txtFile, cmdBrowse, txtOperator, txtPassword, txtRepeat, chkStarter, chkGuard);
    for (TextBox* box : {&txtPassword, &txtRepeat})
        box->setEchoMode(QLineEdit::Password);
    txtName.setMaxLength(LibraryNameWidth);
    chkStarter.setChecked(true);
    chkGuard.setChecked(true);
    layOut();
    onEnter(txtFile, [this] { txtOperator.setFocus(); }); // past the button
    enterAsTab({txtName, txtOperator, txtPassword, txtRepeat, chkStarter});
    onEnter(chkGuard, [this] { goOn(); });
    onClick(cmdBrowse, [this] { browse(); });
}

void LibraryPage::layOut()
{
    build(*this,
        column(fields(1,
                   {{u"图书馆名称(&M)："_s, txtName}, {m_file, row(Piece(txtFile).grow(), cmdBrowse)},
                       {u"操作员的用户名(&U)："_s, txtOperator}, {u"密码(&P)："_s, txtPassword},
                       {u"再输入一次密码(&R)："_s, txtRepeat}}),
            note(
                u"操作员用这个名字和密码登录流通台，借书、还书都记在这个名字下。以后可以增加别的操作员（quilla-db add-operator）。"_s),
            room(8), chkStarter, chkGuard, stretch()));
}

void LibraryPage::open()
{
    const bool inFile = m_plan.way == SetupWay::NewLibrary;
    for (QWidget* control : std::initializer_list<QWidget*> {&m_file, &txtFile, &cmdBrowse})
        control->setVisible(inFile);
    if (txtFile.text().isEmpty()) txtFile.setText(freeFile(embeddedDatabaseFile()));
    txtName.setFocus();
}

void LibraryPage::browse()
{
    FileDialog dialog(this, u"新的数据库文件"_s, u"数据库文件 (*.db)"_s);
    dialog.setOption(QFileDialog::DontConfirmOverwrite); // the page refuses a file that is there
    const QString file = dialog.saveFile(u"图书馆.db"_s);
    if (!file.isEmpty()) txtFile.setText(file);
    txtFile.setFocus();
}

void LibraryPage::goOn()
{
    NewLibrary& library = m_plan.library;
    if (m_plan.way == SetupWay::NewLibrary) library.place = fileTarget(txtFile.text());
    library.name = trimBlanks(txtName.text());
    library.operatorName = txtOperator.text();
    library.password = txtPassword.text();
    library.starter = chkStarter.isChecked();
    library.guards = chkGuard.isChecked();
    if (const auto refusal = checkNewLibrary(library, txtRepeat.text()))
        return tellFault(*refusal, {&txtName, &txtFile, &txtOperator, &txtPassword, &txtRepeat});
    Q_EMIT passed();
}

} // namespace quilla
