#pragma once

#include "platform/ui/form/text_box.h"
#include "setup/setup_page.h"

#include <QCheckBox>
#include <QPushButton>

namespace quilla {

/// A new library: whose it is, where it lies, who works in it.
class LibraryPage final : public SetupPage {
    Q_OBJECT

public:
    LibraryPage(SetupPlace& place, SetupPlan& plan);
    void open() override;
    void goOn() override;

    TextBox txtName;
    TextBox txtFile;
    QPushButton cmdBrowse {QStringLiteral("浏览(&L)…")};
    TextBox txtOperator;
    TextBox txtPassword;
    TextBox txtRepeat;
    QCheckBox chkStarter {QStringLiteral("装入读者类型和流通参数、读者单位、节假日（以后可以修改）")};
    QCheckBox chkGuard {QStringLiteral("加保护索引：重复的借书记录、读者证号和条形码由数据库拒绝（建议）")};

private:
    void layOut();
    void browse();

    QLabel m_file {QStringLiteral("数据库文件(&F)：")};
};

} // namespace quilla
