#pragma once

#include "platform/ui/form/text_box.h"
#include "setup/setup_page.h"

#include <QCheckBox>
#include <QPushButton>

namespace quilla {

/// The files that a new library begins with.
class FilesPage final : public SetupPage {
    Q_OBJECT

public:
    FilesPage(SetupPlace& place, SetupPlan& plan);
    void open() override { Text1[0].setFocus(); }
    void goOn() override;

    TextBox Text1[2];
    QPushButton Command1[2];
    QCheckBox chkSkip {
        QStringLiteral("跳过有问题的记录，导入其余的；跳过的连同原因写入新文件，改正后可以再导入")};

private:
    void layOut();
    void browse(int box);
};

} // namespace quilla
